#pragma once
#include "ConversionPass.h"

namespace db {

/// Converts a database of an older revision to the present schema. Each step depends on what it finds: added and
/// removed tables, fields, indexes, numbered plans. Then creates the views and fills the alias tables. The first step
/// that would change a table asks the user, and a backup is made before the first change; views and aliases are updated
/// without a question. A database that is up to date is not written to.
///
/// Runs only on a database that can be updated, and does nothing if it has no project table. A failed step is reported
/// under its number, and the next steps still run. If the disk or the whole file fails, or the user stops, everything
/// is rolled back and false is returned. announceConversion() then reports what was converted. project may be null;
/// then the alias tables are not filled.
bool reviseDatabase(DatabaseSession &session, ConversionRequest &request, const brannock::Project *project,
                    tarnwick::Progress *progress);

/// Updates only the views and alias tables: for the copy of a file that is not converted.
void refreshLabels(DatabaseSession &session, const brannock::Project *project);

/// Lists every step that would change something, without doing any: for a database that cannot be changed, after the
/// user has declined.
void listRevisionSteps(DatabaseSession &session, ConversionRequest &request);

} // namespace db
