// Storing, checking and printing of the conversion dialog.
#include "ReportConvDlg.h"

#include "TextReport.h"

#include <conversion/ConversionCheck.h>
#include <conversion/Messages.h>
#include <tarnwick/Failures.h>
#include <tarnwick/gui/ProgressDialog.h>

#include <QFileInfo>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace conversion {

bool ReportConvDlg::storeShown()
{
    takePrompts();
    saveOptions();
    m_conversion.report() = editor().report();
    bool isStored = false;
    const auto work = [&] { isStored = m_conversion.store(prompts()) == StoreResult::Stored; };
    attempt(prompts(), work, messages::kCouldNotStoreReport);
    if (isStored)
        fileList().markCurrentDone();
    return isStored;
}

void ReportConvDlg::checkAll()
{
    if (!fileList().checkCurrent(prompts()))
        return;
    keepEdits();
    takePrompts();
    ReportConversion trial(m_setup.project);
    trial.spec = m_conversion.spec;
    trial.prompts = m_conversion.prompts;
    ConversionCheck check(m_setup.project);
    {
        ProgressDialog progress(this, u"Checking text reports"_s);
        for (int i = 0; i < fileList().rowCount(); ++i) {
            const QString path = fileList().files()[i].path;
            try {
                trial.convertFile(path, &progress);
            } catch (const FileError &error) {
                check.addUnreadable(path, error.text());
                continue;
            }
            if (i == fileList().current())
                trial.prompts = m_conversion.prompts; // as they are in the fields now
            const brannock::Report *edited = editsOf(i);
            check.add(trial, edited ? *edited : trial.report());
        }
    }
    showProblems(check.outcomes());
}

void ReportConvDlg::showProblem(int line, int entry)
{
    if (line > 0)
        m_text->setCurrentLine(line);
    ReportFilesDlg::showProblem(line, entry);
}

void ReportConvDlg::print()
{
    if (!fileList().checkCurrent(prompts()))
        return;
    const QString name = m_conversion.target().baseName();
    if (m_printing.print({editor().table(), m_options.printArgs, m_setup.printMacros(), name},
                         TablePrinting::Rows::All))
        prompts().status(messages::kPrinting);
}

} // namespace conversion
