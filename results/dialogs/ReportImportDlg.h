#pragma once
#include <brannock/EntryProblems.h>
#include <brannock/Project.h>
#include <db/DatabaseSession.h>
#include <QHash>
#include <QPointer>
#include <results/ReportImportOptions.h>
#include <tarnwick/FileChoice.h>
#include <tarnwick/FileStatusList.h>
#include <tarnwick/gui/JDialog.h>
#include <tarnwick/gui/TablePrinting.h>

namespace brannock {
class ReportEditor;
class ReportProblemsDlg;
} // namespace brannock

namespace tarnwick {
class JTableWin;
class ProgressDialog;
} // namespace tarnwick

namespace results {

/// "Import Report": uploads report files into table 'report', one by one or all of the list. The entries of the current
/// file can be checked and edited before; what was edited stays with its file while the dialog is open.
class ReportImportDlg : public tarnwick::JDialog
{
    Q_OBJECT
public:
    /// All references must outlive the dialog.
    struct Setup
    {
        db::DatabaseSession &session;
        const brannock::Project &project;
        tarnwick::FileChoice &files;
        std::function<tarnwick::JMacro()> printMacros;
        QWidget *parent = nullptr;
    };
    explicit ReportImportDlg(const Setup &setup);
    ~ReportImportDlg() override;

    /// Shows these files in place of those in the list.
    void openFiles(const QStringList &paths);
    brannock::ReportEditor &editor() { return *m_editor; }
    tarnwick::FileStatusList &fileList() { return m_files; }

protected:
    QString caption() const override { return QStringLiteral("Import Report"); }
    bool store() override;
    bool discard() override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    void makeButtons();
    void chooseFiles();
    void selectFile(int index);
    void keepEdits();
    void showCurrentFile();
    bool uploadCurrent();
    /// Asks if another program has changed the current file. Returns false if it must not be stored now.
    bool isAsRead();
    void uploadAll();
    /// The report of a file as the user has edited it. Throws tarnwick::FileError.
    brannock::Report reportOf(int index) const;
    void checkAll();
    void showProblem(int file, int entry);
    void print();
    /// Asks if edited entries would be lost. Returns false if the dialog stays open.
    bool mayClose();

    Setup m_setup;
    brannock::EntryCheck m_check;
    ReportImportOptions m_options;
    tarnwick::FileStatusList m_files;
    QHash<int, brannock::Report> m_edited;       ///< reports of other files that were edited, by index
    bool m_isLoaded = false;                     ///< the editor shows the current file
    tarnwick::ProgressDialog *m_batch = nullptr; ///< while all files are uploaded
    tarnwick::JTableWin *m_fileTable;
    brannock::ReportEditor *m_editor;
    QPointer<brannock::ReportProblemsDlg> m_problems; ///< of the last check
    tarnwick::TablePrinting m_printing;
};

} // namespace results
