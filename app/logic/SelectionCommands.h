#pragma once
#include <ellery/SteamGen.h>
#include <ellery/TubeStates.h>

namespace app {

/// Selection after a command from SelectAllTubes to DeselectPeriph. pointed: the tube that the pop-up menu was opened
/// on, -1 for none; commands that need it then change nothing.
QList<qint32> selectionAfter(int command, const ellery::SteamGen &steamGen, const ellery::TubeStates &tubes,
                             int pointed);

/// The connected group of a tube: neighbours (one pitch apart, in the same section) with the same symbol, or all open.
/// Ascending indices.
QList<qint32> connectedGroup(const ellery::SteamGen &steamGen, const ellery::TubeStates &tubes, int tube);

} // namespace app
