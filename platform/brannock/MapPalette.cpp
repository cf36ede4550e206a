#include "MapPalette.h"

#include <array>

namespace brannock {

namespace {

struct NamedColour
{
    quint32 colour;
    const char16_t *name;
};

constexpr std::array<NamedColour, kPaletteSize> kPalette{{
    {0x0000FF, u"red"},
    {0xB27200, u"blue"},
    {0x009FE6, u"orange"},
    {0x739E00, u"green"},
    {0xA779CC, u"purple"},
    {0xE9B456, u"sky blue"},
    {0x42E4F0, u"yellow"},
    {0x404040, u"dark grey"},
}};

const NamedColour &at(int place)
{
    return kPalette[size_t(place) % kPalette.size()];
}

} // namespace

quint32 paletteColour(int place)
{
    return at(place).colour;
}

QString paletteColourName(int place)
{
    return QString::fromUtf16(at(place).name);
}

} // namespace brannock
