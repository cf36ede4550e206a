#pragma once
#include "DatabaseSession.h"

namespace db {

/// Checks the session's database and returns the damage found. progress may be null; throws tarnwick::Cancelled if it
/// stops the check.
QList<dao::DamageFinding> findDamage(DatabaseSession &session, dao::Database::Check kind, tarnwick::Progress *progress);

/// Quick check before the database is used: after a crash, or before a conversion. Returns false after reporting the
/// damage; the last line of the report is the consequence.
bool refuseDamaged(DatabaseSession &session, const QString &consequence, tarnwick::Progress *progress);

} // namespace db
