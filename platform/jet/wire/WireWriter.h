#pragma once
#include <QByteArray>
#include <QStringView>
#include <span>

namespace jet::wire {

/// Writes numbers, texts and bytes one after the other (format: Protocol.h).
class WireWriter
{
public:
    void u8(quint8 value) { m_bytes.append(char(value)); }
    void u16(quint16 value) { raw(value); }
    void u32(quint32 value) { raw(value); }
    void i64(qint64 value) { raw(value); }
    void text(QStringView value);
    void blob(std::span<const uchar> value);
    /// Appends bytes without a count.
    void append(std::span<const uchar> value)
    {
        m_bytes.append(reinterpret_cast<const char *>(value.data()), qsizetype(value.size()));
    }

    /// Overwrites a number that is known only later.
    void patchU32(qsizetype at, quint32 value);

    QByteArray &bytes() { return m_bytes; }
    const QByteArray &bytes() const { return m_bytes; }
    qsizetype size() const { return m_bytes.size(); }
    void clear() { m_bytes.resize(0); }

private:
    template <typename T>
    void raw(T value)
    {
        uchar buffer[sizeof(T)];
        for (size_t i = 0; i < sizeof(T); ++i)
            buffer[i] = uchar(quint64(value) >> (8 * i));
        m_bytes.append(reinterpret_cast<const char *>(buffer), sizeof(T));
    }

    QByteArray m_bytes;
};

} // namespace jet::wire
