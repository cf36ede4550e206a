#pragma once
#include "ConversionPass.h"

namespace db {

/// Brings a database of an older revision to the present schema, step by step, each by what it finds: tables that went
/// or came, fields, indexes, plans that were numbered and are named now; then makes the views and the alias tables'
/// contents. The first step that would change a table asks the user, and a backup is made before anything changes;
/// views and aliases are brought up to date without asking. A database that is right is not written to.
///
/// Runs only on a database that can be updated, and does nothing to one without any table of a project. Failures of a
/// step are said under its number, and the others go on; when the disk or the file itself fails, or the user stops, all
/// is undone. Whether anything was converted is told by announceConversion() afterwards; false when all was undone.
/// project may be null; then the alias tables stay as they are.
bool reviseDatabase(DatabaseSession &session, ConversionRequest &request, const brannock::Project *project,
                    tarnwick::Progress *progress);

/// Brings views and alias tables up to date and nothing else: for the copy of a file that is not converted.
void refreshLabels(DatabaseSession &session, const brannock::Project *project);

/// Lists every step that would change something, and does none: for a database that cannot be changed, once the user
/// has declined.
void listRevisionSteps(DatabaseSession &session, ConversionRequest &request);

} // namespace db
