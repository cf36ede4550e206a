#include "BoxFill.h"

#include "UntakenTubes.h"

using namespace Qt::StringLiterals;

namespace plans {

namespace {

constexpr int kOwnVersion = 1;

} // namespace

BoxFill::BoxFill()
{
    typeKey = u"BOX"_s;
}

QString BoxFill::className() const
{
    return u"BoxFill"_s;
}

void BoxFill::serialize(tarnwick::JFile &file, int version)
{
    MapFill::serialize(file, version);
    file.version(kOwnVersion);
    file.serialize(parameters.radius);
}

bool BoxFill::pick(const ellery::SteamGen &steamGen, const ellery::TubeStates &states)
{
    tubes.clear();
    UntakenTubes untaken(steamGen, states);
    for (const qint32 centre : states.selection()) {
        const ellery::Tube &tube = steamGen[centre];
        tubes += untaken.take(double(tube.x), double(tube.y), parameters.radius);
        if (untaken.isEmpty())
            break;
    }
    tubes.squeeze();
    fillCount = qint32(tubes.size());
    return true;
}

QString BoxFill::entryLabel() const
{
    return tarnwick::format(u"Radius %.3f", parameters.radius);
}

QString BoxFill::undoLabel() const
{
    return u"Box Fill"_s;
}

BoxFillOptions::BoxFillOptions()
    : OptionFile(u"config\\arvo\\box_fill.opt"_s, u"BoxFill Options"_s, 1)
{
}

void BoxFillOptions::serializeBody(tarnwick::JFile &file, int)
{
    file.serialize(parameters.radius);
}

void BoxFillOptions::resetToDefaults()
{
    parameters = {};
}

} // namespace plans
