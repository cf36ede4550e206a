#include "WireWriter.h"

#include <QtEndian>

namespace jet::wire {

void WireWriter::text(QStringView value)
{
    u32(quint32(value.size()));
    if (value.isEmpty())
        return;
    const qsizetype at = m_bytes.size();
    m_bytes.resize(at + value.size() * 2);
    qToLittleEndian<quint16>(value.utf16(), value.size(), m_bytes.data() + at);
}

void WireWriter::blob(std::span<const uchar> value)
{
    u32(quint32(value.size()));
    append(value);
}

void WireWriter::patchU32(qsizetype at, quint32 value)
{
    qToLittleEndian(value, m_bytes.data() + at);
}

} // namespace jet::wire
