#include "CommandLine.h"
#include "CommandTable.h"
#include "Console.h"

#include <fenwright/CellText.h>
#include <QFileInfo>
#include <setup/NewProject.h>

namespace cli {

using namespace Qt::StringLiterals;

static setup::TubePattern patternOf(const Arguments &arguments)
{
    setup::TubePattern pattern;
    if (arguments.has(u"pitch")) {
        bool ok = false;
        pattern.pitch = arguments.value(u"pitch").toDouble(&ok);
        if (!ok || !(pattern.pitch > 0) || !std::isfinite(pattern.pitch))
            throw UsageError(u"--pitch is a number above 0."_s);
    }
    const QString kind = arguments.value(u"pattern");
    if (arguments.has(u"pattern") && kind != "square"_L1 && kind != "triangular"_L1)
        throw UsageError(u"--pattern is square or triangular."_s);
    if (arguments.has(u"pattern"))
        pattern.triangular = kind == "triangular"_L1;
    return pattern;
}

int runNewProject(const Arguments &arguments)
{
    arguments.atMost(1);
    setup::NewProject wanted;
    wanted.folder = QFileInfo(arguments.positional(0, u"DIR"_s)).absoluteFilePath();
    QStringList missing;
    for (const QString &option : {u"site"_s, u"comp"_s, u"outage"_s, u"component"_s}) {
        if (!arguments.has(option))
            missing.append(u"--"_s + option);
    }
    if (!missing.isEmpty())
        throw UsageError(u"Missing: %1."_s.arg(missing.join(u", "_s)));
    wanted.site = arguments.value(u"site");
    wanted.comp = arguments.value(u"comp");
    wanted.outage = arguments.value(u"outage");
    wanted.component = QFileInfo(arguments.value(u"component")).absoluteFilePath();
    wanted.name = arguments.value(u"name");
    wanted.pattern = patternOf(arguments);
    if (arguments.has(u"date")) {
        const auto date = fenwright::cellTime(arguments.value(u"date").toUtf8());
        if (!date)
            throw UsageError(u"--date is a date such as 2026-03-31."_s);
        wanted.date = *date;
    }
    ConsoleProgress progress;
    const setup::NewComponent component = setup::makeNewProject(wanted, &progress);
    for (const QString &remark : component.remarks)
        printError(remark + u'\n');
    print(u"Made project %1: %2.\n"_s.arg(wanted.folder, component.summary()));
    return Done;
}

} // namespace cli
