#pragma once
#include "Targets.h"

#include <cstring>
#include <QString>

namespace fuzz {

/// Takes values off the front of bytes; where none are left, zeros.
class ByteReader
{
public:
    explicit ByteReader(Bytes bytes)
        : m_rest(bytes)
    {
    }

    bool atEnd() const { return m_rest.empty(); }
    Bytes rest() const { return m_rest; }

    Bytes take(size_t count)
    {
        const Bytes taken = m_rest.first(std::min(count, m_rest.size()));
        m_rest = m_rest.subspan(taken.size());
        return taken;
    }

    template <typename Number>
    Number number()
    {
        Number result{};
        const Bytes taken = take(sizeof(Number));
        if (!taken.empty())
            std::memcpy(&result, taken.data(), taken.size());
        return result;
    }

    /// Up to 255 bytes, their count in front.
    QString text()
    {
        const Bytes taken = take(number<uint8_t>());
        return QString::fromUtf8(reinterpret_cast<const char *>(taken.data()), qsizetype(taken.size()));
    }

private:
    Bytes m_rest;
};

} // namespace fuzz
