#include "MapHeader.h"

#include <algorithm>
#include <QFileInfo>
#include <QStringList>

using namespace Qt::StringLiterals;

namespace app {

namespace {

const QString kIdentifier = u"MapHeader"_s;
constexpr int kFileVersion = 1;

void serializeSize(tarnwick::JFile &file, qint32 &size)
{
    file.serialize(size);
    size = std::clamp<qint32>(size, MapHeader::kLeastSize, MapHeader::kMostSize);
}

} // namespace

void MapHeader::serialize(tarnwick::JFile &file)
{
    if (file.isReading())
        *this = MapHeader();
    const int version = file.version(kVersion);
    if (version >= 2)
        file.serialize(name);
    file.serialize(upperText);
    file.serialize(lowerText);
    if (version < 2)
        return;
    file.serialize(upperFont);
    file.serialize(lowerFont);
    serializeSize(file, upperSize);
    serializeSize(file, lowerSize);
    file.serialize(preparedBy);
    file.serialize(checkedBy);
    file.serialize(footerFont);
    serializeSize(file, footerSize);
}

void MapHeader::clearSignatures()
{
    preparedBy.clear();
    checkedBy.clear();
}

MapHeader MapHeader::expanded(const tarnwick::JMacro &macros) const
{
    MapHeader result = *this;
    for (QString *text : {&result.upperText, &result.lowerText, &result.preparedBy, &result.checkedBy})
        *text = macros.expand(*text);
    return result;
}

MapHeader readHeaderFile(const QString &machinePath)
{
    tarnwick::JFile file = tarnwick::JFile::openForReading(machinePath);
    file.header(kIdentifier, kFileVersion);
    MapHeader header;
    header.serialize(file);
    if (file.bytesLeft() > 0)
        file.fail(u"%1 bytes follow the end of the header"_s.arg(file.bytesLeft()));
    header.name = QFileInfo(machinePath).completeBaseName();
    return header;
}

void writeHeaderFile(const MapHeader &header, const QString &machinePath)
{
    tarnwick::JFile file = tarnwick::JFile::forWriting(machinePath);
    file.header(kIdentifier, kFileVersion);
    MapHeader stored = header;
    stored.name = QFileInfo(machinePath).completeBaseName();
    // Signatures belong to one map; a header file serves many.
    stored.clearSignatures();
    stored.serialize(file);
    file.commit();
}

QString signatureLine(const MapHeader &header)
{
    QStringList parts;
    if (const QString name = header.preparedBy.simplified(); !name.isEmpty())
        parts.append(u"Prepared by "_s + name);
    if (const QString name = header.checkedBy.simplified(); !name.isEmpty())
        parts.append(u"Checked by "_s + name);
    return parts.join(u"     "_s);
}

} // namespace app
