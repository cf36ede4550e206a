#pragma once
#include <dao/Database.h>
#include <QString>
#include <tarnwick/Prompts.h>

namespace db {

class DatabaseSession;

/// The format of new databases if no program option sets one.
constexpr int kDefaultFormatYear = 2002;
/// The only year that selects the older format.
constexpr int kOldFormatYear = 1997;

/// Creates a database file with the whole schema and closes it again. formatYear 1997 selects the older file format,
/// any other year the newer one. The file gets its name only after it is complete. Reports an engine exception (1015)
/// and returns false. Never changes an existing file.
bool createDatabase(tarnwick::UserPrompts &prompts, const QString &path, int formatYear = kDefaultFormatYear);

/// Creates a database file without tables and leaves it open. The requested format is stored in it. Throws
/// dao::DaoException.
void createEmptyDatabase(dao::Database &database, const QString &path, int formatYear);

/// The format year that was requested when the database was created; 0 if the file does not hold it.
int formatYear(const DatabaseSession &session);

} // namespace db
