#pragma once
#include <query/gui/SqlEditor.h>
#include <query/QueryEditor.h>
#include <query/ResultGrid.h>
#include <query/SqlCheck.h>

#include <QWidget>

class QGridLayout;
class QLabel;
class QProgressBar;
class QPushButton;
class QSplitter;
class QTreeWidget;

namespace tarnwick {
class ElidedLabel;
}

namespace query {

class JQueryWin;
class SqlFindBar;

/// The tab "Query" of the SQL editor: quick-launch buttons, the text with its parameters beside it, the result below
/// it, and a line with what runs or has run.
class QueryPage : public QWidget
{
    Q_OBJECT
public:
    /// result: shown by the table; must outlive the page.
    QueryPage(const QueryEditor::Setup &setup, QueryResult &result, TableMode mode, QWidget *parent = nullptr);
    ~QueryPage() override;

    SqlEditor &sql() { return *m_sql; }
    const SqlEditor &sql() const { return *m_sql; }
    JQueryWin &table() { return *m_table; }
    SqlFindBar &findBar() { return *m_find; }
    QPushButton &stopButton() { return *m_stop; }

    /// Sizes and, if hasButtons, the quick-launch buttons.
    void setOptions(const SQLOptions &options, bool hasButtons);
    /// Reads the names of the database again, for colours and completion.
    void refreshNames();
    /// Looks for the first error and the parameters of the text. Nothing is run, no box is shown.
    void check();
    /// To be called before the text runs: shows its parameters, and takes errors back. The run finds them itself, and
    /// what it has changed must not look like an error afterwards (the table of CREATE TABLE exists then).
    void beginRun();
    /// Name of the query, under which values of parameters are remembered.
    void setQueryName(const QString &name) { m_name = name; }
    void showError(const dao::SourceRange &where);
    /// What runs ("12,000 rows, 1.2 s") or has run; empty for nothing.
    void showRun(const QString &text);
    /// Which of several statements runs, and how many have run; nothing for fewer than two.
    void showStatement(int number, int done, int count);
    void showEntries(const QString &text);
    /// Tells the user that others have to wait while changes are not committed.
    void showTransaction(bool isOpen);
    void setRunning(bool isRunning);
    /// Shows the rows that a run has found so far, or all of them after it.
    void showRows();

Q_SIGNALS:
    /// A quick-launch button was pressed.
    void launched(const QString &file);

private:
    void makeEditor();
    void makeStatusRow();
    void showProblem(const SqlCheck::Error &problem);
    void showParameters(const QList<dao::sql::Parameter> &parameters);
    QString valueOf(const QString &parameter) const;

    QueryEditor::Setup m_setup;
    QString m_name;
    bool m_hasError = false; ///< the text that was checked last cannot be compiled
    QGridLayout *m_buttons;
    QSplitter *m_splitter = nullptr;
    SqlEditor *m_sql;
    SqlFindBar *m_find;
    QTreeWidget *m_parameters;
    tarnwick::ElidedLabel *m_problem;
    JQueryWin *m_table;
    QProgressBar *m_statements;
    tarnwick::ElidedLabel *m_run;
    QLabel *m_waiting;
    QLabel *m_figures;
    QLabel *m_entries;
    QLabel *m_shownRows;
    QPushButton *m_stop;
};

} // namespace query
