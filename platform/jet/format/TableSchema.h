#pragma once
#include "Catalog.h"
#include "Properties.h"
#include "TableDefinition.h"

namespace jet::format {

/// A table as the engine describes one, from its entry, its definition and its properties.
wire::TableFacts tableSchema(const CatalogEntry &entry, const TableDefinition &table, const Properties &properties,
                             bool jet4);

} // namespace jet::format
