#pragma once
#include "ConversionPass.h"

namespace db {

/// The SQL of a table's view: every field of the table in its order, with the plant's labels in place of the numbers of
/// rows, columns, sections and legs, which are looked up in the alias tables.
QString viewSql(const dao::TableInfo &table);

/// Makes the views of the tables that have one ("report#"), where they are missing or differ; asks nothing.
void makeViews(ConversionPass &pass);

} // namespace db
