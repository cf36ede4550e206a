#include "CommandLine.h"
#include "CommandTable.h"
#include "OutcomeOutput.h"
#include "Target.h"
#include "TextOrJson.h"

#include <conversion/ConversionCheck.h>
#include <conversion/Messages.h>
#include <conversion/ReportConversion.h>
#include <QFileInfo>
#include <tarnwick/Failures.h>

#include <QSet>
#include <utility>

namespace cli {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype kRemarksOfAText = 20;
/// Remarks printed for all texts together; further texts get a summary.
constexpr qsizetype kRemarksOfABatch = 200;

conversion::ConversionPrompts promptsOf(const Arguments &arguments)
{
    conversion::ConversionPrompts prompts;
    prompts.cal = int(arguments.integer(u"cal", prompts.cal, 1, 999));
    prompts.sec = int(arguments.integer(u"sec", prompts.sec, 0, 999));
    prompts.analyst = arguments.value(u"analyst");
    prompts.operatorId = arguments.value(u"operator");
    prompts.probe = arguments.value(u"probe");
    prompts.serialNumber = arguments.value(u"sn");
    prompts.operType = arguments.value(u"oper-type", prompts.operType);
    return prompts;
}

/// Collects the results of all texts of one command.
class Batch
{
public:
    void addRemarks(const conversion::Remarks &remarks)
    {
        const qsizetype room = std::min(kRemarksOfAText, kRemarksOfABatch - m_printed);
        const auto shown = remarks.kept().first(std::min<qsizetype>(remarks.kept().size(), room));
        for (const conversion::Remark &remark : shown)
            printError(remark.toString() + u'\n');
        if (!shown.isEmpty() && remarks.count() > shown.size())
            printError(u"... and %1 more remarks\n"_s.arg(remarks.count() - shown.size()));
        m_printed += shown.size();
        m_remarks += remarks.count();
        m_textsWithRemarks += remarks.isEmpty() ? 0 : 1;
    }
    void addText(bool stored) { ++(stored ? m_stored : m_notStored); }
    void noteStored(const QString &report) { m_reports.insert(report.toLower()); }
    bool hasStored(const QString &report) const { return m_reports.contains(report.toLower()); }
    bool isWhole() const { return m_notStored == 0; }

    /// Printed if there is more than one text.
    void printSummary() const
    {
        if (m_stored + m_notStored < 2)
            return;
        print(u"%1 texts: %2 stored, %3 not stored, %4 remarks in %5 texts\n"_s.arg(m_stored + m_notStored)
                  .arg(m_stored)
                  .arg(m_notStored)
                  .arg(m_remarks)
                  .arg(m_textsWithRemarks));
    }

private:
    qsizetype m_printed = 0;
    qint64 m_remarks = 0;
    int m_textsWithRemarks = 0;
    QSet<QString> m_reports; ///< in lower case: some file systems ignore the case
    int m_stored = 0;
    int m_notStored = 0;
};

int resultCount(const brannock::Report &report)
{
    return int(std::count_if(report.entries.cbegin(), report.entries.cend(),
                             [](const brannock::ReportEntry &entry) { return entry.isResult(); }));
}

} // namespace

int runConvert(const Arguments &arguments)
{
    Target target(arguments.positional(0, u"DIR"_s), arguments, Target::Takes::Project);
    arguments.positional(1, u"TEXT"_s);
    const conversion::ConversionPrompts prompts = promptsOf(arguments);
    const QString spec = arguments.has(u"spec") ? target.pathOf(arguments.value(u"spec"))
                                                : target.project().pathOf(u"report_formats\\default.fmt"_s);
    const bool isDryRun = arguments.has(u"dry-run");
    const bool isJson = wantsJson(arguments);
    ConsoleProgress progress;
    Batch batch;
    conversion::ConversionCheck check(target.project());
    QList<brannock::FileOutcome> outcomes;
    bool isFirst = true;
    for (const QString &path : arguments.positional().mid(1)) {
        // Each file is converted independently: values of one text must not be used for the next.
        conversion::ReportConversion run(target.project());
        if (arguments.has(u"spec"))
            run.spec.loadFrom(spec);
        else if (!run.spec.loadOrReset(spec) && isFirst)
            printError(tarnwick::format(conversion::messages::kDefaultSpecUsed.text, run.spec.path().text()) + u'\n');
        isFirst = false;
        run.prompts = prompts;
        try {
            run.convertFile(target.pathOf(path), &progress);
        } catch (const tarnwick::FileError &error) {
            // The other texts are converted all the same, and what becomes of them is told.
            tarnwick::showFailure(target.prompts(), error, conversion::messages::kCouldNotLoadText);
            check.addUnreadable(target.pathOf(path), error.text());
            outcomes.append(check.outcomes().last());
            batch.addText(false);
            continue;
        }
        if (!isJson && !isDryRun) // otherwise they are among the problems
            batch.addRemarks(run.remarks());
        // If the file name does not contain a type, the value of the flag is used.
        if (run.prompts.operType.isEmpty())
            run.prompts.operType = prompts.operType;
        check.add(run, run.report());
        outcomes.append(check.outcomes().last());
        // What is not stored below, for any reason, is passed over as a whole.
        const int results = std::exchange(outcomes.last().stored, 0);
        outcomes.last().skipped = results;
        const auto noteStored = [&] { std::swap(outcomes.last().stored, outcomes.last().skipped); };
        if (resultCount(run.report()) == 0) {
            target.prompts().showError(tarnwick::kErrorSeverity, 0,
                                       u"\"%1\" contains no results; nothing was stored"_s.arg(path));
            batch.addText(false);
            continue;
        }
        const QString report = run.target().text();
        // Even with --yes one text must not replace the report of another one.
        if (batch.hasStored(report)) {
            target.prompts().error(conversion::messages::kSameTarget, path, report);
            batch.addText(false);
            continue;
        }
        const bool stored = run.store(target.prompts(), isDryRun) == conversion::StoreResult::Stored;
        batch.addText(stored);
        if (stored) {
            batch.noteStored(report);
            noteStored();
        }
        if (isDryRun && !isJson)
            printChecked(outcomes.last());
        if (isDryRun || isJson)
            continue;
        print(stored ? u"%1: stored %2 with %3 results\n"_s.arg(path, report).arg(resultCount(run.report()))
                     : u"%1: not stored\n"_s.arg(path));
    }
    if (!isJson && !isDryRun)
        batch.printSummary();
    finishOutcomes(target, arguments, outcomes);
    return batch.isWhole() ? Done : Failed;
}

} // namespace cli
