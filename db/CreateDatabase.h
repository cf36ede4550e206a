#pragma once
#include <dao/Database.h>
#include <QString>
#include <tarnwick/Prompts.h>

namespace db {

class DatabaseSession;

/// The format that new databases ask for when no program option says otherwise.
constexpr int kDefaultFormatYear = 2002;
/// The one year that stands for the older format.
constexpr int kOldFormatYear = 1997;

/// Creates a database file with the whole schema and closes it again. formatYear 1997 gives the older file format, any
/// other the newer. The file appears under its name only once it is complete. An engine exception is reported (1015)
/// and gives false; an existing file is never touched.
bool createDatabase(tarnwick::UserPrompts &prompts, const QString &path, int formatYear = kDefaultFormatYear);

/// A new database file without tables, left open, that remembers the format that was asked for. Throws
/// dao::DaoException.
void createEmptyDatabase(dao::Database &database, const QString &path, int formatYear);

/// The year that was asked for when that database was created; 0 when it does not say.
int formatYear(const DatabaseSession &session);

} // namespace db
