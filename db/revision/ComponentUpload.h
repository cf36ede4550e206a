#pragma once
#include <db/DatabaseSession.h>
#include <ellery/SteamGen.h>
#include <tarnwick/base/Progress.h>

namespace db {

/// Replaces the rows of tables tubes and landmarks by those of the component, after asking the user, in one
/// transaction. On a failure (1031), or if the user stops, the rows stay as they were. progress may be null. Returns
/// true if it was done.
bool uploadComponent(DatabaseSession &session, const ellery::SteamGen &steamGen,
                     tarnwick::Progress *progress = nullptr);

} // namespace db
