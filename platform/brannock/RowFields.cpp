#include "RowFields.h"

#include <fenwright/CellText.h>

using namespace Qt::StringLiterals;
using tarnwick::JDateTime;

namespace brannock {

namespace {
constexpr int kIsoSize = 19; // length of yyyy-mm-ddThh:mm:ss
}

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

void RowReader::field(QStringView, bool &value)
{
    value = m_scanner.flag(m_columns[m_next++].index, value);
}

std::optional<JDateTime> RowReader::sameHour(QByteArrayView cell) const
{
    if (m_hour.isEmpty() || cell.size() != kIsoSize || !cell.startsWith(m_hour) || cell[13] != ':' || cell[16] != ':')
        return std::nullopt;
    for (const int i : {14, 15, 17, 18}) {
        if (cell[i] < '0' || cell[i] > (i == 14 || i == 17 ? '5' : '9'))
            return std::nullopt;
    }
    const int minute = (cell[14] - '0') * 10 + cell[15] - '0';
    const int second = (cell[17] - '0') * 10 + cell[18] - '0';
    return JDateTime::fromSeconds(m_hourTime.seconds() + minute * 60 + second);
}

void RowReader::field(QStringView, JDateTime &value)
{
    const int column = m_columns[m_next++].index;
    const QByteArrayView raw = m_scanner.raw(column);
    if (raw.trimmed().isEmpty())
        return;
    // mktime() reads the time zone's rules on every call. Consecutive entries of a report are usually in the same hour.
    std::optional<JDateTime> time = sameHour(raw);
    if (!time) {
        time = fenwright::cellTime(raw);
        if (!time)
            m_scanner.fail(column, u"'%1' is not a date and time"_s.arg(m_scanner.text(column)));
        const std::tm local = time->local();
        if (raw.size() == kIsoSize && raw[10] == 'T') {
            m_hour = raw.first(13);
            m_hourTime = JDateTime::fromSeconds(time->seconds() - local.tm_min * 60 - local.tm_sec);
        }
    }
    value = *time;
}

void RowWriter::field(QStringView, const JDateTime &value)
{
    m_table.cell(value.isNull() ? QString() : value.toIso());
}

} // namespace brannock
