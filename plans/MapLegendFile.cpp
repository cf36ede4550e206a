#include "MapLegend.h"

using namespace Qt::StringLiterals;

namespace plans {

namespace {

/// Version, key length, and the common fields of an entry without label and tubes.
constexpr int kSmallestEntry = 4 + 4 + 4 + 2 + 4 + 4 + 4;

std::unique_ptr<MapFill> createFill(tarnwick::JFile &file)
{
    QString key;
    file.serialize(key);
    const MapFillType *type = MapFillType::find(key);
    if (!type)
        file.fail(u"unknown kind of legend entry \"%1\""_s.arg(key));
    return type->create();
}

void writeEntry(tarnwick::JFile &file, MapFill &fill)
{
    file.version(MapFill::kVersion);
    file.serialize(fill.typeKey);
    fill.serialize(file, MapFill::kVersion);
}

std::unique_ptr<MapFill> readEntry(tarnwick::JFile &file)
{
    const int version = file.version(MapFill::kVersion);
    auto fill = createFill(file);
    fill->serialize(file, version);
    return fill;
}

/// The common fields stood in the same order, followed by a text that nothing has used since.
std::unique_ptr<MapFill> readOldEntry(tarnwick::JFile &file)
{
    file.version(2);
    auto fill = createFill(file);
    file.serialize(fill->shown);
    file.serialize(fill->symbol);
    file.serialize(fill->colour);
    file.serialize(fill->label);
    file.serialize(fill->tubes);
    QString unused;
    file.serialize(unused);
    fill->readOldFormat(file);
    return fill;
}

template <typename Function>
MapLegend::Entries readList(tarnwick::JFile &file, int tubeCount, Function readOne)
{
    MapLegend::Entries entries;
    const qint32 n = file.count(0, kSmallestEntry);
    for (qint32 i = 0; i < n; ++i) {
        entries.push_back(readOne(file));
        MapFill &fill = *entries.back();
        fill.dropInvalidTubes(tubeCount);
        // Symbol 0 is that of an open tube: painted, it would be counted and not seen.
        if (fill.symbol == 0)
            fill.symbol = u'A';
    }
    return entries;
}

} // namespace

MapLegend::Entries MapLegend::readEntries(tarnwick::JFile &file, int tubeCount)
{
    return readList(file, tubeCount, readEntry);
}

MapLegend::Entries MapLegend::readOldEntries(tarnwick::JFile &file, int tubeCount)
{
    return readList(file, tubeCount, readOldEntry);
}

void MapLegend::writeEntries(tarnwick::JFile &file, const Entries &entries)
{
    file.count(qint64(entries.size()), kSmallestEntry);
    for (const auto &fill : entries)
        writeEntry(file, *fill);
}

void MapLegend::serialize(tarnwick::JFile &file)
{
    if (file.isReading())
        replaceEntries(readEntries(file, m_steamGen->numTube()));
    else
        writeEntries(file, m_entries);
}

void MapLegend::readOldFormat(tarnwick::JFile &file)
{
    replaceEntries(readOldEntries(file, m_steamGen->numTube()));
}

} // namespace plans
