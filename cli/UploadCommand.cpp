#include "CommandLine.h"
#include "CommandTable.h"
#include "Target.h"

#include <QFileInfo>
#include <results/ReportUpload.h>
#include <results/UploadFileList.h>

namespace cli {

using namespace Qt::StringLiterals;

int runUpload(const Arguments &arguments)
{
    Target target(arguments.positional(0, u"DIR"_s), arguments, Target::Takes::Project);
    arguments.positional(1, u"REP"_s);
    QStringList paths;
    for (const QString &path : arguments.positional().mid(1))
        paths.append(QFileInfo(path).absoluteFilePath());

    // All files are read before anything is written: a damaged one must not be found half-way.
    for (const QString &path : std::as_const(paths))
        brannock::Report().loadReport(path);
    if (!target.connect(Target::Use::Store))
        return Failed;

    results::UploadFileList files;
    files.open(paths);
    ConsoleProgress progress;
    bool allStored = true;
    results::ReportUpload upload(target.session(), target.project(), &progress);
    for (int i = 0; i < int(paths.size()); ++i) {
        files.select(i, target.console());
        brannock::Report report;
        report.loadReport(paths[i]);
        const results::UploadSummary summary = upload.uploadCurrent(files, report);
        const QString name = QFileInfo(paths[i]).fileName();
        print(name + u": "_s + target.console().lastStatus() + u'\n');
        if (summary.completed && (summary.skipped > 0 || summary.failed > 0 || summary.replaced > 0))
            print(u"%1: %2 read, %3 stored, %4 skipped, %5 failed, %6 old rows replaced\n"_s.arg(name)
                      .arg(summary.read)
                      .arg(summary.stored)
                      .arg(summary.skipped)
                      .arg(summary.failed)
                      .arg(summary.replaced));
        for (const int entry : summary.failedEntries)
            printError(u"%1: entry %2 was not stored\n"_s.arg(name).arg(entry));
        if (!summary.completed)
            return Failed;
        allStored = allStored && summary.failed == 0;
    }
    return allStored ? Done : Failed;
}

} // namespace cli
