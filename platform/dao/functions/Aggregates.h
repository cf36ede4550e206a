#pragma once

struct sqlite3;

namespace dao::functions {

/// jet_first, jet_last, jet_stdev, jet_stdevp, jet_var, jet_varp. First and Last take the rows as they come, Null
/// included; the others skip Null.
void registerAggregates(sqlite3 *connection);

} // namespace dao::functions
