#pragma once
#include <dao/sql/plan/Compiled.h>

namespace dao {

namespace store {
class Connection;
}

/// Compiles a text against the schema of the connection's database.
using CompileText = std::function<sql::CompiledStatement(const QString &)>;

/// Registers DLookup and the other domain functions for calls whose texts are known only when a row is read. Each call
/// runs a query.
void registerDomainFunctions(store::Connection &connection, const CompileText &compile);

} // namespace dao
