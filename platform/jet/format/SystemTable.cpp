#include "SystemTable.h"

namespace jet::format {

SystemTable::SystemTable(Pages &pages, const TextCodec &text, quint32 definitionPage)
    : m_text(text)
    , m_table(readTableDefinition(pages, text, definitionPage))
    , m_scan(pages, m_table)
    , m_longValues(pages)
{
}

qsizetype SystemTable::column(QStringView name) const
{
    const ColumnDefinition *column = m_table.column(name);
    if (!column)
        throw Damage(Fault::BadName, m_table.page);
    return column - m_table.columns.constData();
}

bool SystemTable::next()
{
    m_row = m_scan.next();
    return m_row != nullptr;
}

qint32 SystemTable::integer(qsizetype column) const
{
    if (m_row->isNull(column))
        return 0;
    const Bytes bytes = m_row->bytes(column);
    switch (m_table.columns.at(column).type) {
    case ColumnType::Byte:
        return u8At(bytes, 0);
    case ColumnType::Integer:
        return qint16(u16At(bytes, 0));
    case ColumnType::Long:
        return qint32(u32At(bytes, 0));
    default:
        throw Damage(Fault::BadType, m_table.page);
    }
}

Bytes SystemTable::raw(qsizetype column)
{
    if (m_row->isNull(column))
        return {};
    if (!m_table.columns.at(column).isLongValue())
        return m_row->bytes(column);
    try {
        return m_longValues.read(m_row->bytes(column));
    } catch (const Damage &) {
        ++m_valueFaults;
        return {};
    }
}

QString SystemTable::text(qsizetype column)
{
    QString text;
    if (!m_text.decode(raw(column), text))
        ++m_valueFaults;
    return text;
}

QByteArray SystemTable::bytes(qsizetype column)
{
    const Bytes bytes = raw(column);
    return QByteArray(reinterpret_cast<const char *>(bytes.data()), qsizetype(bytes.size()));
}

SystemTableState SystemTable::state() const
{
    const bool damaged = m_valueFaults > 0 || m_scan.faults().pages > 0 || m_scan.faults().rows > 0;
    return {m_scan.rowsRead(), qint64(m_table.rowCount), damaged};
}

} // namespace jet::format
