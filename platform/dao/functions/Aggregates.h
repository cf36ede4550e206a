#pragma once

struct sqlite3;

namespace dao::functions {

/// Registers jet_first, jet_last, jet_stdev, jet_stdevp, jet_var and jet_varp. First and Last use the order of the row
/// keys that are passed after the value, and include Null; the others skip Null.
void registerAggregates(sqlite3 *connection);

} // namespace dao::functions
