#pragma once

namespace dao {

class DatabaseImpl;

/// Registers DLookup and the other domain functions for calls whose texts are known only when a row is read. Each call
/// runs a query.
void registerDomainFunctions(DatabaseImpl &db);

} // namespace dao
