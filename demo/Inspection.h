#pragma once
#include "Flaws.h"
#include "Random.h"

#include <array>
#include <brannock/Project.h>
#include <brannock/Report.h>
#include <functional>
#include <tarnwick/Progress.h>

namespace demo {

enum class Oper { Primary, Secondary, Resolution };
constexpr int kOpers = 3;

/// The operation as the suite's code ("PRI") and as the word of foreign reports ("primary").
QString operCode(Oper oper);
QString operWord(Oper oper);

/// One calibration group: the tubes acquired between two runs of the calibration standard, and what each analyst
/// called.
struct InspectedCal
{
    int outage = 0; ///< index
    int number = 0;
    bool rotating = false;
    fenwright::ProbeInfo probe;
    tarnwick::JDateTime start;
    std::array<QString, kOpers> analysts;
    QString operatorId;
    std::array<QList<brannock::ReportEntry>, kOpers> results;
};

/// Inspects the project's component outage by outage: a bobbin probe through the whole length of the tubes, then
/// rotating probes where the bobbin left a question and at the tubesheet. Two analysts call every tube independently;
/// the resolution decides on what they found.
class Inspection
{
public:
    Inspection(const brannock::Project &project, const DemoOptions &options);

    /// Hands over each cal as it is made, so that memory does not grow with the number of entries.
    void run(const std::function<void(const InspectedCal &)> &take, tarnwick::Progress *progress);

    /// Tubes that are inspected, in their order; all of them unless fewer entries were asked for.
    const QList<int> &tubes() const { return m_tubes; }

private:
    struct Unit
    {
        int tube;
        QString place; ///< landmark that a rotating probe looks at; empty: the whole length
    };
    class Units;

    void runOutage(int outage, qint64 quota, const std::function<void(const InspectedCal &)> &take,
                   tarnwick::Progress *progress);
    InspectedCal openCal(int outage, int number, bool rotating, Random &random) const;
    void inspect(const Unit &unit, int rank, InspectedCal &cal, Random &random) const;
    brannock::ReportEntry blankEntry(const Unit &unit, int rank, Oper oper, const InspectedCal &cal) const;
    brannock::ReportEntry call(const Flaw &flaw, brannock::ReportEntry entry, Oper oper, const InspectedCal &cal,
                               Random &random) const;
    qint64 quotaOf(int outage) const;
    int bobbinTubes() const;

    const brannock::Project &m_project;
    DemoOptions m_options;
    Flaws m_flaws;
    QList<int> m_tubes;
    QString m_inletEnd;
    QString m_outletEnd;
    QString m_tubesheet;
    QStringList m_places; ///< where rotating probes look, tubesheet first
    qint64 m_done = 0;
};

} // namespace demo
