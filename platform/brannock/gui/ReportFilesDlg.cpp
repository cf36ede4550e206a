#include "ReportFilesDlg.h"

#include "ReportProblemsDlg.h"

#include <tarnwick/gui/DroppedFiles.h>
#include <tarnwick/gui/FileStatusTable.h>
#include <tarnwick/gui/JTableWin.h>
#include <tarnwick/gui/ProgressDialog.h>

#include <QDropEvent>
#include <QFileInfo>
#include <QMimeData>
#include <QScopeGuard>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace brannock {

ReportFilesDlg::ReportFilesDlg(UserPrompts &user, const Project &project, FileChoice &files, const Kind &kind,
                               QWidget *parent)
    : JDialog(user, &kind.commands, QString::fromUtf16(kind.dialogName), parent)
    , m_project(project)
    , m_choice(files)
    , m_closes(kind.closes)
    , m_goesOn(kind.goesOn)
    , m_check(project.steamGen, project.defects)
    , m_fileTable(makeFileStatusTable(m_files, user, QString::fromUtf16(kind.tableTitle),
                                      [this](int index) { run([&] { selectFile(index); }); }))
    , m_editor(new ReportEditor(user, &m_check, kind.editor))
{
    setAcceptDrops(true);
}

ReportFilesDlg::~ReportFilesDlg()
{
    m_fileTable->setSource(nullptr);
}

void ReportFilesDlg::openFiles(const QStringList &paths)
{
    if (!mayLoseEdits(m_closes))
        return;
    m_edited.clear();
    delete m_problems; // of other files
    m_files.open(paths);
    m_fileTable->reload();
    showCurrentFile();
    saveOptions();
    refresh();
}

void ReportFilesDlg::keepEdits()
{
    if (m_editor->document().isModified())
        m_edited.insert(m_files.current(), m_editor->report());
}

void ReportFilesDlg::forgetEdits()
{
    m_edited.clear();
    m_editor->document().setStored();
}

const Report *ReportFilesDlg::editsOf(int index) const
{
    const auto edited = m_edited.constFind(index);
    return edited == m_edited.constEnd() ? nullptr : &*edited;
}

void ReportFilesDlg::selectFile(int index)
{
    keepEdits();
    m_files.select(index, prompts());
    m_fileTable->grid().noteAllChanged();
    showCurrentFile();
}

void ReportFilesDlg::showCurrentFile()
{
    m_fileTable->setCurrentSourceRow(m_files.current());
    const Report *edited = editsOf(m_files.current());
    if (!edited)
        m_files.noteRead();
    m_isShown = false;
    m_isShown = showFile(m_files.files()[m_files.current()].path, edited);
}

bool ReportFilesDlg::storeCurrent()
{
    if (!m_files.checkCurrent(prompts()))
        return false;
    if (!m_isShown)
        showCurrentFile(); // the file may be readable by now
    if (!m_isShown || !isAsRead())
        return false;
    const bool isStored = storeShown();
    if (isStored) {
        m_editor->document().setStored();
        m_edited.remove(m_files.current());
    }
    m_fileTable->grid().noteAllChanged();
    return isStored;
}

bool ReportFilesDlg::isAsRead()
{
    const Answer answer = m_files.askIfChanged(prompts());
    if (answer == Answer::Yes) {
        m_editor->document().setStored();
        m_edited.remove(m_files.current());
        showCurrentFile();
    }
    return answer == Answer::No;
}

void ReportFilesDlg::storeAll(const QString &title)
{
    if (!m_files.checkCurrent(prompts()))
        return;
    ProgressDialog progress(this, title);
    m_batch = &progress;
    const auto end = qScopeGuard([this] { m_batch = nullptr; });
    for (int index = 0; index < m_files.rowCount(); ++index) {
        const QString name = QFileInfo(m_files.files()[index].path).fileName();
        progress.report(index, m_files.rowCount(), name);
        if (progress.cancelled())
            throw Cancelled();
        if (m_files.files()[index].isDone)
            continue;
        if (index != m_files.current() || !m_isShown)
            selectFile(index);
        const bool isLast = index + 1 == m_files.rowCount();
        if (!(m_isShown && storeCurrent()) &&
            (progress.cancelled() || isLast || prompts().question(Buttons::YesNo, m_goesOn, name) != Answer::Yes))
            return;
    }
}

void ReportFilesDlg::showProblems(const QList<FileOutcome> &outcomes)
{
    delete m_problems;
    m_problems = new ReportProblemsDlg(outcomes, prompts(), m_choice, m_project.roots(), this);
    m_problems->setAttribute(Qt::WA_DeleteOnClose);
    connect(m_problems, &ReportProblemsDlg::problemChosen, this, [this](int file, int line, int entry) {
        run([&] {
            if (file >= m_files.rowCount())
                return;
            if (file != m_files.current())
                selectFile(file);
            showProblem(line, entry);
        });
    });
    m_problems->show();
}

void ReportFilesDlg::showProblem(int, int entry)
{
    if (entry > 0)
        m_editor->setCurrentEntry(entry - 1);
}

bool ReportFilesDlg::mayLoseEdits(const Message &question)
{
    keepEdits();
    return m_edited.isEmpty() || prompts().question(Buttons::YesNo, question, int(m_edited.size())) == Answer::Yes;
}

bool ReportFilesDlg::store()
{
    if (!mayLoseEdits(m_closes))
        return false;
    saveOptions();
    return true;
}

bool ReportFilesDlg::discard()
{
    return mayLoseEdits(m_closes);
}

void ReportFilesDlg::dragEnterEvent(QDragEnterEvent *event)
{
    if (event->mimeData()->hasUrls())
        event->acceptProposedAction();
}

void ReportFilesDlg::dropEvent(QDropEvent *event)
{
    const QStringList paths = droppedFiles(*event->mimeData());
    if (!paths.isEmpty())
        run([&] { openFiles(paths); });
}

} // namespace brannock
