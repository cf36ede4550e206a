#pragma once
#include "LegacyEntry.h"

#include <db/DatabaseSession.h>
#include <tarnwick/base/Progress.h>

namespace db {

/// Returns true for a database of the foreign inspection data system: it has a table EXAMDATA and no table report.
bool isLegacyDatabase(const dao::Database &database);

/// Site and component of a foreign database: the trimmed texts of the last row of IDENT. Throws the engine's
/// exceptions.
LegacyIdent readIdent(dao::Database &database);

/// Imports the tables of a foreign system's database (IDENT, EXAMDATA, REPRDATA, TUBEDATA) into the present schema,
/// which is created beside them in the same file. Results become entries of report, like uploaded ones; repairs become
/// rows of repairs; plugged and otherwise marked tubes become the tube sets PL and IN. Uses one transaction: if an
/// entry cannot be stored (1021), the file stays unchanged and false is returned. Repairs or tube sets that cannot be
/// created are reported (1022, 1023) and skipped. A database that cannot be updated is left unchanged; so is one that
/// another program imported while this one waited to write, which also returns false. Throws the engine's exceptions if
/// foreign data cannot be read, and tarnwick::Cancelled.
bool importLegacyDatabase(DatabaseSession &session, const brannock::Project &project, tarnwick::Progress *progress);

} // namespace db
