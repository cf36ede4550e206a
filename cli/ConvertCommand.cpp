#include "CommandLine.h"
#include "CommandTable.h"
#include "Target.h"

#include <conversion/Messages.h>
#include <conversion/ReportConversion.h>
#include <QFileInfo>

namespace cli {

using namespace Qt::StringLiterals;

namespace {

constexpr int kRemarksShown = 20;

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

void showRemarks(const conversion::Remarks &remarks)
{
    for (const conversion::Remark &remark :
         remarks.kept().first(std::min<qsizetype>(remarks.kept().size(), kRemarksShown)))
        printError(remark.toString() + u'\n');
    if (remarks.count() > kRemarksShown)
        printError(u"... and %1 more remarks\n"_s.arg(remarks.count() - kRemarksShown));
}

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
    const QString spec = arguments.has(u"spec") ? QFileInfo(arguments.value(u"spec")).absoluteFilePath()
                                                : target.project().pathOf(u"report_formats\\default.fmt"_s);
    ConsoleProgress progress;
    bool allStored = true;
    for (const QString &path : arguments.positional().mid(1)) {
        // Each file by itself: what one text carries must not leak into the next.
        conversion::ReportConversion run(target.project());
        run.spec.loadFrom(spec);
        run.prompts = prompts;
        try {
            run.convertFile(QFileInfo(path).absoluteFilePath(), &progress);
        } catch (const tarnwick::FileError &error) {
            throw tarnwick::Error(QString::fromUtf16(conversion::messages::kCouldNotLoadText.text) + u"\n\n"_s +
                                  error.text());
        }
        showRemarks(run.remarks());
        // A file name that carries no cal or type leaves the flags' values in force.
        if (run.prompts.cal < 1)
            run.prompts.cal = prompts.cal;
        if (run.prompts.operType.isEmpty())
            run.prompts.operType = prompts.operType;
        if (resultCount(run.report()) == 0) {
            printError(u"error: %1 holds no results; nothing was stored\n"_s.arg(path));
            allStored = false;
            continue;
        }
        const QString report = run.target().text();
        const bool stored = run.store(target.console()) == conversion::StoreResult::Stored;
        allStored = allStored && stored;
        print(stored ? u"%1: stored %2 with %3 results\n"_s.arg(path, report).arg(resultCount(run.report()))
                     : u"%1: not stored\n"_s.arg(path));
    }
    return allStored ? Done : Failed;
}

} // namespace cli
