#include "CommandLine.h"
#include "CommandTable.h"
#include "Target.h"

#include <db/revision/LegacyImport.h>
#include <QDir>

namespace cli {

using namespace Qt::StringLiterals;

int runConnect(const Arguments &arguments)
{
    arguments.atMost(1);
    Target target(arguments.positional(0, u"DIR"_s), arguments, Target::Takes::ProjectOrDatabase);
    const int errors = target.console().errorsShown();
    const bool isConversionRequested = arguments.value(u"convert") == "yes"_L1;
    if (!target.connect(isConversionRequested ? Target::Use::Import : Target::Use::Change))
        return Failed;
    // The question and its answer, the backup and the converted steps were printed by the prompts.
    const db::ConversionState &conversion = target.session().conversion;
    if (!conversion.approved && !conversion.requested.isEmpty())
        print(u"Not converted:\n"_s + db::ConversionState::numbered(conversion.requested));
    if (!conversion.backup.isEmpty())
        print(u"Backup: %1\n"_s.arg(QDir::toNativeSeparators(conversion.backup)));
    print(u"Database: %1%2\n"_s.arg(QDir::toNativeSeparators(target.session().path()),
                                    target.session().isUpdatable() ? QString() : u" READ ONLY"_s));
    // After the question the reason has been printed: a backup that failed, for example.
    if (isConversionRequested && !target.session().isUpdatable() && !conversion.asked)
        printError(u"The database cannot be written to, so it was not converted.\n");
    const bool isRefused =
        isConversionRequested && (!target.session().isUpdatable() || (conversion.asked && !conversion.approved));
    const bool isNotImported =
        isConversionRequested && !conversion.asked && db::isLegacyDatabase(target.session().database());
    return isRefused || isNotImported || target.console().errorsShown() > errors ? Failed : Done;
}

} // namespace cli
