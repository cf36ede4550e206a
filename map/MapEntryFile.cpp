#include "MapFile.h"

using namespace Qt::StringLiterals;

namespace map {

namespace {

/// Size of version, key length and common fields of an entry, without label and tubes.
constexpr int kSmallestEntry = 4 + 4 + 4 + 2 + 4 + 4 + 4;

std::unique_ptr<plans::MapFill> createFill(tarnwick::JFile &file)
{
    QString key;
    file.serialize(key);
    const plans::MapFillType *type = plans::MapFillType::find(key);
    if (!type)
        file.fail(u"unknown kind of legend entry \"%1\""_s.arg(key));
    return type->create();
}

void writeEntry(tarnwick::JFile &file, plans::MapFill &fill)
{
    file.version(plans::MapFill::kVersion);
    file.serialize(fill.typeKey);
    fill.serialize(file, plans::MapFill::kVersion);
}

std::unique_ptr<plans::MapFill> readEntry(tarnwick::JFile &file)
{
    const int version = file.version(plans::MapFill::kVersion);
    auto fill = createFill(file);
    fill->serialize(file, version);
    return fill;
}

/// The common fields are in the same order, followed by an unused text.
std::unique_ptr<plans::MapFill> readOldEntry(tarnwick::JFile &file)
{
    file.version(2);
    auto fill = createFill(file);
    file.serialize(fill->shown);
    fill->mark.serialize(file);
    file.serialize(fill->label);
    file.serialize(fill->tubes);
    QString unused;
    file.serialize(unused);
    fill->readOldFormat(file);
    return fill;
}

template <typename Function>
Entries readList(tarnwick::JFile &file, int tubeCount, Function readOne)
{
    Entries entries;
    const qint32 n = file.count(0, kSmallestEntry);
    for (qint32 i = 0; i < n; ++i) {
        auto fill = readOne(file);
        fill->dropInvalidTubes(tubeCount);
        // Without a symbol the tubes would be counted but look open.
        if (fill->mark.isOpen())
            fill->mark.symbol = ellery::Symbol(u'A');
        entries.push_back(std::move(fill));
    }
    return entries;
}

} // namespace

Entries readEntries(tarnwick::JFile &file, int tubeCount)
{
    return readList(file, tubeCount, readEntry);
}

Entries readOldEntries(tarnwick::JFile &file, int tubeCount)
{
    return readList(file, tubeCount, readOldEntry);
}

void writeEntries(tarnwick::JFile &file, const Entries &entries)
{
    file.count(qint64(entries.size()), kSmallestEntry);
    for (const Entry &entry : entries)
        writeEntry(file, *entry->clone());
}

} // namespace map
