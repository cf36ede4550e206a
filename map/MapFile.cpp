#include "MapFile.h"

using namespace Qt::StringLiterals;

namespace map {

namespace {

const QString kIdentifier = u"MapFile"_s;
constexpr int kFileVersion = 1;

// Versions that introduced fields.
constexpr int kFirstWithHeaderName = 2;
constexpr int kFirstWithNewEntries = 3;
constexpr int kFirstWithHeader = 4;
constexpr int kFirstWithDescription = 5;

} // namespace

void MapFile::read(tarnwick::JFile &file, int tubeCount)
{
    MapFile map;
    file.header(kIdentifier, kFileVersion);
    const int version = file.version(kVersion);
    file.serialize(map.modelName);
    if (version >= kFirstWithHeader) {
        map.header.serialize(file);
        map.SiteInfo::serialize(file);
    } else if (version >= kFirstWithHeaderName) {
        file.serialize(map.header.name);
    }
    if (version >= kFirstWithDescription)
        file.serialize(map.description);
    map.entries = version >= kFirstWithNewEntries ? readEntries(file, tubeCount) : readOldEntries(file, tubeCount);
    *this = std::move(map);
}

void MapFile::write(tarnwick::JFile &file) const
{
    file.header(kIdentifier, kFileVersion);
    file.version(kVersion);
    QString ownModel = modelName;
    file.serialize(ownModel);
    MapHeader(header).serialize(file);
    SiteInfo(*this).serialize(file);
    QString text = description;
    file.serialize(text);
    writeEntries(file, entries);
}

void MapFile::readMap(const QString &machinePath, int tubeCount)
{
    tarnwick::JFile file = tarnwick::JFile::openForReading(machinePath);
    MapFile map;
    map.read(file, tubeCount);
    // If damage has reduced the count, entries would be lost without an error.
    if (file.bytesLeft() > 0)
        file.fail(u"%1 bytes follow the end of the map"_s.arg(file.bytesLeft()));
    *this = std::move(map);
}

void MapFile::storeMap(const QString &machinePath) const
{
    tarnwick::JFile file = tarnwick::JFile::forWriting(machinePath);
    write(file);
    file.commit();
}

} // namespace map
