#include "RowFields.h"

#include <fenwright/CellText.h>

using namespace Qt::StringLiterals;
using tarnwick::JDateTime;

namespace brannock {

namespace {
constexpr int kIsoSize = 19;  // length of yyyy-mm-ddThh:mm:ss
constexpr int kHourSize = 13; // of yyyy-mm-ddThh
} // namespace

RowReader::RowReader(const fenwright::TableScanner &scanner, const QStringList &fieldNames)
    : m_scanner(scanner)
{
    constexpr size_t kKnown = 1 << 10;
    m_hours.resize(kKnown);
    m_texts.resize(kKnown);
    for (const QString &name : fieldNames)
        m_columns.push_back({scanner.column(name), {}});
}

const RowReader::Text &RowReader::knownText(QByteArrayView raw)
{
    Text &known = m_texts[qHash(raw) % m_texts.size()];
    if (known.raw != raw)
        known = {raw, fenwright::cellText(raw)};
    return known;
}

void RowReader::field(QStringView, QString &value)
{
    Column &column = m_columns[m_next++];
    const QByteArrayView raw = m_scanner.raw(column.index);
    if (raw.isEmpty())
        return;
    if (column.last.raw != raw)
        column.last = knownText(raw);
    value = column.last.text;
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
    const int column = m_columns[m_next++].index;
    if (!m_scanner.raw(column).isEmpty())
        value = m_scanner.flag(column, value);
}

RowReader::Hour &RowReader::knownHour(QByteArrayView hour)
{
    return m_hours[qHash(hour) % m_hours.size()];
}

std::optional<JDateTime> RowReader::timeInKnownHour(QByteArrayView cell)
{
    if (cell.size() != kIsoSize || cell[13] != ':' || cell[16] != ':')
        return std::nullopt;
    for (const int i : {14, 15, 17, 18}) {
        if (cell[i] < '0' || cell[i] > (i == 14 || i == 17 ? '5' : '9'))
            return std::nullopt;
    }
    const Hour &hour = knownHour(cell.first(kHourSize));
    if (hour.text != cell.first(kHourSize))
        return std::nullopt;
    const int minute = (cell[14] - '0') * 10 + cell[15] - '0';
    const int second = (cell[17] - '0') * 10 + cell[18] - '0';
    return JDateTime::fromSeconds(hour.seconds + minute * 60 + second);
}

void RowReader::field(QStringView, JDateTime &value)
{
    const int column = m_columns[m_next++].index;
    const QByteArrayView raw = m_scanner.raw(column);
    if (raw.isEmpty())
        return;
    // mktime() reads the time zone's rules on every call, and the entries of a file share few hours.
    std::optional<JDateTime> time = timeInKnownHour(raw);
    if (!time) {
        if (raw.trimmed().isEmpty())
            return;
        time = fenwright::cellTime(raw);
        if (!time)
            m_scanner.fail(column, u"'%1' is not a date and time"_s.arg(m_scanner.text(column)));
        const std::tm local = time->local();
        if (raw.size() == kIsoSize && raw[10] == 'T')
            knownHour(raw.first(kHourSize)) = {raw.first(kHourSize),
                                               time->seconds() - local.tm_min * 60 - local.tm_sec};
    }
    value = *time;
}

void RowWriter::field(QStringView, const JDateTime &value)
{
    m_table.cell(value.isNull() ? QString() : value.toIso());
}

} // namespace brannock
