#pragma once
#include "QueryResult.h"

#include <ellery/SteamGen.h>

namespace query {

/// True if the columns of the result identify tubes (see TubeColumns).
bool identifiesTubes(const QueryResult &result, const ellery::SteamGen &steamGen);

/// The tubes of these rows, each once, ascending; rows without a tube are passed over. Throws the engine's exceptions,
/// and Cancelled if the progress stops it.
QList<qint32> tubesOfRows(const QueryResult &result, const ellery::SteamGen &steamGen, const QList<int> &rows,
                          tarnwick::Progress *progress = nullptr);

/// For each row of the result whether its tube is one of these. Throws like tubesOfRows().
std::vector<bool> rowsOfTubes(const QueryResult &result, const ellery::SteamGen &steamGen, const QList<qint32> &tubes,
                              tarnwick::Progress *progress = nullptr);

} // namespace query
