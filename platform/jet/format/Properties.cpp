#include "Properties.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace jet::format {
namespace {

constexpr quint16 kNames = 0x80;
constexpr quint16 kLastValues = 0x02;
constexpr size_t kChunkHead = 6;
constexpr size_t kValueHead = 8;
constexpr uchar kBooleanType = 1;
constexpr uchar kTextType = 10;
constexpr uchar kMemoType = 12;

} // namespace

bool Properties::parse(Bytes block, bool jet4, const TextCodec &text)
{
    const char *mark = jet4 ? "MR2" : "KKD";
    if (block.size() < 4 || memcmp(block.data(), mark, 4) != 0)
        return false;
    QStringList names;
    try {
        for (ByteCursor cursor(block, 4); !cursor.atEnd();) {
            const quint32 length = cursor.u32();
            if (length < kChunkHead)
                throw Damage(Fault::BadLength);
            const quint16 kind = cursor.u16();
            const Bytes chunk = cursor.take(length - kChunkHead);
            if (kind == kNames)
                names = parseNames(chunk, text);
            else if (kind <= kLastValues)
                parseValues(chunk, names, text);
        }
    } catch (const Damage &) {
        return false;
    }
    return true;
}

QStringList Properties::parseNames(Bytes chunk, const TextCodec &text) const
{
    QStringList names;
    for (ByteCursor cursor(chunk); !cursor.atEnd();) {
        QString name;
        if (!text.decode(cursor.take(cursor.u16()), name))
            throw Damage(Fault::BadName);
        names.append(name.toLower());
    }
    return names;
}

void Properties::parseValues(Bytes chunk, const QStringList &names, const TextCodec &text)
{
    ByteCursor cursor(chunk);
    const quint32 headLength = cursor.u32();
    QString owner;
    if (headLength > 4) {
        const size_t nameLength = cursor.u16();
        if (!text.decode(cursor.take(nameLength), owner))
            throw Damage(Fault::BadName);
    }
    QHash<QString, QString> &values = m_owners[owner.toLower()];
    while (!cursor.atEnd()) {
        const size_t length = cursor.u16();
        if (length < kValueHead)
            throw Damage(Fault::BadLength);
        const Bytes record = cursor.take(length - 2);
        const uchar type = u8At(record, 1);
        const quint16 name = u16At(record, 2);
        const Bytes bytes = part(record, 6, u16At(record, 4));
        if (name >= names.size())
            throw Damage(Fault::BadName);
        QString value;
        if (type == kBooleanType)
            value = u8At(bytes, 0) ? u"1"_s : u"0"_s;
        else if ((type == kTextType || type == kMemoType) && !text.decode(bytes, value))
            throw Damage(Fault::BadValue);
        values.insert(names.at(name), value);
    }
}

QString Properties::text(const QString &owner, const QString &property) const
{
    return m_owners.value(owner.toLower()).value(property.toLower());
}

bool Properties::flag(const QString &owner, const QString &property) const
{
    return text(owner, property) == u"1"_s;
}

} // namespace jet::format
