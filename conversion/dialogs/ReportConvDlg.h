#pragma once
#include <brannock/EntryProblems.h>
#include <conversion/ReportConversion.h>
#include <QHash>
#include <QPointer>
#include <tarnwick/FileChoice.h>
#include <tarnwick/FileStatusList.h>
#include <tarnwick/gui/JDialog.h>
#include <tarnwick/gui/TablePrinting.h>

class QSplitter;

namespace brannock {
class ReportEditor;
class ReportProblemsDlg;
} // namespace brannock

namespace tarnwick {
class JTableWin;
}

namespace conversion {

class PromptPanel;
class TextReport;

/// "Convert Reports": converts foreign texts to report files, one by one or all of the list. The current text and its
/// entries are shown together; the entries can be edited before they are stored. What was edited stays with its file
/// while the dialog is open.
class ReportConvDlg : public tarnwick::JDialog
{
    Q_OBJECT
public:
    /// All references must outlive the dialog.
    struct Setup
    {
        tarnwick::UserPrompts &prompts;
        const brannock::Project &project;
        tarnwick::FileChoice &files;
        std::function<tarnwick::JMacro()> printMacros;
        QWidget *parent = nullptr;
    };
    explicit ReportConvDlg(const Setup &setup);
    ~ReportConvDlg() override;

    /// Shows these files in place of those in the list.
    void openFiles(const QStringList &paths);
    brannock::ReportEditor &editor() { return *m_editor; }
    TextReport &text() { return *m_text; }
    tarnwick::FileStatusList &fileList() { return m_files; }
    const ReportConvSpec &spec() const { return m_conversion.spec; }
    /// Converts the current text by other settings of the format.
    void useSpec(const ReportConvSpec &spec);

protected:
    QString caption() const override;
    bool store() override;
    bool discard() override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    void makeMiddle();
    void makeButtons();
    void loadSpec();
    void applyOptions();
    void chooseFiles();
    void selectFile(int index);
    void keepEdits();
    /// Converts the current file, unless it is edited already, and shows text and entries.
    void showCurrentFile();
    bool convertCurrent();
    void showConverted();
    void showRemarks();
    void followText(int line);
    void followEntry(int entry);
    void editOptions();
    void editFormat();
    bool storeCurrent();
    /// Asks if another program has changed the current text. Returns false if it must not be stored now.
    bool isAsRead();
    void storeAll();
    void checkAll();
    void showProblem(int file, int line, int entry);
    void takePrompts();
    void saveOptions();
    void print();
    /// Asks if edited entries would be lost. Returns false if they must stay.
    bool mayLoseEdits(const tarnwick::Message &question);

    Setup m_setup;
    brannock::EntryCheck m_check;
    ReportConvOptions m_options;
    ReportConversion m_conversion;
    TextSource m_head; ///< shown while the whole text is read
    tarnwick::FileStatusList m_files;
    QHash<int, brannock::Report> m_edited;            ///< reports of other files that were edited, by index
    bool m_isConverted = false;                       ///< the editor shows the current file
    tarnwick::Progress *m_batch = nullptr;            ///< of STORE ALL
    QPointer<brannock::ReportProblemsDlg> m_problems; ///< of the last check, while it is open
    QSplitter *m_splitter = nullptr;
    QSplitter *m_middle = nullptr;
    tarnwick::JTableWin *m_fileTable;
    TextReport *m_text;
    PromptPanel *m_prompts;
    brannock::ReportEditor *m_editor;
    tarnwick::TablePrinting m_printing;
};

} // namespace conversion
