#pragma once

namespace dao {

class DatabaseImpl;

/// DLookup and its family, where their texts are only known when a row is read: each call is a query of its own.
void registerDomainFunctions(DatabaseImpl &db);

} // namespace dao
