#pragma once
#include "ConnectContext.h"

#include <db/DatabaseSession.h>

namespace db {

/// Closes the open database and connects this one. Depending on what the file holds:
///   - a database of the present schema: its views and aliases are brought up to date;
///   - an older one: it is converted if the user agrees;
///   - one of the foreign inspection data system: its tables are imported;
///   - a Jet file: a read-only working copy is opened, unless the user agrees to have the file converted.
/// A file that needs no change, or holds no project table, is not written to.
///
/// Informs the listener and shows "Connected to ..." with the path relative to the project's arvo folder. An empty path
/// does nothing. If an engine exception occurs (reported, 1032) or the user cancels, the session is closed and false is
/// returned. The questions and results of a conversion are in the session's ConversionState.
bool connectDatabase(DatabaseSession &session, const QString &path, const ConnectContext &context);

/// Creates the project's own database and its arvo folder. Returns false after reporting the error.
bool createProjectDatabase(tarnwick::UserPrompts &prompts, const brannock::Project &project, int formatYear);

/// Connects a project's database at the start of the program. Tries in this order: the most recent database, unless it
/// is the project's own and its file is missing; the project's own database; if that does not exist, it is created,
/// connected and announced in the status line. recentDatabases are paths in the suite's form, most recent first.
/// Returns false if none could be connected. If the user cancels, no other is tried.
bool connectAtStart(DatabaseSession &session, const QStringList &recentDatabases, int formatYear,
                    const ConnectContext &context);

} // namespace db
