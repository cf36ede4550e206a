#pragma once
#include <ellery/TubeStates.h>

namespace plans {

/// Which tubes a percent or pattern fill may take. Numbers are those of the dialogs' choices and of the files; with any
/// other number no tube qualifies.
struct TubeFilter
{
    enum Region : qint32 { EntireMap = 0, SelectedTubes = 1 };
    enum Tube : qint32 { SymbolsAndOpen = 0, SymbolsOnly = 1, OpenTubesOnly = 2 };

    qint32 region = EntireMap;
    qint32 tube = SymbolsAndOpen;

    /// By the symbols and the selection on the map at this moment.
    bool accepts(const ellery::TubeStates &states, int index) const;
    bool takesSelection() const { return region == SelectedTubes; }
    bool operator==(const TubeFilter &) const = default;
};

} // namespace plans
