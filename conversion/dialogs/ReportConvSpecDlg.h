#pragma once
#include <brannock/gui/ColourChooser.h>
#include <brannock/Project.h>
#include <conversion/LineResult.h>
#include <conversion/SpecHistory.h>
#include <conversion/SpecTables.h>
#include <conversion/TextSource.h>
#include <tarnwick/FileChoice.h>
#include <tarnwick/gui/JDialog.h>
#include <tarnwick/gui/TablePrinting.h>

class QComboBox;
class QLabel;
class QTabWidget;

namespace tarnwick {
class JTableWin;
class NumberField;
} // namespace tarnwick

namespace conversion {

class TextReport;

/// "Format": edits a conversion spec beside a text that it is for. Fields are made from columns that are marked in the
/// text, or by number; what the format makes of the current line is shown with each change.
class ReportConvSpecDlg : public tarnwick::JDialog
{
    Q_OBJECT
public:
    /// All references must outlive the dialog.
    struct Setup
    {
        tarnwick::UserPrompts &prompts;
        const brannock::Project &project;
        tarnwick::FileChoice &files;
        const ReportConvSpec &spec;
        QString path; ///< of the format in the suite's form
        int extraFields = 0;
        const TextSource &text; ///< without lines: there is none
        int line = 0;           ///< current line of the text
        std::function<tarnwick::JMacro()> printMacros;
        /// Converts by these settings. Called by APPLY, OK and, to restore the former settings, Cancel.
        std::function<void(const ReportConvSpec &spec, const QString &path)> apply;
        QWidget *parent = nullptr;
    };
    explicit ReportConvSpecDlg(const Setup &setup);
    ~ReportConvSpecDlg() override;

    const ReportConvSpec &spec() const { return m_spec; }
    TextReport &text() { return *m_text; }

protected:
    QString caption() const override;
    bool isModified() const override { return !m_spec.sameSettings(m_stored); }
    bool store() override;
    bool discard() override;

private:
    /// A tab with a table of fields.
    struct FieldPage
    {
        std::unique_ptr<FieldTable> fields;
        tarnwick::JTableWin *table = nullptr;
    };
    enum Tab : int { OptionsTab, ReportTab, FilenameTab, CommentTab, OperTypesTab, FileTypesTab };
    void bindCommands();
    void makeTabs();
    QWidget *makeOptionsPage();
    void addTable(tarnwick::JTableWin &table, SpecTable &rows, const QString &title, const QString &name);
    void addFieldPage(FieldPage &page, FieldTable::List list, const QString &title, const QString &name);
    tarnwick::JTableWin *addPairPage(PairTable &pairs, const QString &title, const QString &name);
    QLayout *makeFieldBar();
    void makeButtons();

    QString whyNot(int condition) const;
    FieldPage *currentPage();
    /// Null on the tab of options.
    tarnwick::JTableWin *currentTable() const;
    SpecTable &currentRows();
    void moveRows(int by);
    void moveRows(const QList<int> &rows, int before);
    /// Undo and redo.
    void takeState(const ReportConvSpec &state);
    void showTab();
    void specChanged();
    void showSpec();
    void showLine();
    void showMarkedColumns();
    /// The marked columns as a field of the current tab.
    std::optional<ConvField> markedField();
    void addField();
    void setFieldColumns();
    void chooseColour();

    void openFormat();
    bool save();
    bool saveAs();
    bool saveTo(const QString &path);
    void print();
    void reset();

    Setup m_setup;
    ReportConvSpec m_spec;
    ReportConvSpec m_stored; ///< as last saved or opened
    ReportConvSpec m_before; ///< Cancel goes back to it
    QString m_path;          ///< in the suite's form
    QString m_pathBefore;
    bool m_isApplied = false; ///< other settings than m_before are in use
    int m_line = 0;           ///< current line of the text that is shown
    int m_otherLine = 0;      ///< and of the one that is not
    bool m_isPathShown = false;
    SpecHistory m_history;
    TextSource m_pathText; ///< the parts of the text's path as lines, for filename fields
    LineResult m_result;
    FieldPage m_report;
    FieldPage m_filename;
    FieldPage m_comment;
    PairTable m_operTypes;
    PairTable m_fileTypes;
    brannock::ColourChooser m_colours;
    tarnwick::TablePrinting m_printing;
    TextReport *m_text;
    QTabWidget *m_tabs;
    tarnwick::NumberField *m_headerLines = nullptr;
    QComboBox *m_layout = nullptr;
    QComboBox *m_type = nullptr;
    QPushButton *m_add = nullptr;
    QPushButton *m_setColumns = nullptr;
    QPushButton *m_colour = nullptr;
    QLabel *m_marked = nullptr;
    tarnwick::JTableWin *m_operTypeTable = nullptr;
    tarnwick::JTableWin *m_fileTypeTable = nullptr;
    tarnwick::JTableWin *m_resultTable;
};

} // namespace conversion
