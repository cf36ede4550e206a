#include "DamageCheck.h"

#include "Messages.h"

#include <dao/ProgressScope.h>
#include <QDir>

namespace db {

QList<dao::DamageFinding> findDamage(DatabaseSession &session, dao::Database::Check kind, tarnwick::Progress *progress)
{
    if (progress)
        progress->report(0, 0, QString::fromUtf16(messages::kCheckingDatabase.text));
    const dao::ProgressScope cancellable(session.database(), progress);
    return session.database().check(kind);
}

bool refuseDamaged(DatabaseSession &session, const QString &consequence, tarnwick::Progress *progress)
{
    constexpr int kListed = 10;
    QString list;
    int count = 0;
    for (const dao::DamageFinding &finding : findDamage(session, dao::Database::Check::Quick, progress)) {
        if (finding.isDamage && ++count <= kListed)
            list += tarnwick::format(messages::kDamageLine.text, finding.text);
    }
    if (count == 0)
        return true;
    if (count > kListed)
        list += tarnwick::format(messages::kMoreDamage.text, count - kListed);
    session.prompts().error(messages::kDatabaseDamaged, QDir::toNativeSeparators(session.path()), list, consequence);
    return false;
}

} // namespace db
