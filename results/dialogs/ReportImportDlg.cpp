#include "ReportImportDlg.h"

#include "CalListDlg.h"

#include <brannock/gui/ReportEditor.h>
#include <brannock/gui/ReportProblemsDlg.h>
#include <results/Messages.h>
#include <results/UploadRun.h>
#include <tarnwick/gui/DroppedFiles.h>
#include <tarnwick/gui/FileStatusTable.h>
#include <tarnwick/gui/JTableWin.h>
#include <tarnwick/gui/ProgressDialog.h>
#include <tarnwick/OptionPrompts.h>

#include <QDropEvent>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QMimeData>
#include <QPushButton>
#include <QScopeGuard>
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
    : JDialog(setup.session.prompts(), &kTable, u"reportImportDlg"_s, setup.parent)
    , m_setup(setup)
    , m_check(setup.project.steamGen, setup.project.defects)
    , m_fileTable(makeFileStatusTable(m_files, prompts(), u"Report files"_s,
                                      [this](int index) { run([&] { selectFile(index); }); }))
    , m_editor(new brannock::ReportEditor(prompts(), &m_check, {.isImport = true}))
    , m_printing(prompts(), this)
{
    loadOptions(m_options, setup.project.roots(), prompts());
    setAcceptDrops(true);
    commands().bind(OpenFiles, [this] { chooseFiles(); });
    commands().bind(Print, [this] { print(); });
    commands().bind(AllCals, [this] {
        if (db::checkConnected(m_setup.session))
            CalListDlg::show(m_setup.session, m_setup.project.steamGen, this);
    });
    auto *splitter = new QSplitter(Qt::Vertical);
    splitter->setObjectName(u"splitter"_s);
    splitter->addWidget(m_fileTable);
    splitter->addWidget(m_editor);
    splitter->setStretchFactor(1, 1);
    splitter->setChildrenCollapsible(false);
    body().addWidget(splitter, 1);
    makeButtons();
    finish(m_fileTable, {1000, 700});
}

ReportImportDlg::~ReportImportDlg()
{
    m_fileTable->setSource(nullptr);
}

