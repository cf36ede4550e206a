#pragma once
#include "QueryDocument.h"
#include "QueryResult.h"
#include "SQLOptions.h"

#include <ellery/SteamGen.h>

namespace query {

/// Macros used to expand and print a query: the user macros, the refreshed system macros, and those of the query itself
/// ("[QUERY FILE]", "[QUERY NAME]", "[QUERY RECORDS]", "[QUERY TOTAL TUBES]", "[TOLVENMARK REV]").
tarnwick::JMacro queryMacros(const QueryDocument &document, const QueryResult &result, const QueryContext &context,
                             const ellery::SteamGen &steamGen);

/// Copies margins and separator flag from the options into the document's layout.
void applyPrintOptions(QueryDocument &document, const SQLOptions &options);

/// The document with the SQL and the section texts expanded.
QueryDocument expandedDocument(const QueryDocument &document, const tarnwick::JMacro &macros);

} // namespace query
