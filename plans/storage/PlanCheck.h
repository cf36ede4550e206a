#pragma once
#include <brannock/InspPlan.h>
#include <db/DatabaseSession.h>
#include <tarnwick/base/Progress.h>

namespace plans {

/// Sets the flag "analyzed" of every entry: whether table 'report' has a result of the tube in the outage, not counting
/// those with one of the incomplete codes. Shows the percentage in the status line. Throws the engine's exceptions and,
/// if the progress (may be null) stops it, Cancelled; the plan is then unchanged.
void markAnalyzed(db::DatabaseSession &session, brannock::InspPlan &plan, const QString &outage,
                  const QStringList &incompleteCodes, tarnwick::Progress *progress);

/// markAnalyzed(), as the command of the user: times it and reports how it ended. Without entries or a database it does
/// nothing. Returns true if the flags were set.
bool checkPlan(db::DatabaseSession &session, brannock::InspPlan &plan, const QString &outage,
               const QStringList &incompleteCodes, tarnwick::Progress *progress);

/// How many tubes of a plan have results in an outage.
struct OutageCount
{
    QString outage;
    int tubes = 0;
    bool operator==(const OutageCount &) const = default;
};
/// The counts of all outages in table 'report', in the order of their names. A tube that the plan names twice counts
/// once. Throws like markAnalyzed().
QList<OutageCount> countByOutage(db::DatabaseSession &session, const brannock::InspPlan &plan,
                                 tarnwick::Progress *progress);

} // namespace plans
