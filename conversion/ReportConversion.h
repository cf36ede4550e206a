#pragma once
#include "Remarks.h"
#include "ReportConvOptions.h"
#include "ReportConvSpec.h"
#include "TextSource.h"

#include <brannock/Project.h>
#include <brannock/Report.h>
#include <tarnwick/Progress.h>
#include <tarnwick/Prompts.h>

namespace conversion {

enum class StoreResult { Stored, Declined };

/// Converts foreign text reports, one at a time, into the suite's report files. The dialog and the command line both
/// drive it:
///
///     ReportConversion conversion(project);
///     conversion.spec.loadFrom(project.pathOf(u"report_formats\\default.fmt"_s));
///     conversion.prompts.cal = 12;
///     conversion.convertFile(path);      // report(), remarks()
///     conversion.store(prompts);         // reports\00012_PRI.rep
///
/// The prompts, and the values kept in the conversion spec's fields, go on from file to file as they do in the dialog;
/// who wants each file converted by itself sets them anew.
class ReportConversion
{
public:
    /// The project (its component, defect codes, site and outage) must outlive the object.
    explicit ReportConversion(const brannock::Project &project);

    ReportConvSpec spec;
    ConversionPrompts prompts;

    /// Reads the text, sets the prompts from its path and header lines, and makes the report of it. Throws
    /// tarnwick::FileError when the text cannot be read and tarnwick::Cancelled; report and prompts are then as before.
    void convertFile(const QString &machinePath, tarnwick::Progress *progress = nullptr);
    /// The same on the text that is there already, after the conversion spec or a prompt was changed.
    void convertAgain(tarnwick::Progress *progress = nullptr);

    const TextSource &text() const { return m_text; }
    brannock::Report &report() { return m_report; }
    const brannock::Report &report() const { return m_report; }
    const Remarks &remarks() const { return m_remarks; }
    /// The text's line, from 1, that an entry was made of, and the entry made of a line; -1 where there is none. They
    /// hold until entries are added to or removed from the report.
    int lineOfEntry(int entry) const;
    int entryOfLine(int line) const;

    /// "reports\00012_PRI.rep": the cal in five digits and the operation type.
    tarnwick::SuitePath target() const;
    /// Fills what the entries miss from the prompts and the project and writes the report. Asks before it overwrites;
    /// any answer but Yes stores nothing. Throws tarnwick::FileError.
    StoreResult store(tarnwick::UserPrompts &user);

private:
    void convert(const TextSource &text, tarnwick::Progress *progress);
    void applyFilenameFields(const QString &machinePath);
    void fillMissing();

    const brannock::Project &m_project;
    TextSource m_text;
    brannock::Report m_report;
    QList<int> m_lines; ///< of the entries, ascending
    Remarks m_remarks;
};

} // namespace conversion
