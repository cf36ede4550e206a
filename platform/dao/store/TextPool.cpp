#include "TextPool.h"

#include <algorithm>
#include <cstring>

namespace dao::store {

namespace {

template <typename Word>
quint64 word(const char *bytes)
{
    Word value;
    std::memcpy(&value, bytes, sizeof value);
    return value;
}

} // namespace

// Hashes the first and last 8 bytes, which overlap in short texts. A new text replaces the old one in its slot.
size_t TextPool::slotOf(const char *bytes, qsizetype length)
{
    constexpr quint64 kMixer = 0x9E3779B97F4A7C15u;
    constexpr int kWordBits = 64;
    quint64 first = 0;
    quint64 last = 0;
    if (length >= 8) {
        first = word<quint64>(bytes);
        last = word<quint64>(bytes + length - 8);
    } else if (length >= 4) {
        first = word<quint32>(bytes);
        last = word<quint32>(bytes + length - 4);
    } else {
        first = quint8(bytes[0]);
        last = (quint64(quint8(bytes[length / 2])) << 8) | quint8(bytes[length - 1]);
    }
    const quint64 mixed = (first ^ (last * kMixer) ^ quint64(length)) * kMixer;
    return size_t((mixed ^ (mixed >> 29)) * kMixer >> (kWordBits - kSlotBits));
}

QString TextPool::text(const char *utf8, qsizetype length)
{
    if (length <= 0 || length > kLongest)
        return QString::fromUtf8(utf8, length);
    QString &known = m_slots[slotOf(utf8, length)];
    // Only ASCII texts are cached, so that the bytes can be compared directly.
    if (known == QLatin1StringView(utf8, length))
        return known;
    QString made = QString::fromUtf8(utf8, length);
    if (std::all_of(utf8, utf8 + length, [](char byte) { return quint8(byte) < 0x80; }))
        known = made;
    return made;
}

} // namespace dao::store
