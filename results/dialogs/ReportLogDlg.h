#pragma once
#include <brannock/Project.h>
#include <db/DatabaseSession.h>
#include <results/ReportLogGrid.h>
#include <tarnwick/FileChoice.h>
#include <tarnwick/gui/JDialog.h>

namespace tarnwick {
class JTableWin;
}

namespace results {

/// "Report Log": the uploads and conversions of the project, to be sorted, filtered, copied and saved.
class ReportLogDlg : public tarnwick::JDialog
{
    Q_OBJECT
public:
    /// Reads the log; throws tarnwick::FileError and the engine's exceptions. All references must outlive the dialog.
    ReportLogDlg(db::DatabaseSession &session, const brannock::Project &project, tarnwick::FileChoice &files,
                 QWidget *parent);
    ~ReportLogDlg() override;

    tarnwick::JTableWin &table() { return *m_table; }

protected:
    QString caption() const override { return QStringLiteral("Report Log"); }

private:
    void save();

    tarnwick::FileChoice &m_files;
    tarnwick::PathRoots m_roots;
    ReportLogGrid m_grid;
    tarnwick::JTableWin *m_table;
};

} // namespace results
