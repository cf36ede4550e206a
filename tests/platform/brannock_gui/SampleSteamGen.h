#pragma once
#include <ellery/SteamGen.h>

namespace sample {

/// One leg of a recirculating steam generator with a U-bend: half a disc of rows above each other, on a triangular or a
/// square pitch, with gaps for stay rods. The usual 46 rows and 94 columns have about 3,400 tubes.
ellery::SteamGen uBend(int rows = 46, int cols = 94, bool triangular = false);

/// A plain block of rows x cols tubes, one unit apart, row and column 0 at the origin.
ellery::SteamGen block(int rows, int cols);

/// Marks and selects tubes in shares as an inspection plan does.
void markLikeAPlan(ellery::SteamGen &steamGen);

} // namespace sample
