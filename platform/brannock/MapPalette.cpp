#include "MapPalette.h"

#include <array>

namespace brannock {

using tarnwick::ColourRef;

namespace {

struct NamedColour
{
    ColourRef colour;
    const char16_t *name;
};

constexpr std::array<NamedColour, kPaletteSize> kPalette{{
    {ColourRef(0x0000FF), u"red"},
    {ColourRef(0xB27200), u"blue"},
    {ColourRef(0x009FE6), u"orange"},
    {ColourRef(0x739E00), u"green"},
    {ColourRef(0xA779CC), u"purple"},
    {ColourRef(0xE9B456), u"sky blue"},
    {ColourRef(0x42E4F0), u"yellow"},
    {ColourRef(0x404040), u"dark grey"},
}};

const NamedColour &at(int place)
{
    return kPalette[size_t(place) % kPalette.size()];
}

} // namespace

ColourRef paletteColour(int place)
{
    return at(place).colour;
}

QString paletteColourName(int place)
{
    return QString::fromUtf16(at(place).name);
}

} // namespace brannock
