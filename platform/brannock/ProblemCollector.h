#pragma once
#include "EntryProblems.h"
#include "ReportProblems.h"

#include <QHash>
#include <QSet>

namespace brannock {

/// Checks the entries of a report one after another and collects their problems. A missing or wrong value that entries
/// have in common, of their cal, analyst or operator, is one problem, however many entries have it.
class ProblemCollector
{
public:
    /// check must outlive the object.
    explicit ProblemCollector(const EntryCheck &check)
        : m_check(check)
    {
    }
    /// position: of the entry in the report, from 1.
    void add(const ReportEntry &entry, int position);
    bool hasProblem(int position) const { return m_positions.contains(position); }
    /// In the order of the entries. Of a common problem the first entry, and how many there are.
    QList<ReportProblem> problems() const;

private:
    struct Common
    {
        qsizetype place = 0; ///< in m_problems
        int entries = 0;
    };
    const EntryCheck &m_check;
    QList<ReportProblem> m_problems;
    QHash<QString, Common> m_common;
    QSet<int> m_positions;
};

} // namespace brannock