void ReportImportDlg::makeButtons()
{
    auto *row = new QHBoxLayout;
    addButton(*row, u"&UPLOAD"_s, u"uploadButton"_s, u"Store the entries of the current file in the database"_s,
              [this] { uploadCurrent(); });
    addButton(*row, u"UPLOA&D ALL"_s, u"uploadAllButton"_s,
              u"Store the files that are not done, from the first to the last"_s, [this] { uploadAll(); });
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

void ReportImportDlg::openFiles(const QStringList &paths)
{
    keepEdits();
    if (!mayClose())
        return;
    m_edited.clear();
    delete m_problems; // of other files
    m_files.open(paths);
    m_fileTable->reload();
    showCurrentFile();
    storeOptions(m_options, m_setup.project.roots(), prompts());
}

void ReportImportDlg::keepEdits()
{
    if (m_editor->document().isModified())
        m_edited.insert(m_files.current(), m_editor->report());
}

void ReportImportDlg::selectFile(int index)
{
    keepEdits();
    m_files.select(index, prompts());
    m_fileTable->grid().noteAllChanged();
    showCurrentFile();
}

void ReportImportDlg::showCurrentFile()
{
    m_fileTable->setCurrentSourceRow(m_files.current());
    m_isLoaded = true;
    if (const auto edited = m_edited.constFind(m_files.current()); edited != m_edited.constEnd()) {
        m_editor->setReport(*edited);
        return;
    }
    m_files.noteRead();
    if (!m_editor->loadReport(m_files.files()[m_files.current()].path)) {
        m_editor->setReport({}); // the entries of another file must not be uploaded in place of this one's
        m_isLoaded = false;
    }
}

bool ReportImportDlg::uploadCurrent()
{
    if (!m_files.checkCurrent(prompts()))
        return false;
    if (!m_isLoaded)
        showCurrentFile(); // the file may be readable by now
    if (!m_isLoaded || !isAsRead())
        return false;
    UploadSummary summary;
    {
        std::unique_ptr<ProgressDialog> progress;
        if (!m_batch)
            progress = std::make_unique<ProgressDialog>(this, u"Uploading entries"_s);
        UploadRun upload(m_setup.session, m_setup.project, UploadRun::Mode::Store, m_batch ? m_batch : progress.get());
        summary = upload.uploadCurrent(m_files, m_editor->report());
    }
    if (summary.completed) {
        m_editor->document().setStored();
        m_edited.remove(m_files.current());
    }
    m_fileTable->grid().noteAllChanged();
    return summary.completed;
}

bool ReportImportDlg::isAsRead()
{
    const Answer answer = m_files.askIfChanged(prompts());
    if (answer == Answer::Yes) {
        m_editor->document().setStored();
        m_edited.remove(m_files.current());
        showCurrentFile();
    }
    return answer == Answer::No;
}

void ReportImportDlg::uploadAll()
{
    if (!m_files.checkCurrent(prompts()))
        return;
    ProgressDialog progress(this, u"Uploading reports"_s);
    m_batch = &progress;
    const auto end = qScopeGuard([this] { m_batch = nullptr; });
    for (int index = 0; index < m_files.rowCount(); ++index) {
        if (m_files.files()[index].isDone)
            continue;
        progress.report(index, m_files.rowCount(), QFileInfo(m_files.files()[index].path).fileName());
        if (progress.cancelled())
            throw Cancelled();
        if (index != m_files.current())
            selectFile(index);
        const QString name = QFileInfo(m_files.files()[index].path).fileName();
        const bool isLast = index + 1 == m_files.rowCount();
        if (!uploadCurrent() && (progress.cancelled() || isLast ||
                                 prompts().question(Buttons::YesNo, messages::kGoOnWithNextFile, name) != Answer::Yes))
            return;
    }
}

brannock::Report ReportImportDlg::reportOf(int index) const
{
    if (index == m_files.current() && m_isLoaded)
        return m_editor->report(); // what is shown, even if the file has changed
    if (const auto edited = m_edited.constFind(index); edited != m_edited.constEnd())
        return *edited;
    brannock::Report report;
    report.loadReport(m_files.files()[index].path);
    return report;
}

void ReportImportDlg::checkAll()
{
    if (!m_files.checkCurrent(prompts()) || !db::checkConnected(m_setup.session))
        return;
    keepEdits();
    // The questions of an upload are among the problems; each is taken as answered with Yes.
    CheckPrompts unasked;
    QList<brannock::FileOutcome> outcomes;
    {
        ProgressDialog progress(this, u"Checking entries"_s);
        UploadRun check(m_setup.session, m_setup.project, UploadRun::Mode::Check, &progress, &unasked);
        for (int i = 0; i < m_files.rowCount(); ++i) {
            brannock::Report report;
            try {
                report = reportOf(i);
            } catch (const FileError &error) {
                outcomes.append({m_files.files()[i].path, 0, 0, 0, {{0, 0, {}, u"cannot be read"_s, error.text()}}});
                continue;
            }
            report.path = m_files.files()[i].path;
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
    delete m_problems;
    m_problems = new brannock::ReportProblemsDlg(outcomes, prompts(), m_setup.files, m_setup.project.roots(), this);
    m_problems->setAttribute(Qt::WA_DeleteOnClose);
    connect(m_problems, &brannock::ReportProblemsDlg::problemChosen, this,
            [this](int file, int, int entry) { run([&] { showProblem(file, entry); }); });
    m_problems->show();
}

void ReportImportDlg::showProblem(int file, int entry)
{
    if (file >= m_files.rowCount())
        return;
    if (file != m_files.current())
        selectFile(file);
    if (entry > 0 && entry <= m_editor->report().numEntry())
        m_editor->setCurrentEntry(entry - 1);
}

void ReportImportDlg::print()
{
    const QString name = QFileInfo(m_editor->report().path).fileName();
    if (m_printing.print({m_editor->table(), m_options.print, m_setup.printMacros(), name}, TablePrinting::Rows::All))
        prompts().status(messages::kPrinting);
}

bool ReportImportDlg::mayClose()
{
    return m_edited.isEmpty() ||
           prompts().question(Buttons::YesNo, messages::kCloseWithoutUpload, int(m_edited.size())) == Answer::Yes;
}

bool ReportImportDlg::store()
{
    keepEdits();
    if (!mayClose())
        return false;
    storeOptions(m_options, m_setup.project.roots(), prompts());
    return true;
}

bool ReportImportDlg::discard()
{
    keepEdits();
    return mayClose();
}

void ReportImportDlg::dragEnterEvent(QDragEnterEvent *event)
{
    if (event->mimeData()->hasUrls())
        event->acceptProposedAction();
}

void ReportImportDlg::dropEvent(QDropEvent *event)
{
    const QStringList paths = tarnwick::droppedFiles(*event->mimeData());
    if (!paths.isEmpty())
        run([&] { openFiles(paths); });
}

} // namespace results
