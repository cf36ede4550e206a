#pragma once
#include <jet/wire/Protocol.h>

#include <exception>
#include <QtGlobal>
#include <span>

namespace jet::format {

using wire::Fault;
using Bytes = std::span<const uchar>;

/// Thrown if a part of the file is invalid; holds the page (0: not on one page).
class Damage : public std::exception
{
public:
    explicit Damage(Fault fault, quint32 page = 0)
        : m_fault(fault)
        , m_page(page)
    {
    }
    Fault fault() const { return m_fault; }
    quint32 page() const { return m_page; }
    const char *what() const noexcept override { return "damaged"; }

private:
    Fault m_fault;
    quint32 m_page;
};

/// A part of a byte range. Throws Damage if it is not inside the range.
inline Bytes part(Bytes bytes, size_t at, size_t length)
{
    if (at > bytes.size() || length > bytes.size() - at)
        throw Damage(Fault::BadOffset);
    return bytes.subspan(at, length);
}

/// Read little-endian numbers. Throw Damage if they are not inside the range.
inline quint8 u8At(Bytes bytes, size_t at)
{
    return part(bytes, at, 1)[0];
}
inline quint16 u16At(Bytes bytes, size_t at)
{
    const Bytes b = part(bytes, at, 2);
    return quint16(b[0] | b[1] << 8);
}
inline quint32 u32At(Bytes bytes, size_t at)
{
    const Bytes b = part(bytes, at, 4);
    return quint32(b[0]) | quint32(b[1]) << 8 | quint32(b[2]) << 16 | quint32(b[3]) << 24;
}

/// Reads sequentially from a byte range.
class ByteCursor
{
public:
    explicit ByteCursor(Bytes bytes, size_t at = 0)
        : m_bytes(bytes)
        , m_at(at)
    {
    }
    Bytes take(size_t length)
    {
        const Bytes taken = part(m_bytes, m_at, length);
        m_at += length;
        return taken;
    }
    quint8 u8() { return take(1)[0]; }
    quint16 u16() { return u16At(take(2), 0); }
    quint32 u32() { return u32At(take(4), 0); }
    size_t position() const { return m_at; }
    bool atEnd() const { return m_at >= m_bytes.size(); }
    size_t left() const { return atEnd() ? 0 : m_bytes.size() - m_at; }

private:
    Bytes m_bytes;
    size_t m_at;
};

} // namespace jet::format
