#pragma once
#include "LegacyEntry.h"

#include <db/DatabaseSession.h>
#include <tarnwick/Progress.h>

namespace db {

/// Returns true for a database of the foreign inspection data system: it has a table EXAMDATA and no table report.
bool isLegacyDatabase(const dao::Database &database);

/// Site and component of a foreign database: the trimmed texts of the last row of IDENT. Throws the engine's
/// exceptions.
LegacyIdent readIdent(dao::Database &database);

/// Imports the tables of a foreign system's database (IDENT, EXAMDATA, REPRDATA, TUBEDATA) into the present schema,
/// which is created beside them in the same file: results become entries of report, stored as uploaded ones are,
/// repairs become rows of repairs, and tubes that are plugged or otherwise marked become the tube sets PL and IN. All
/// in one transaction: when an entry cannot be stored (1021), the file stays as it was and false is returned. Repairs
/// or tube sets that cannot be made are said (1022, 1023) and left out. Needs a database that can be updated; another
/// is left alone; so is one that another program has imported while this one waited to write, which also gives false.
/// Throws the engine's exceptions for foreign data that cannot be read, and dao::DaoCancelled or
/// tarnwick::Cancelled.
bool importLegacyDatabase(DatabaseSession &session, const brannock::Project &project, tarnwick::Progress *progress);

} // namespace db
