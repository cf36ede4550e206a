// The files of the format editor: open, save, print, reset, and the two ways out.
#include "ReportConvSpecDlg.h"

#include "TextReport.h"

#include <conversion/Messages.h>
#include <conversion/SpecPrint.h>
#include <tarnwick/AskToSave.h>
#include <tarnwick/Failures.h>
#include <tarnwick/FileWriter.h>
#include <tarnwick/gui/JTableWin.h>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace conversion {

static constexpr FileChooserInfo kFormatChooser{u"report_formats", u"Report Formats (*.fmt)", u".fmt"};

void ReportConvSpecDlg::openFormat()
{
    if (isModified() && !saveOrDiscard(prompts(), messages::kSaveChangesFirst, [this] { return save(); }))
        return;
    const PathRoots roots = m_setup.project.roots();
    const QString chosen = m_setup.files.openFile(kFormatChooser, u"Open Format"_s, roots);
    if (chosen.isEmpty())
        return;
    ReportConvSpec opened;
    if (!attempt(
            prompts(), [&] { opened.loadFrom(chosen); }, messages::kCouldNotLoadSpec))
        return;
    m_spec.assignSettings(opened);
    m_stored.assignSettings(opened);
    m_history.restart(m_spec);
    m_path = SuitePath::fromMachine(chosen, roots).text();
    showSpec();
    prompts().status(messages::kOpened, m_path);
}

bool ReportConvSpecDlg::save()
{
    return saveTo(m_path);
}

bool ReportConvSpecDlg::saveAs()
{
    const PathRoots roots = m_setup.project.roots();
    const QString chosen =
        m_setup.files.saveFile(kFormatChooser, u"Save Format As"_s, roots, SuitePath(m_path).fileName());
    return !chosen.isEmpty() && saveTo(SuitePath::fromMachine(chosen, roots).text());
}

bool ReportConvSpecDlg::saveTo(const QString &path)
{
    const auto work = [&] { m_spec.storeTo(SuitePath(path).machinePath(m_setup.project.roots())); };
    if (!attempt(prompts(), work, messages::kCouldNotSaveSpec))
        return false;
    m_stored.assignSettings(m_spec);
    m_before.assignSettings(m_spec);
    m_path = m_pathBefore = path;
    m_isApplied = true; // what is saved is used, also after Cancel
    prompts().status(messages::kSaved, path);
    return true;
}

void ReportConvSpecDlg::print()
{
    const QString name = SuitePath(m_path).baseName();
    const QString text = specAsText(m_spec, name);
    const auto work = [&] {
        writeFileAtomically(m_setup.project.pathOf(u"temp\\conversion_options.txt"_s), text.toUtf8());
    };
    if (!attempt(prompts(), work, messages::kCouldNotPrintOptions))
        return;
    TextLines lines(text);
    JTableWin table(prompts());
    table.setSource(&lines);
    if (m_printing.preview({table, specPrintLayout(name), m_setup.printMacros(), name}, TablePrinting::Rows::All))
        prompts().status(messages::kPrinting);
    table.setSource(nullptr);
}

void ReportConvSpecDlg::reset()
{
    if (prompts().question(Buttons::YesNo, messages::kResetFormat) != Answer::Yes)
        return;
    m_spec.assignSettings(ReportConvSpec());
    showSpec();
}

bool ReportConvSpecDlg::store()
{
    if (isModified() && !save())
        return false;
    m_setup.apply(m_spec, m_path);
    return true;
}

bool ReportConvSpecDlg::discard()
{
    if (isModified()) {
        if (!saveOrDiscard(prompts(), messages::kSaveChanges, [this] { return save(); }))
            return false;
    } else {
        prompts().status(messages::kFormatUnchanged);
    }
    if (m_isApplied)
        m_setup.apply(m_before, m_pathBefore);
    return true;
}

} // namespace conversion
