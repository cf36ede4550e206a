#pragma once
#include "CatalogStorage.h"

namespace dao::store {

/// Validation rules that need functions of this engine cannot stand in the file, where other tools could not run them.
/// They are enforced by temporary triggers of each connection instead.
void installEngineRules(Connection &connection, const CatalogContents &contents);

/// True when the rule is one of those.
bool needsEngine(const FieldInfo &field);
bool needsEngine(const TableInfo &table);

} // namespace dao::store
