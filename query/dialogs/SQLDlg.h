#pragma once
#include <query/QueryEditor.h>
#include <query/ResultGrid.h>
#include <tarnwick/gui/JDialog.h>
#include <tarnwick/gui/TablePrinting.h>

#include <QElapsedTimer>

class QComboBox;
class QTabWidget;

namespace brannock {
class ColourChooser;
}

namespace query {

class QueryPage;
class RunProgress;
class SectionEditor;

/// The SQL editor: one query with its print layout, its result, the stored queries and query files.
class SQLDlg : public tarnwick::JDialog, private EditorView
{
    Q_OBJECT
public:
    struct Setup
    {
        QueryEditor::Setup editor; ///< what it refers to must outlive the dialog
        TableMode mode = TableMode::Edit;
        bool isFull = true; ///< queries can be stored, deleted and written to files
        QWidget *parent = nullptr;
        /// Marks the tubes of the rows on the map. Returns false after reporting why not. Empty: there is no map.
        std::function<bool(const QueryDocument &document, QueryResult &result)> markOnMap = {};
        // The map's selection; set with markOnMap.
        std::function<void(const QList<qint32> &tubes)> selectOnMap = {};
        std::function<QList<qint32>()> selectedOnMap = {};
        /// Shown in place of the first recent query. A draft that the user restores replaces it.
        std::optional<QueryDocument> document = {};
    };
    explicit SQLDlg(const Setup &setup);
    ~SQLDlg() override;

    QueryEditor &editor() { return m_editor; }
    QueryPage &page() { return *m_page; }
    /// EXECUTE. part: of the text; empty for all of it.
    void execute(const TextPart &part = {});
    /// Shows the query of a file, unless the user keeps unsaved changes.
    void openFile(const QString &machinePath);
    /// Executes another statement than the text.
    void executeOther(const QString &statement);

protected:
    QString caption() const override { return m_editor.caption(); }
    int changeCount() const override { return m_editor.transaction().changeCount(); }
    bool isModified() const override;
    bool store() override;
    bool discard() override;
    QByteArray draft() const override { return m_editor.draft(); }
    void restoreDraft(const QByteArray &draft) override { m_editor.restoreDraft(draft); }
    QString draftName(const QByteArray &draft) const override { return QueryEditor::draftName(draft); }
    void keyPressEvent(QKeyEvent *event) override;

private:
    // EditorView
    QString sql() const override;
    void setSql(const QString &sql) override;
    void collect(QueryDocument &document) const override;
    void showDocument(const QueryDocument &document) override;
    void setModified(bool isModified) override;
    std::optional<QString> askName(const QString &suggestion) override;
    void beep() override;
    void queriesChanged() override;

    void bindCommands();
    void bindFileCommands();
    void bindEditCommands();
    void bindDatabaseCommands();
    QString whyNot(int condition) const;
    void makeTitleBar();
    void makeTabs();
    QWidget *makeSections(std::initializer_list<int> sections);
    void applyOptions();
    void editOptions();
    /// Tells the user which statement of several begins.
    using Begins = std::function<void(int number, int count)>;
    using Work = std::function<Execution(tarnwick::Progress &, const Begins &)>;
    /// Runs work with the controls as they are while a statement runs.
    void runShown(const Work &work);
    Execution runStatements(RunProgress &progress, const Work &work);
    void showEnd(const Execution &execution);
    void showStopped(const Execution &execution, qint64 droppedRows);
    void showTransaction();
    void expand();
    void endExpansion();
    void print(bool isPreview, tarnwick::TablePrinting::Rows rows);
    void exportResults();
    void viewExport();
    void formatStatements();
    void explain();
    /// Returns false after telling that the result has no columns of tubes.
    bool hasTubes();
    void selectOnMap();
    void findSelectedTubes();
    QList<tarnwick::CommandHandlers::ListEntry> formerTexts() const;

    Setup m_setup;
    QueryEditor m_editor;
    std::unique_ptr<brannock::ColourChooser> m_colours;
    QComboBox *m_stored = nullptr;
    QTabWidget *m_tabs = nullptr;
    QueryPage *m_page = nullptr;
    std::array<SectionEditor *, tarnwick::JTablePrintArg::kSections> m_sections{};
    bool m_isTouched = false; ///< something else than the text was modified, or the text was marked as modified
    bool m_isRunning = false;
    QElapsedTimer m_sinceRun;
};

} // namespace query
