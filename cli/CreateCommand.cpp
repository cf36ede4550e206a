#include "CommandLine.h"
#include "CommandTable.h"
#include "Console.h"

#include <db/CreateDatabase.h>
#include <QFileInfo>
#include <tarnwick/FailureLog.h>

namespace cli {

using namespace Qt::StringLiterals;

int runCreate(const Arguments &arguments)
{
    arguments.atMost(1);
    const QString path = QFileInfo(arguments.positional(0, u"DB"_s)).absoluteFilePath();
    const auto year = int(arguments.integer(u"format", db::kDefaultFormatYear, 1997, 2002));
    if (year != 1997 && year != 2000 && year != 2002)
        throw UsageError(u"--format is 1997, 2000 or 2002."_s);
    ConsolePrompts console;
    tarnwick::LoggedPrompts prompts(console, programName());
    return db::createDatabase(prompts, path, year) && console.errorsShown() == 0 ? Done : Failed;
}

} // namespace cli
