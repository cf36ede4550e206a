#include "TubeFilter.h"

namespace plans {

bool TubeFilter::accepts(const ellery::TubeStates &states, int index) const
{
    const bool inRegion = region == EntireMap || (region == SelectedTubes && states.isSelected(index));
    if (!inRegion)
        return false;
    switch (tube) {
    case SymbolsAndOpen:
        return true;
    case SymbolsOnly:
        return !states.isOpen(index);
    case OpenTubesOnly:
        return states.isOpen(index);
    default:
        return false;
    }
}

} // namespace plans
