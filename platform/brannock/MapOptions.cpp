#include "MapOptions.h"

#include <algorithm>

namespace brannock {

int MapOptions::displayTick() const
{
    return std::clamp(displayTickSize, kSmallestTick, kLargestTick);
}

int MapOptions::printTick() const
{
    return std::clamp(printTickSize, kSmallestTick, kLargestTick);
}

void MapOptions::serialize(tarnwick::JFile &file)
{
    for (tarnwick::ColourRef *colour : {&watermarkColour, &mapColour, &selectColour, &fillColour, &tickColour})
        file.serialize(*colour);
    file.serialize(displayTickSize);
    file.serialize(printTickSize);
}

void PageOptions::serialize(tarnwick::JFile &file)
{
    margins.serialize(file);
    for (bool *flag : {&drawTitleRect, &drawLegendRect, &drawMapRect})
        file.serializeByte(*flag);
}

} // namespace brannock
