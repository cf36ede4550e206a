#pragma once
#include <brannock/ReportGrid.h>

#include <QWidget>
#include <tarnwick/gui/CommandActions.h>

class QGridLayout;
class QLabel;
class QLineEdit;

namespace tarnwick {
class JTableWin;
}

namespace brannock {

/// Shows and edits the entries of a report: a table with the suite's columns, marks of problems, undo, and in import
/// mode the fields of the cal, which are filled into all result entries of the file at once.
class ReportEditor : public QWidget
{
    Q_OBJECT
public:
    struct Options
    {
        bool isImport = false;   ///< the fields of the cal are shown above the table
        bool isReadOnly = false; ///< the entries cannot be changed
    };

    /// check: null for no marks; must outlive the editor, like the prompts.
    ReportEditor(tarnwick::UserPrompts &prompts, const EntryCheck *check, Options options, QWidget *parent = nullptr);
    ~ReportEditor() override;

    /// Reads a report file. Reports a failure and returns false; the editor then keeps its report.
    bool loadReport(const QString &machinePath);
    /// progress: may be null; shows the check of a long report and can cancel it. Throws Cancelled; the editor then
    /// keeps its report.
    void setReport(Report report, tarnwick::Progress *progress = nullptr);
    const Report &report() const { return m_document.report(); }
    ReportDocument &document() { return m_document; }

    tarnwick::JTableWin &table() { return *m_table; }
    int problemCount() const { return m_grid.problemCount(); }
    /// Makes an entry current and scrolls to it; field: of the current column, or empty.
    void setCurrentEntry(int entry, QStringView field = {});
    int currentEntry() const;
    /// Errors in the table of commands; empty.
    QStringList commandFaults() const { return m_actions->faults(); }

    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    void currentEntryChanged(int entry);
    /// The entries have changed, or another report is shown.
    void changed();

private:
    /// A field of the cal above the table.
    struct CalField
    {
        const ReportColumn *column;
        QLineEdit *edit;
    };
    void makeCommands();
    QLayout *makeCalFields();
    void addCalField(QGridLayout &layout, const QString &label, QStringView field);
    void fillCal(const CalField &field);
    void noteChanged(int entry);
    void showCalFields();
    void showNextProblem(bool isForward);

    tarnwick::UserPrompts &m_prompts;
    ReportDocument m_document;
    ReportGrid m_grid;
    tarnwick::CommandHandlers m_handlers;
    tarnwick::CommandActions *m_actions;
    tarnwick::JTableWin *m_table;
    QLabel *m_summary;
    QList<CalField> m_calFields;
};

} // namespace brannock
