#include "BoxFill.h"

#include <ellery/TubeGrid.h>

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

bool BoxFill::pick(ellery::SteamGen &steamGen)
{
    steamGen.clearMarks();
    tubes.clear();
    const ellery::TubeGrid grid(steamGen.tubes());
    const QList<qint32> selection = steamGen.selection();
    const qsizetype most = steamGen.numTube() - selection.size();
    for (const qint32 centre : selection) {
        // A wide box has them all after a few tubes; looking further would only cost time.
        if (tubes.size() == most)
            break;
        const ellery::Tube &tube = steamGen[centre];
        for (const qint32 near : grid.within(double(tube.x), double(tube.y), parameters.radius)) {
            if (steamGen.isSelected(near) || steamGen.isMarked(near))
                continue;
            tubes.append(near);
            steamGen.setMarked(near, true);
        }
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
