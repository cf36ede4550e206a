#pragma once
#include "ReportConversion.h"

#include <brannock/EntryProblems.h>
#include <brannock/ReportProblems.h>
#include <QSet>

namespace conversion {

/// Finds out what storing converted texts would do, without storing anything: the numbers and the problems of each
/// text.
class ConversionCheck
{
public:
    /// The project must outlive the object.
    explicit ConversionCheck(const brannock::Project &project);

    /// Adds the text that run has converted last. report: its report, possibly edited.
    void add(const ReportConversion &run, const brannock::Report &report);
    void addUnreadable(const QString &path, const QString &reason);
    const QList<brannock::FileOutcome> &outcomes() const { return m_outcomes; }

private:
    void addRemarks(const ReportConversion &run, const brannock::Report &report);
    void addEntries(const ReportConversion &run, const brannock::Report &report);
    void addTarget(const ReportConversion &run);

    const brannock::Project &m_project;
    brannock::EntryCheck m_check;
    QSet<QString> m_targets; ///< of the texts so far, in lower case: some file systems ignore the case
    QList<brannock::FileOutcome> m_outcomes;
};

} // namespace conversion
