#pragma once
#include <brannock/ReportProblems.h>
#include <tarnwick/FileChoice.h>
#include <tarnwick/gui/JDialog.h>

namespace tarnwick {
class JTableWin;
}

namespace brannock {

/// The result of a check: what would be stored of each file, counts of the problems by kind, and the problems as a
/// table to be sorted, filtered, copied and saved. It stays open beside the dialog that made the check.
class ReportProblemsDlg : public tarnwick::JDialog
{
    Q_OBJECT
public:
    /// The references must outlive the dialog.
    ReportProblemsDlg(const QList<FileOutcome> &files, tarnwick::UserPrompts &prompts, tarnwick::FileChoice &choice,
                      const tarnwick::PathRoots &roots, QWidget *parent);
    ~ReportProblemsDlg() override;

    tarnwick::JTableWin &table() { return *m_table; }

Q_SIGNALS:
    /// The user wants to see a problem: number of its file, from 0, and its line and entry, from 1, where it has them.
    void problemChosen(int file, int line, int entry);

protected:
    QString caption() const override { return QStringLiteral("Problems"); }

private:
    class Rows;
    void save();

    const QList<FileOutcome> m_files;
    tarnwick::FileChoice &m_choice;
    tarnwick::PathRoots m_roots;
    std::unique_ptr<Rows> m_rows;
    tarnwick::JTableWin *m_table;
};

} // namespace brannock
