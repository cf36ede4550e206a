#include "CustomColours.h"

using namespace Qt::StringLiterals;

namespace brannock {

using tarnwick::ColourRef;

static constexpr ColourRef kWhite{0xFFFFFF};

CustomColours::CustomColours()
    : OptionFile(u"config\\arvo\\cust_colors.opt"_s, u"Custom Colors"_s, 1)
    , colours(kCount, kWhite)
{
}

void CustomColours::serializeBody(tarnwick::JFile &file, int)
{
    file.list(colours, int(sizeof(quint32)), [](tarnwick::JFile &f, ColourRef &colour) { f.serialize(colour); });
    while (colours.size() < kCount)
        colours.append(kWhite);
    colours.resize(kCount);
}

void CustomColours::resetToDefaults()
{
    colours.fill(kWhite, kCount);
}

} // namespace brannock
