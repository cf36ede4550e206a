#include "MapHeader.h"

#include <algorithm>
#include <QDir>
#include <QFileInfo>
#include <QStringList>

using namespace Qt::StringLiterals;

namespace map {

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

/// Removes the punctuation around values that are missing, for example the name of a map.
static QString withoutGaps(const QString &text)
{
    QStringList lines;
    for (const QString &line : text.split(u'\n')) {
        QStringList parts = line.split(u", "_s);
        parts.removeIf([](const QString &part) { return part.trimmed().isEmpty(); });
        if (!parts.isEmpty())
            lines.append(parts.join(u", "_s));
    }
    return lines.join(u'\n');
}

MapHeader MapHeader::printed(const tarnwick::JMacro &macros) const
{
    if (!upperText.isEmpty() || !lowerText.isEmpty())
        return expanded(macros);
    MapHeader result = *this;
    result.upperText = standard().upperText;
    result.lowerText = standard().lowerText;
    result = result.expanded(macros);
    result.upperText = withoutGaps(result.upperText);
    result.lowerText = withoutGaps(result.lowerText);
    return result;
}

MapHeader MapHeader::standard()
{
    MapHeader header;
    header.name = u"standard"_s;
    header.upperText = u"[SITE CODE], [COMPONENT NAME], [OUTAGE NAME]"_s;
    header.lowerText = u"[MAP NAME], [CUR DATETIME]"_s;
    return header;
}

void shipStandardHeader(const tarnwick::PathRoots &roots)
{
    const QDir folder(roots.palomineDir + u"/user/map_headers"_s);
    if (!folder.exists() || !folder.entryList({u"*.hdr"_s}, QDir::Files).isEmpty())
        return;
    try {
        const MapHeader header = MapHeader::standard();
        writeHeaderFile(header, folder.filePath(header.name + u".hdr"_s));
    } catch (const tarnwick::Error &) {
        // The installation is read-only.
    }
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
    // Signatures belong to one map; a header file is used by many.
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

} // namespace map
