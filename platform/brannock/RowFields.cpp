#include "RowFields.h"

#include <fenwright/CellText.h>

using namespace Qt::StringLiterals;
using tarnwick::JDateTime;

namespace brannock {

RowReader::RowReader(const fenwright::TableScanner &scanner, const QStringList &fieldNames)
    : m_scanner(scanner)
{
    for (const QString &name : fieldNames)
        m_columns.push_back({scanner.column(name), {}, {}});
}

void RowReader::field(QStringView, QString &value)
{
    Column &column = m_columns[m_next++];
    const QByteArrayView raw = m_scanner.raw(column.index);
    if (raw.isEmpty())
        return;
    if (column.lastRaw != raw) {
        column.lastRaw = raw;
        column.lastText = fenwright::cellText(raw);
    }
    value = column.lastText;
}

void RowReader::field(QStringView, int &value, IntRange range)
{
    const int column = m_columns[m_next++].index;
    if (!m_scanner.raw(column).isEmpty())
        value = m_scanner.integer(column, range.minimum, range.maximum, value);
}

void RowReader::field(QStringView name, qint16 &value, IntRange range)
{
    int wide = value;
    field(name, wide, range);
    value = qint16(wide);
}

void RowReader::field(QStringView, double &value)
{
    const int column = m_columns[m_next++].index;
    if (!m_scanner.raw(column).isEmpty())
        value = m_scanner.number(column, value);
}

void RowReader::field(QStringView, float &value)
{
    const int column = m_columns[m_next++].index;
    if (!m_scanner.raw(column).isEmpty())
        value = m_scanner.single(column, value);
}

void RowReader::field(QStringView, JDateTime &value)
{
    const int column = m_columns[m_next++].index;
    const QByteArrayView raw = m_scanner.raw(column);
    if (raw.trimmed().isEmpty())
        return;
    const std::optional<JDateTime> time = fenwright::cellTime(raw);
    if (!time)
        m_scanner.fail(column, u"'%1' is not a date and time"_s.arg(m_scanner.text(column)));
    value = *time;
}

void RowWriter::field(QStringView, const JDateTime &value)
{
    m_table.cell(value.isNull() ? QString() : value.toIso());
}

} // namespace brannock
