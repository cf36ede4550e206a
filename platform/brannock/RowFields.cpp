#include "RowFields.h"

#include <fenwright/CellText.h>

using namespace Qt::StringLiterals;
using tarnwick::JDateTime;

namespace brannock {

namespace {

std::optional<int> digits(QByteArrayView text, int from, int count)
{
    int value = 0;
    for (int i = from; i < from + count; ++i) {
        if (text[i] < '0' || text[i] > '9')
            return std::nullopt;
        value = value * 10 + (text[i] - '0');
    }
    return value;
}

bool isBetween(const std::optional<int> &value, int low, int high)
{
    return value && *value >= low && *value <= high;
}

/// Exactly yyyy-mm-ddThh:mm:ss, the form in which the files are written; anything else takes the general way.
std::optional<JDateTime> isoTime(QByteArrayView cell)
{
    if (cell.size() != 19 || cell[4] != '-' || cell[7] != '-' || (cell[10] != 'T' && cell[10] != ' ') ||
        cell[13] != ':' || cell[16] != ':')
        return std::nullopt;
    const auto year = digits(cell, 0, 4);
    const auto month = digits(cell, 5, 2);
    const auto day = digits(cell, 8, 2);
    const auto hour = digits(cell, 11, 2);
    const auto minute = digits(cell, 14, 2);
    const auto second = digits(cell, 17, 2);
    if (!year || !isBetween(month, 1, 12) || !isBetween(day, 1, 28) || !isBetween(hour, 0, 23) ||
        !isBetween(minute, 0, 59) || !isBetween(second, 0, 59))
        return std::nullopt;
    return JDateTime::fromLocal(*year, *month, *day, *hour, *minute, *second);
}

} // namespace

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
    std::optional<JDateTime> time = isoTime(raw);
    if (!time)
        time = JDateTime::parse(fenwright::cellText(raw));
    if (!time)
        m_scanner.fail(column, u"'%1' is not a date and time"_s.arg(m_scanner.text(column)));
    value = *time;
}

void RowWriter::field(QStringView, const JDateTime &value)
{
    m_table.cell(value.isNull() ? QString() : value.toIso());
}

} // namespace brannock
