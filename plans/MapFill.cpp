#include "MapFill.h"

using namespace Qt::StringLiterals;

namespace plans {

void MapFill::serialize(tarnwick::JFile &file, int version)
{
    file.serialize(shown);
    mark.serialize(file);
    file.serialize(label);
    file.serialize(tubes);
    if (version >= 3)
        file.serialize(fillCount);
    if (version >= 4)
        file.serialize(allSections);
}

void MapFill::readOldFormat(tarnwick::JFile &file)
{
    file.fail(u"%1::readOldFormat not implemented"_s.arg(className()));
}

template <typename Function>
void MapFill::forEachMarked(const ellery::SteamGen &steamGen, Function function) const
{
    if (steamGen.numTube() == 0)
        return;
    if (!allSections) {
        for (const qint32 tube : tubes)
            function(tube);
        return;
    }
    const int sections = steamGen[steamGen.numTube() - 1].address.sec + 1;
    for (const qint32 tube : tubes) {
        const ellery::TubeAddress address = steamGen[tube].address;
        for (int section = 0; section < sections; ++section) {
            if (const int found = steamGen.findTube(ellery::TubeAddress::of(section, address.row, address.col));
                found >= 0)
                function(found);
        }
    }
}

void MapFill::take(const FillResult &result)
{
    tubes = result.tubes;
    fillCount = result.fillCount;
}

int MapFill::paint(const ellery::SteamGen &steamGen, ellery::TubeStates &states) const
{
    int painted = 0;
    if (!shown)
        return painted;
    forEachMarked(steamGen, [&](int tube) {
        if (!states.isOpen(tube))
            return;
        states.setMark(tube, mark);
        ++painted;
    });
    return painted;
}

QList<qint32> MapFill::markedTubes(const ellery::SteamGen &steamGen) const
{
    QList<bool> isListed(steamGen.numTube(), false);
    QList<qint32> marked;
    forEachMarked(steamGen, [&](int tube) {
        if (!std::exchange(isListed[tube], true))
            marked.append(tube);
    });
    return marked;
}

QString MapFill::typeName() const
{
    const MapFillType *type = MapFillType::find(typeKey);
    return type ? type->name : typeKey;
}

int MapFill::dropInvalidTubes(int tubeCount)
{
    return int(tubes.removeIf([tubeCount](qint32 tube) { return tube < 0 || tube >= tubeCount; }));
}

bool MapFill::hasSameFields(const MapFill &other) const
{
    return typeKey == other.typeKey && shown == other.shown && mark == other.mark && label == other.label &&
           fillCount == other.fillCount && allSections == other.allSections && tubes == other.tubes;
}

} // namespace plans
