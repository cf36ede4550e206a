#pragma once
#include <exception>
#include <QByteArray>
#include <QString>
#include <span>

namespace jet::wire {

/// The stream is invalid. This is always a fault of the child process, never of the file that is read.
class ProtocolError : public std::exception
{
public:
    const char *what() const noexcept override { return "the stream of the reading process is damaged"; }
};

/// Reads numbers, texts and bytes from a payload. Every read is checked against the remaining bytes; throws
/// ProtocolError.
class WireReader
{
public:
    explicit WireReader(std::span<const uchar> bytes)
        : m_rest(bytes)
    {
    }

    quint8 u8() { return raw<quint8>(); }
    quint16 u16() { return raw<quint16>(); }
    quint32 u32() { return raw<quint32>(); }
    qint64 i64() { return raw<qint64>(); }
    float f32();
    double f64();
    bool flag();
    QString text();
    QByteArray blob();
    /// Reads a count of items of at least leastBytesEach bytes, checked against the remaining bytes before memory is
    /// reserved.
    quint32 count(size_t leastBytesEach);

    size_t left() const { return m_rest.size(); }
    bool atEnd() const { return m_rest.empty(); }
    /// Throws ProtocolError unless everything was read.
    void expectEnd() const;

private:
    std::span<const uchar> take(size_t length);
    template <typename T>
    T raw()
    {
        const std::span<const uchar> bytes = take(sizeof(T));
        quint64 value = 0;
        for (size_t i = 0; i < sizeof(T); ++i)
            value |= quint64(bytes[i]) << (8 * i);
        return T(value);
    }

    std::span<const uchar> m_rest;
};

} // namespace jet::wire
