#pragma once
#include "Remarks.h"
#include "ReportConvOptions.h"
#include "ReportConvSpec.h"
#include "TextSource.h"

#include <brannock/Project.h>
#include <brannock/Report.h>
#include <tarnwick/base/Progress.h>
#include <tarnwick/Prompts.h>

namespace conversion {

enum class StoreResult { Stored, Declined };

/// Converts foreign text reports, one at a time, to the suite's report files. Used by the dialog and the command line:
///
///     ReportConversion conversion(project);
///     conversion.spec.loadFrom(project.pathOf(u"report_formats\\default.fmt"_s));
///     conversion.prompts.cal = 12;
///     conversion.convertFile(path);      // report(), remarks()
///     conversion.store(prompts);         // reports\00012_PRI.rep
///
/// The prompts, and the values in the fields of the format, are kept from file to file, as in the dialog. To convert
/// each file independently, set them again before each file.
class ReportConversion
{
public:
    /// The project (component, defect codes, site, outage) must outlive the object.
    explicit ReportConversion(const brannock::Project &project);

    ReportConvSpec spec;
    ConversionPrompts prompts;

    /// Reads the text, sets the prompts from its path and header lines, and converts it to a report. Throws
    /// tarnwick::FileError if the text cannot be read, and tarnwick::Cancelled; report and prompts are then unchanged.
    void convertFile(const QString &machinePath, tarnwick::Progress *progress = nullptr);
    /// Converts the current text again, after the format or a prompt was changed.
    void convertAgain(tarnwick::Progress *progress = nullptr);

    const TextSource &text() const { return m_text; }
    brannock::Report &report() { return m_report; }
    const brannock::Report &report() const { return m_report; }
    const Remarks &remarks() const { return m_remarks; }
    /// Line number, from 1, of the text that an entry was made from, and the entry made from a line; -1 if there is
    /// none. Entries may have been added, removed or edited.
    static int lineOfEntry(const brannock::Report &report, int entry);
    static int entryOfLine(const brannock::Report &report, int line);
    /// The part of a text's path that filename fields cut.
    static QString pathPart(const QString &machinePath, int part);

    /// "reports\00012_PRI.rep": the cal with five digits and the operation type.
    tarnwick::SuitePath target() const;
    /// Fills missing members of the entries from the prompts and the project, as they are when they are stored.
    void fill(QList<brannock::ReportEntry> &entries) const;
    /// Fills missing members of the entries from the prompts and the project, and writes the report. Asks before it
    /// overwrites a file; any answer except Yes stores nothing. Throws tarnwick::FileError. What was stored is entered
    /// into the project's log. A dry run only asks.
    StoreResult store(tarnwick::UserPrompts &user, bool isDryRun = false);

private:
    void convert(const TextSource &text, tarnwick::Progress *progress);
    void applyFilenameFields(const QString &machinePath, Remarks &remarks);
    void applyCal(const QString &value, const QString &machinePath, Remarks &remarks);

    void noteStored(tarnwick::UserPrompts &user) const;

    const brannock::Project &m_project;
    TextSource m_text;
    brannock::Report m_report;
    Remarks m_remarks;
};

} // namespace conversion
