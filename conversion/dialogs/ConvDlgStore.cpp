// Storing, checking and printing of the conversion dialog.
#include "ReportConvDlg.h"

#include "TextReport.h"

#include <brannock/gui/ReportEditor.h>
#include <brannock/gui/ReportProblemsDlg.h>
#include <conversion/ConversionCheck.h>
#include <conversion/Messages.h>
#include <tarnwick/Failures.h>
#include <tarnwick/gui/JTableWin.h>
#include <tarnwick/gui/ProgressDialog.h>

#include <QFileInfo>
#include <QScopeGuard>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace conversion {

bool ReportConvDlg::storeCurrent()
{
    if (!m_files.checkCurrent(prompts()))
        return false;
    if (!m_isConverted)
        showCurrentFile(); // the file may be readable by now
    if (!m_isConverted || !isAsRead())
        return false;
    takePrompts();
    saveOptions();
    m_conversion.report() = m_editor->report();
    bool isStored = false;
    const auto work = [&] { isStored = m_conversion.store(prompts()) == StoreResult::Stored; };
    attempt(prompts(), work, messages::kCouldNotStoreReport);
    if (isStored) {
        m_editor->document().setStored();
        m_edited.remove(m_files.current());
        m_files.markCurrentDone();
        m_fileTable->grid().noteAllChanged();
    }
    return isStored;
}

bool ReportConvDlg::isAsRead()
{
    const Answer answer = m_files.askIfChanged(prompts());
    if (answer == Answer::Yes) {
        m_editor->document().setStored();
        m_edited.remove(m_files.current());
        showCurrentFile();
    }
    return answer == Answer::No;
}

void ReportConvDlg::storeAll()
{
    if (!m_files.checkCurrent(prompts()))
        return;
    ProgressDialog progress(this, u"Storing reports"_s);
    m_batch = &progress;
    const auto end = qScopeGuard([this] { m_batch = nullptr; });
    for (int index = 0; index < m_files.rowCount(); ++index) {
        progress.report(index, m_files.rowCount(), QFileInfo(m_files.files()[index].path).fileName());
        if (progress.cancelled())
            throw Cancelled();
        if (m_files.files()[index].isDone)
            continue;
        if (index != m_files.current() || !m_isConverted)
            selectFile(index);
        const bool isLast = index + 1 == m_files.rowCount();
        const QString name = QFileInfo(m_files.files()[index].path).fileName();
        if (!(m_isConverted && storeCurrent()) &&
            (isLast || prompts().question(Buttons::YesNo, messages::kGoOnWithNextFile, name) != Answer::Yes))
            return;
    }
}

void ReportConvDlg::checkAll()
{
    if (!m_files.checkCurrent(prompts()))
        return;
    keepEdits();
    takePrompts();
    ReportConversion trial(m_setup.project);
    trial.spec = m_conversion.spec;
    trial.prompts = m_conversion.prompts;
    ConversionCheck check(m_setup.project);
    {
        ProgressDialog progress(this, u"Checking text reports"_s);
        for (int i = 0; i < m_files.rowCount(); ++i) {
            const QString path = m_files.files()[i].path;
            try {
                trial.convertFile(path, &progress);
            } catch (const FileError &error) {
                check.addUnreadable(path, error.text());
                continue;
            }
            if (i == m_files.current())
                trial.prompts = m_conversion.prompts; // as they are in the fields now
            const auto edited = m_edited.constFind(i);
            check.add(trial, edited != m_edited.constEnd() ? *edited : trial.report());
        }
    }
    delete m_problems;
    m_problems =
        new brannock::ReportProblemsDlg(check.outcomes(), prompts(), m_setup.files, m_setup.project.roots(), this);
    m_problems->setAttribute(Qt::WA_DeleteOnClose);
    connect(m_problems, &brannock::ReportProblemsDlg::problemChosen, this,
            [this](int file, int line, int entry) { this->run([&] { showProblem(file, line, entry); }); });
    m_problems->show();
}

void ReportConvDlg::showProblem(int file, int line, int entry)
{
    if (file >= m_files.rowCount())
        return;
    if (file != m_files.current())
        selectFile(file);
    if (line > 0)
        m_text->setCurrentLine(line);
    if (entry > 0)
        m_editor->setCurrentEntry(entry - 1);
}

void ReportConvDlg::print()
{
    if (!m_files.checkCurrent(prompts()))
        return;
    const QString name = m_conversion.target().baseName();
    if (m_printing.print({m_editor->table(), m_options.printArgs, m_setup.printMacros(), name},
                         TablePrinting::Rows::All))
        prompts().status(messages::kPrinting);
}

} // namespace conversion
