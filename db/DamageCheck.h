#pragma once
#include "DatabaseSession.h"

namespace db {

/// What is damaged in the session's database. progress may be null; DaoCancelled when it stops the looking.
QList<dao::DamageFinding> lookForDamage(DatabaseSession &session, dao::Database::Check kind,
                                        tarnwick::Progress *progress);

/// Looks quickly, before the database is relied on: after a crash, before a conversion. False when it is damaged, which
/// has been said, with what follows from it as the last line.
bool refuseDamaged(DatabaseSession &session, const QString &consequence, tarnwick::Progress *progress);

} // namespace db
