#include "WireReader.h"

#include <bit>
#include <QtEndian>

namespace jet::wire {

std::span<const uchar> WireReader::take(size_t length)
{
    if (length > m_rest.size())
        throw ProtocolError();
    const std::span<const uchar> bytes = m_rest.first(length);
    m_rest = m_rest.subspan(length);
    return bytes;
}

float WireReader::f32()
{
    return std::bit_cast<float>(u32());
}

double WireReader::f64()
{
    return std::bit_cast<double>(i64());
}

bool WireReader::flag()
{
    const quint8 value = u8();
    if (value > 1)
        throw ProtocolError();
    return value != 0;
}

QString WireReader::text()
{
    const quint32 units = u32();
    if (units == 0)
        return QLatin1String("");
    const std::span<const uchar> bytes = take(size_t(units) * 2);
    QString text(qsizetype(units), Qt::Uninitialized);
    qFromLittleEndian<quint16>(bytes.data(), qsizetype(units), text.data());
    return text;
}

QByteArray WireReader::blob()
{
    const std::span<const uchar> bytes = take(u32());
    return QByteArray(reinterpret_cast<const char *>(bytes.data()), qsizetype(bytes.size()));
}

quint32 WireReader::count(size_t leastBytesEach)
{
    const quint32 items = u32();
    if (items > m_rest.size() / leastBytesEach)
        throw ProtocolError();
    return items;
}

void WireReader::expectEnd() const
{
    if (!m_rest.empty())
        throw ProtocolError();
}

} // namespace jet::wire
