#pragma once
#include "Flaws.h"
#include "Random.h"

#include <array>
#include <brannock/Project.h>
#include <brannock/Report.h>
#include <functional>
#include <tarnwick/base/Progress.h>

namespace demo {

enum class Oper { Primary, Secondary, Resolution };
constexpr int kOpers = 3;

/// The operation as the suite's code ("PRI") and as the word in foreign reports ("primary").
QString operCode(Oper oper);
QString operWord(Oper oper);

/// One calibration group: the tubes acquired between two measurements of the calibration standard, and the results of
/// each analyst.
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

/// Simulates the inspections of the project's component, outage by outage: a bobbin probe over the full length of the
/// tubes, then rotating probes at ambiguous bobbin results and at the tubesheet. Two analysts evaluate every tube
/// independently; the resolution decides about their results.
class Inspection
{
public:
    Inspection(const brannock::Project &project, const DemoOptions &options);

    /// Passes on each cal as it is generated, so that memory does not depend on the number of entries.
    void run(const std::function<void(const InspectedCal &)> &take, tarnwick::Progress *progress);

    /// The inspected tubes in order; all tubes unless fewer entries were requested.
    const QList<int> &tubes() const { return m_tubes; }

private:
    struct Unit
    {
        int tube;
        QString place; ///< landmark inspected by a rotating probe; empty: the whole length
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
    QStringList m_places; ///< locations of rotating probes, tubesheet first
    qint64 m_done = 0;
};

} // namespace demo
