#pragma once
#include <db/DatabaseSession.h>
#include <ellery/SteamGen.h>
#include <tarnwick/Progress.h>

namespace db {

/// Replaces the rows of tables tubes and landmarks by those of the component, after asking the user, in one
/// transaction: on a failure (1031), or when the user stops, they are as before. progress may be null. True when it was
/// done.
bool uploadComponent(DatabaseSession &session, const ellery::SteamGen &steamGen,
                     tarnwick::Progress *progress = nullptr);

} // namespace db
