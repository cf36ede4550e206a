#include "CommandLine.h"
#include "CommandTable.h"
#include "Console.h"

#include <brannock/Project.h>
#include <demo/DemoProject.h>
#include <QDir>
#include <QFileInfo>
#include <setup/FilledDemo.h>

namespace cli {

using namespace Qt::StringLiterals;

int runDemo(const Arguments &arguments)
{
    arguments.atMost(1);
    const QString folder = QFileInfo(arguments.positional(0, u"DIR"_s)).absoluteFilePath();
    demo::DemoOptions options;
    const QString kind = arguments.value(u"kind", u"recirculating"_s);
    if (kind == "once-through"_L1)
        options.kind = demo::Kind::OnceThrough;
    else if (kind != "recirculating"_L1)
        throw UsageError(u"--kind is recirculating or once-through."_s);
    options.tubes =
        int(arguments.integer(u"tubes", options.tubes, demo::DemoOptions::kLeastTubes, demo::DemoOptions::kMostTubes));
    options.entries = arguments.integer(u"entries", options.entries, 1, demo::DemoOptions::kMostEntries);
    options.outages = int(arguments.integer(u"outages", options.outages, 1, demo::DemoOptions::kMostOutages));
    options.sections = int(arguments.integer(u"sections", options.sections, 1, demo::DemoOptions::kMostSections));
    options.seed = quint64(arguments.integer(u"seed", qint64(options.seed), 0, std::numeric_limits<qint64>::max()));

    ConsoleProgress progress;
    if (arguments.has(u"filled"))
        setup::makeFilledDemo(options, folder, &progress);
    else
        demo::makeProject(options, folder, &progress);
    const brannock::Project project = brannock::Project::load(folder);
    print(u"Made project \"%1\" with %2 tubes in %3\n"_s.arg(project.name).arg(project.steamGen.numTube()).arg(folder));
    return Done;
}

} // namespace cli
