#pragma once
#include <db/DatabaseSession.h>
#include <ellery/SteamGen.h>

namespace app {

/// Replaces the rows of tables "tubes" and "landmarks" by those of the component, in one transaction. Failures are said
/// (1031), and the tables are then as before. Needs a connection.
bool uploadComponent(db::DatabaseSession &session, const ellery::SteamGen &steamGen);

} // namespace app
