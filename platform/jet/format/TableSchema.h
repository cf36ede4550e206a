#pragma once
#include "Catalog.h"
#include "Properties.h"
#include "TableDefinition.h"

namespace jet::format {

/// Describes a table for the engine, from its catalog entry, definition and properties.
wire::TableFacts tableSchema(const CatalogEntry &entry, const TableDefinition &table, const Properties &properties,
                             bool jet4);

} // namespace jet::format
