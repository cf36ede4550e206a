#pragma once
#include "EntryProblems.h"
#include "ReportColumns.h"
#include "ReportDocument.h"

#include <tarnwick/base/Progress.h>
#include <tarnwick/Prompts.h>

#include <optional>

namespace brannock {

/// The entries of a report as rows of a table. The first column marks entries with problems; header lines of the text
/// are shown across all columns, and standards in another colour.
class ReportGrid : public tarnwick::GridSource
{
public:
    /// The references must outlive the grid. check: null for no problems.
    ReportGrid(ReportDocument &document, const EntryCheck *check, tarnwick::UserPrompts &prompts);

    /// Number of the column before the columns of the report.
    static constexpr int kMark = 0;
    /// Column of the table that shows a field; of a location, its landmark. -1 if none does.
    static int columnOf(QStringView field);

    /// Entries with a problem.
    int problemCount() const { return m_problems.count; }
    /// Entry with a problem after (or before) this one, continuing at the other end; -1 if there is none.
    int nextProblem(int entry, bool isForward) const;
    /// Finds the problems of a report that the document takes next; noteChanged() then uses them. Throws Cancelled;
    /// nothing has changed then.
    void checkAhead(const Report &report, tarnwick::Progress *progress);
    /// Call after a change of the document, with the value that ReportDocument::changed passes.
    void noteChanged(int entry);
    /// True while the table itself changes the document: the model knows about it.
    bool isChanging() const { return m_isChanging; }
    void setReadOnly(bool isReadOnly) { m_isReadOnly = isReadOnly; }

    int rowCount() const override { return m_document.count(); }
    int columnCount() const override { return int(reportColumns().size()) + 1; }
    tarnwick::GridColumn column(int column) const override;
    QString text(int row, int column) const override;
    QVariant value(int row, int column) const override;
    QString lineText(int row) const override;
    tarnwick::RowColours colours(int row) const override;
    QString tip(int row, int column) const override;
    QString whyNotEditable(int row, int column) const override;
    bool setText(int row, int column, const QString &text) override;
    QString whyNotInsertable() const override;
    bool insertRow(int row) override;
    QString whyNotDeletable(int row) const override;
    bool deleteRow(int row) override;
    bool deleteRows(const QList<int> &rows) override;

private:
    /// Which entries have a problem.
    struct Problems
    {
        std::vector<bool> isOne;
        int count = 0;
    };
    bool hasProblem(const ReportEntry &entry) const { return m_check && m_check->hasProblem(entry); }
    Problems problemsOf(const Report &report, tarnwick::Progress *progress) const;

    ReportDocument &m_document;
    const EntryCheck *m_check;
    tarnwick::UserPrompts &m_prompts;
    Problems m_problems;
    std::optional<Problems> m_ahead; ///< of the report that the document takes next
    bool m_isChanging = false;
    bool m_isReadOnly = false;
};

} // namespace brannock
