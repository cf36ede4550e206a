#pragma once
#include <ellery/TubeStates.h>

namespace plans {

/// The tubes that a percent or pattern fill can take. The numbers are those of the choices in dialogs and files; for an
/// unknown number no tube qualifies.
struct TubeFilter
{
    enum Region : qint32 { EntireMap = 0, SelectedTubes = 1 };
    enum Tube : qint32 { SymbolsAndOpen = 0, SymbolsOnly = 1, OpenTubesOnly = 2 };

    qint32 region = EntireMap;
    qint32 tube = SymbolsAndOpen;

    /// Tests the present mark and selection of the tube.
    bool accepts(const ellery::TubeStates &states, int index) const;
    bool takesSelection() const { return region == SelectedTubes; }
    bool operator==(const TubeFilter &) const = default;
};

} // namespace plans
