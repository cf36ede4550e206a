#pragma once
#include "CatalogStorage.h"

namespace dao::store {

/// Validation rules that use functions of this engine cannot be CHECK constraints: other SQLite tools could no longer
/// write to the file. Temporary triggers of each connection enforce them.
void installEngineRules(Connection &connection, const CatalogContents &contents);

/// True if the rule needs functions of this engine.
bool needsEngine(const FieldInfo &field);
bool needsEngine(const TableInfo &table);

} // namespace dao::store
