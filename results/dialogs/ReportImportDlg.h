#pragma once
#include <brannock/gui/ReportFilesDlg.h>
#include <db/DatabaseSession.h>
#include <results/ReportImportOptions.h>
#include <tarnwick/gui/TablePrinting.h>

namespace results {

/// "Import Report": uploads report files into table 'report', one by one or all of the list. The entries of the current
/// file can be checked and edited before.
class ReportImportDlg : public brannock::ReportFilesDlg
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

protected:
    QString caption() const override { return QStringLiteral("Import Report"); }
    bool showFile(const QString &path, const brannock::Report *edited) override;
    bool storeShown() override;
    void saveOptions() override;

private:
    void makeButtons();
    void chooseFiles();
    /// The report of a file as the user has edited it. Throws tarnwick::FileError.
    brannock::Report reportOf(int index);
    void checkAll();
    void print();

    Setup m_setup;
    ReportImportOptions m_options;
    tarnwick::TablePrinting m_printing;
};

} // namespace results
