#pragma once
#include "ReportEditor.h"

#include <brannock/EntryProblems.h>
#include <brannock/Project.h>
#include <brannock/ReportProblems.h>
#include <QHash>
#include <QPointer>
#include <tarnwick/base/Progress.h>
#include <tarnwick/FileChoice.h>
#include <tarnwick/FileStatusList.h>
#include <tarnwick/gui/JDialog.h>

namespace brannock {

class ReportProblemsDlg;

/// Base of the dialogs that work through a list of files. Each file is shown as entries of a report, which can be
/// edited and then stored, one file or all. What was edited stays with its file while the dialog is open.
class ReportFilesDlg : public tarnwick::JDialog
{
    Q_OBJECT
public:
    ~ReportFilesDlg() override;

    /// Shows these files in place of those in the list.
    void openFiles(const QStringList &paths);
    ReportEditor &editor() { return *m_editor; }
    tarnwick::FileStatusList &fileList() { return m_files; }
    const tarnwick::FileStatusList &fileList() const { return m_files; }

protected:
    /// In what the dialogs differ.
    struct Kind
    {
        const tarnwick::CommandTable &commands;
        const char16_t *dialogName;
        const char16_t *tableTitle;      ///< of the list of files, for screen readers
        const tarnwick::Message &closes; ///< asks whether to close though so many files were edited
        const tarnwick::Message &goesOn; ///< asks whether to go on after a file that was not stored
        ReportEditor::Options editor;
    };
    /// All references must outlive the dialog.
    ReportFilesDlg(tarnwick::UserPrompts &prompts, const Project &project, tarnwick::FileChoice &files,
                   const Kind &kind, QWidget *parent);

    /// Shows a file in the editor, which has the entries of another one. edited: its entries as the user left them, or
    /// null. Returns false after reporting that it cannot be shown.
    virtual bool showFile(const QString &path, const Report *edited) = 0;
    /// Stores the entries of the current file, which is shown. Returns false after reporting why they are not stored.
    virtual bool storeShown() = 0;
    virtual void saveOptions() = 0;
    /// line and entry: from 1; 0 if there is none.
    virtual void showProblem(int line, int entry);

    bool store() override;
    bool discard() override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

    tarnwick::JTableWin &fileTable() { return *m_fileTable; }
    EntryCheck &entryCheck() { return m_check; }
    /// True while the editor shows the current file.
    bool isShown() const { return m_isShown; }
    void setShown(bool isShown) { m_isShown = isShown; }
    void showCurrentFile();
    /// Notes the entries of the current file if they were edited, for editsOf().
    void keepEdits();
    /// Entries of a file that the user has edited; null if there are none.
    const Report *editsOf(int index) const;
    /// Asks if edited entries would be lost. Returns false if they must stay.
    bool mayLoseEdits(const tarnwick::Message &question);
    void forgetEdits();
    bool storeCurrent();
    /// Stores the files that are not done, with one progress dialog of this title.
    void storeAll(const QString &title);
    /// The progress of storeAll(); null outside of it.
    tarnwick::Progress *batch() const { return m_batch; }
    void showProblems(const QList<FileOutcome> &outcomes);

private:
    void selectFile(int index);
    /// Asks if another program has changed the current file. Returns false if it must not be stored now.
    bool isAsRead();

    const Project &m_project;
    tarnwick::FileChoice &m_choice;
    const tarnwick::Message &m_closes;
    const tarnwick::Message &m_goesOn;
    EntryCheck m_check;
    tarnwick::FileStatusList m_files;
    QHash<int, Report> m_edited; ///< reports of other files that were edited, by index
    bool m_isShown = false;
    tarnwick::Progress *m_batch = nullptr;
    QPointer<ReportProblemsDlg> m_problems; ///< of the last check, while it is open
    tarnwick::JTableWin *m_fileTable;
    ReportEditor *m_editor;
};

} // namespace brannock
