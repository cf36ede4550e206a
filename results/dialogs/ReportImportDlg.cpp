#include "ReportImportDlg.h"

#include "CalListDlg.h"

#include <results/Messages.h>
#include <results/UploadRun.h>
#include <tarnwick/gui/JTableWin.h>
#include <tarnwick/gui/ProgressDialog.h>
#include <tarnwick/OptionPrompts.h>

#include <QFileInfo>
#include <QHBoxLayout>
#include <QPushButton>
#include <QSplitter>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace results {

namespace {

enum Command : int { OpenFiles, Print, AllCals };

constexpr CommandRow kRows[] = {
    {OpenFiles, u"&Open ...\tCtrl+O", u"Choose report files for the list"},
    {Print, u"&Print ...\tCtrl+P", u"Print the entries of the current file"},
    {AllCals, u"All Database &Cals ...", u"Show the cals in the database, and delete some"},
};
constexpr MenuItem kBar[] = {openMenu(u"&File"), menuItem(OpenFiles), menuItem(Print), kCloseMenu,
                             openMenu(u"&View"), menuItem(AllCals),   kCloseMenu,      kEndOfMenu};
constexpr CommandLayout kLayouts[] = {{CommandLayout::Kind::MenuBar, u"menuBar", kBar}};
constexpr CommandTable kTable(kRows, kLayouts);

constexpr FileChooserInfo kReportChooser{u"reports", u"All Files (*.*)", u".rep", u"Reports (*.rep)"};

} // namespace

ReportImportDlg::ReportImportDlg(const Setup &setup)
    : ReportFilesDlg(setup.session.prompts(), setup.project, setup.files,
                     {.commands = kTable,
                      .dialogName = u"reportImportDlg",
                      .tableTitle = u"Report files",
                      .closes = messages::kCloseWithoutUpload,
                      .goesOn = messages::kGoOnWithNextFile,
                      .editor = {.isImport = true, .isReadOnly = false}},
                     setup.parent)
    , m_setup(setup)
    , m_printing(prompts(), this)
{
    loadOptions(m_options, setup.project.roots(), prompts());
    commands().bind(OpenFiles, [this] { chooseFiles(); });
    commands().bind(Print, [this] { print(); });
    commands().bind(AllCals, [this] {
        if (db::checkConnected(m_setup.session))
            CalListDlg::show(m_setup.session, m_setup.project.steamGen, this);
    });
    auto *splitter = new QSplitter(Qt::Vertical);
    splitter->setObjectName(u"splitter"_s);
    splitter->addWidget(&fileTable());
    splitter->addWidget(&editor());
    splitter->setStretchFactor(1, 1);
    splitter->setChildrenCollapsible(false);
    body().addWidget(splitter, 1);
    makeButtons();
    finish(&fileTable(), {1000, 700});
}

void ReportImportDlg::makeButtons()
{
    auto *row = new QHBoxLayout;
    addButton(*row, u"&UPLOAD"_s, u"uploadButton"_s, u"Store the entries of the current file in the database"_s,
              [this] { storeCurrent(); });
    addButton(*row, u"UPLOA&D ALL"_s, u"uploadAllButton"_s,
              u"Store the files that are not done, from the first to the last"_s,
              [this] { storeAll(u"Uploading reports"_s); });
    addButton(*row, u"CHEC&K"_s, u"checkButton"_s,
              u"Show what UPLOAD ALL would store, and every problem, without storing anything"_s,
              [this] { checkAll(); });
    row->addStretch(1);
    body().addLayout(row);
}

void ReportImportDlg::chooseFiles()
{
    const QStringList paths = m_setup.files.openFiles(kReportChooser, u"Open Reports"_s, m_setup.project.roots());
    if (!paths.isEmpty())
        openFiles(paths);
}

bool ReportImportDlg::showFile(const QString &path, const brannock::Report *edited)
{
    if (edited) {
        editor().setReport(*edited);
        return true;
    }
    const bool isLoaded = editor().loadReport(path);
    if (!isLoaded)
        editor().setReport({}); // the entries of another file must not be uploaded in place of this one's
    return isLoaded;
}

bool ReportImportDlg::storeShown()
{
    std::unique_ptr<ProgressDialog> progress;
    if (!batch())
        progress = std::make_unique<ProgressDialog>(this, u"Uploading entries"_s);
    UploadRun upload(m_setup.session, m_setup.project, UploadRun::Mode::Store, batch() ? batch() : progress.get());
    return upload.uploadCurrent(fileList(), editor().report()).completed;
}

void ReportImportDlg::saveOptions()
{
    storeOptions(m_options, m_setup.project.roots(), prompts());
}

brannock::Report ReportImportDlg::reportOf(int index)
{
    if (index == fileList().current() && isShown())
        return editor().report(); // what is shown, even if the file has changed
    if (const brannock::Report *edited = editsOf(index))
        return *edited;
    brannock::Report report;
    report.loadReport(fileList().files()[index].path);
    return report;
}

void ReportImportDlg::checkAll()
{
    if (!fileList().checkCurrent(prompts()) || !db::checkConnected(m_setup.session))
        return;
    keepEdits();
    // The questions of an upload are among the problems; each is taken as answered with Yes.
    CheckPrompts unasked;
    QList<brannock::FileOutcome> outcomes;
    {
        ProgressDialog progress(this, u"Checking entries"_s);
        UploadRun check(m_setup.session, m_setup.project, UploadRun::Mode::Check, &progress, &unasked);
        for (int i = 0; i < fileList().rowCount(); ++i) {
            brannock::Report report;
            try {
                report = reportOf(i);
            } catch (const FileError &error) {
                outcomes.append({fileList().files()[i].path, 0, 0, 0, {{0, 0, {}, u"cannot be read"_s, error.text()}}});
                continue;
            }
            report.path = fileList().files()[i].path;
            const bool isStored = check.upload(report).completed;
            if (!isStored && progress.cancelled())
                throw Cancelled();
            outcomes.append(check.outcomes().last());
            // What ends an upload, such as a read-only database, is the reason why nothing of the file is stored.
            const QString failure = unasked.takeFailure();
            if (!isStored && !failure.isEmpty())
                outcomes.last().problems.append({0, 0, {}, u"not stored"_s, failure.simplified()});
        }
    }
    showProblems(outcomes);
}

void ReportImportDlg::print()
{
    const QString name = QFileInfo(editor().report().path).fileName();
    if (m_printing.print({editor().table(), m_options.print, m_setup.printMacros(), name}, TablePrinting::Rows::All))
        prompts().status(messages::kPrinting);
}

} // namespace results
