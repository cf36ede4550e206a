#pragma once
#include <db/DatabaseSession.h>
#include <ellery/Tube.h>

namespace results {

/// The repairs of a tube as texts for the tip of the map, the oldest first: "Plug, R12, scheduled 05/06/2024". No more
/// than most lines, of which the last one counts the others. Does not wait: if another program has the database locked,
/// or it cannot be read, or none is open, there are no lines.
QStringList repairLines(db::DatabaseSession &session, const ellery::TubeAddress &tube, int most);

} // namespace results
