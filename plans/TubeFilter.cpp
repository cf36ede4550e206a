#include "TubeFilter.h"

namespace plans {

bool TubeFilter::accepts(const ellery::SteamGen &steamGen, int index) const
{
    const bool inRegion = region == EntireMap || (region == SelectedTubes && steamGen.isSelected(index));
    if (!inRegion)
        return false;
    switch (tube) {
    case SymbolsAndOpen:
        return true;
    case SymbolsOnly:
        return !steamGen.isOpen(index);
    case OpenTubesOnly:
        return steamGen.isOpen(index);
    default:
        return false;
    }
}

} // namespace plans
