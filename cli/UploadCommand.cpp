#include "CommandLine.h"
#include "CommandTable.h"
#include "OutcomeOutput.h"
#include "Target.h"
#include "TextOrJson.h"

#include <QFileInfo>
#include <results/UploadRun.h>

namespace cli {

using namespace Qt::StringLiterals;

namespace {

/// "3, 5-12, 20": ascending numbers as ranges; only the first ranges of long lists.
QString rangesOf(const QList<int> &numbers)
{
    constexpr qsizetype kMostRanges = 20;
    QStringList ranges;
    for (qsizetype i = 0; i < numbers.size();) {
        qsizetype end = i + 1;
        while (end < numbers.size() && numbers[end] == numbers[end - 1] + 1)
            ++end;
        if (ranges.size() == kMostRanges) {
            ranges.append(u"... and %1 more"_s.arg(numbers.size() - i));
            break;
        }
        ranges.append(end - i == 1 ? QString::number(numbers[i]) : u"%1-%2"_s.arg(numbers[i]).arg(numbers[end - 1]));
        i = end;
    }
    return ranges.join(u", "_s);
}

void printUploaded(const QString &name, const results::UploadSummary &summary, const QString &status)
{
    print(name + u": "_s + status + u'\n');
    if (summary.completed && (summary.skipped > 0 || summary.failed > 0 || summary.replaced > 0))
        print(u"%1: %2 read, %3 stored, %4 skipped, %5 failed, %6 old rows replaced\n"_s.arg(name)
                  .arg(summary.read)
                  .arg(summary.stored)
                  .arg(summary.skipped)
                  .arg(summary.failed)
                  .arg(summary.replaced));
}

} // namespace

int runUpload(const Arguments &arguments)
{
    Target target(arguments.positional(0, u"DIR"_s), arguments, Target::Takes::Project);
    arguments.positional(1, u"REP"_s);
    const bool isJson = wantsJson(arguments);
    const bool isCheck = arguments.has(u"dry-run");
    QStringList paths;
    for (const QString &path : arguments.positional().mid(1))
        paths.append(target.pathOf(path));

    // All files are read before the first is uploaded, so that a damaged file is found before anything is written. A
    // dry run lists it among the problems.
    for (const QString &path : isCheck ? QStringList() : paths)
        brannock::Report().loadReport(path);
    if (!target.connect(Target::Use::Store))
        return Failed;

    tarnwick::FileStatusList files;
    files.open(paths);
    ConsoleProgress progress;
    bool isWhole = true;
    using results::UploadRun;
    const auto mode = isCheck ? UploadRun::Mode::Check : UploadRun::Mode::Store;
    UploadRun run(target.session(), target.project(), mode, &progress);
    QList<brannock::FileOutcome> outcomes;
    for (int i = 0; i < int(paths.size()); ++i) {
        files.select(i, target.prompts());
        brannock::Report report;
        try {
            report.loadReport(paths[i]);
        } catch (const tarnwick::FileError &error) {
            if (!isCheck)
                throw;
            outcomes.append({paths[i], 0, 0, 0, {{0, 0, {}, u"cannot be read"_s, error.text()}}});
            isWhole = false;
            if (!isJson)
                printChecked(outcomes.last());
            continue;
        }
        const results::UploadSummary summary = run.uploadCurrent(files, report);
        outcomes.append(run.outcomes().last());
        const QString name = QFileInfo(paths[i]).fileName();
        if (!isJson && isCheck)
            printChecked(outcomes.last());
        else if (!isJson)
            printUploaded(name, summary, target.console().lastStatus());
        if (!summary.failedEntries.isEmpty())
            printError(u"%1: not stored: entries %2\n"_s.arg(name, rangesOf(summary.failedEntries)));
        isWhole = isWhole && summary.completed && summary.failed == 0;
        if (!summary.completed && !isCheck)
            break;
    }
    finishOutcomes(target, arguments, outcomes);
    return isWhole ? Done : Failed;
}

} // namespace cli
