#include "CommandLine.h"
#include "CommandTable.h"
#include "Target.h"

#include <db/DamageCheck.h>
#include <db/Messages.h>
#include <tarnwick/Failures.h>

namespace cli {

using namespace Qt::StringLiterals;

int runCheck(const Arguments &arguments)
{
    arguments.atMost(1);
    Target target(arguments.positional(0, u"DIR"_s), arguments, Target::Takes::ProjectOrDatabase);
    if (!target.connect(Target::Use::Read))
        return Failed;
    ConsoleProgress progress;
    bool isDamaged = false;
    const auto check = [&] {
        const auto kind = arguments.has(u"quick") ? dao::Database::Check::Quick : dao::Database::Check::Whole;
        const QList<dao::DamageFinding> findings = db::findDamage(target.session(), kind, &progress);
        for (const dao::DamageFinding &finding : findings) {
            print(u"%1%2\n"_s.arg(finding.isDamage ? QString() : u"Remark: "_s, finding.text));
            isDamaged = isDamaged || finding.isDamage;
        }
        print(u"%1: %2\n"_s.arg(target.databasePath(), isDamaged ? u"damaged"_s : u"no damage found"_s));
    };
    return tarnwick::attempt(target.prompts(), check, db::messages::kCheckDatabase) && !isDamaged ? Done : Failed;
}

} // namespace cli
