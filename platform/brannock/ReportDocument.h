#pragma once
#include "Report.h"

#include <functional>
#include <vector>

namespace brannock {

/// A report that is being edited: its entries, with undo and redo. Undo keeps the entries that a change replaced, so
/// its memory grows with the size of the changes, not of the report.
class ReportDocument
{
public:
    /// Older changes can no longer be undone.
    static constexpr int kMaxLevels = 200;

    const Report &report() const { return m_report; }
    int count() const { return m_report.numEntry(); }
    const ReportEntry &entry(int index) const { return m_report.entries[index]; }
    /// Replaces the report. Nothing can be undone, nothing is modified.
    void setReport(Report report);

    /// Changes these entries by edit. Entries that edit leaves as they were are not part of the change; without any the
    /// document does not change. Returns the number of changed entries.
    int change(const QString &label, const QList<int> &entries, const std::function<void(ReportEntry &entry)> &edit);
    /// Inserts before an entry; index may be count().
    void insert(const QString &label, int index, const QList<ReportEntry> &entries);
    void remove(const QString &label, const QList<int> &entries);

    bool canUndo() const { return m_position > 0; }
    bool canRedo() const { return m_position < int(m_steps.size()); }
    QString undoLabel() const { return canUndo() ? m_steps[size_t(m_position) - 1].label : QString(); }
    QString redoLabel() const { return canRedo() ? m_steps[size_t(m_position)].label : QString(); }
    void undo();
    void redo();

    bool isModified() const { return m_position != m_storedPosition; }
    /// The present state has been stored.
    void setStored() { m_storedPosition = m_position; }

    static constexpr int kSeveral = -1;   ///< several entries have changed
    static constexpr int kNewNumber = -2; ///< entries were added or removed, or it is another report
    /// Called once after each change: the entry that changed, kSeveral or kNewNumber.
    std::function<void(int entry)> changed;

private:
    /// A change of entries: their numbers, ascending, and the entries before and after. An insertion has nothing
    /// before, a removal nothing after.
    struct Part
    {
        QList<int> places;
        QList<ReportEntry> before;
        QList<ReportEntry> after;
    };
    struct Step
    {
        QString label;
        Part part;
    };
    void push(const QString &label, Part part);
    void apply(const QList<int> &places, const QList<ReportEntry> &present, const QList<ReportEntry> &wanted);
    void notify(const QList<int> &places, bool isSameCount) const;

    Report m_report;
    std::vector<Step> m_steps;
    int m_position = 0; ///< number of steps that are done
    int m_storedPosition = 0;
};

} // namespace brannock
