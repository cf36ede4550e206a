#pragma once
#include <ellery/SteamGen.h>
#include <ellery/TubeStates.h>

namespace app {

/// The tubes that are selected after a command from SelectAllTubes to DeselectPeriph. pointed is the tube that the
/// pop-up menu was opened on, -1 without one; the commands that need it then change nothing.
QList<qint32> selectionAfter(int command, const ellery::SteamGen &steamGen, const ellery::TubeStates &tubes,
                             int pointed);

/// The tubes that hang together with a tube by neighbours (a pitch apart, in the same section) that look like it: all
/// with its symbol, or all open. Ascending.
QList<qint32> connectedGroup(const ellery::SteamGen &steamGen, const ellery::TubeStates &tubes, int tube);

} // namespace app
