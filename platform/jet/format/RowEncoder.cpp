#include "RowEncoder.h"

#include <array>
#include <QUuid>

using namespace Qt::StringLiterals;

namespace jet::format {

using wire::Tag;

namespace {

// Number of digits that a Double preserves for every number.
constexpr qsizetype kExactDigits = 15;

void encodePlain(Tag tag, Bytes bytes, wire::WireWriter &to)
{
    to.u8(quint8(tag));
    to.append(bytes);
}

qsizetype significantDigits(const QByteArray &decimal)
{
    QByteArray digits;
    for (const char c : decimal) {
        if (c >= '0' && c <= '9' && (c != '0' || !digits.isEmpty()))
            digits.append(c);
    }
    while (digits.endsWith('0'))
        digits.chop(1);
    return digits.size();
}

} // namespace

QByteArray decimalText(Bytes bytes, int scale)
{
    // Four words, most significant first; divided by ten for each digit.
    std::array<quint32, 4> words{};
    for (size_t i = 0; i < words.size(); ++i)
        words[i] = u32At(bytes, 1 + 4 * i);
    QByteArray reversed;
    const auto isZero = [&] { return (words[0] | words[1] | words[2] | words[3]) == 0; };
    while (!isZero() || reversed.size() <= scale) {
        quint64 rest = 0;
        for (quint32 &word : words) {
            rest = rest << 32 | word;
            word = quint32(rest / 10);
            rest %= 10;
        }
        reversed.append(char('0' + rest));
    }
    if (scale > 0)
        reversed.insert(scale, '.');
    if (u8At(bytes, 0) & 0x80)
        reversed.append('-');
    std::reverse(reversed.begin(), reversed.end());
    return reversed;
}

QString guidText(Bytes bytes)
{
    const Bytes b = part(bytes, 0, 16);
    const QUuid id(u32At(b, 0), u16At(b, 4), u16At(b, 6), b[8], b[9], b[10], b[11], b[12], b[13], b[14], b[15]);
    return id.toString().toUpper();
}

RowEncoder::RowEncoder(Pages &pages, const TextCodec &text, const TableDefinition &table)
    : m_text(text)
    , m_table(table)
    , m_longValues(pages)
    , m_faults(size_t(table.columns.size()))
{
}

void RowEncoder::encode(const Row &row, wire::WireWriter &to)
{
    for (qsizetype i = 0; i < m_table.columns.size(); ++i) {
        const qsizetype start = to.size();
        try {
            encodeValue(i, row, to);
        } catch (const Damage &damage) {
            to.bytes().resize(start);
            to.u8(quint8(Tag::Null));
            ColumnFaults &faults = m_faults[size_t(i)];
            ++faults.damaged;
            if (!faults.first)
                faults.first = damage;
        }
    }
}

void RowEncoder::encodeValue(qsizetype column, const Row &row, wire::WireWriter &to)
{
    const ColumnType type = m_table.columns.at(column).type;
    if (type == ColumnType::Boolean)
        return to.u8(quint8(row.bit(column) ? Tag::True : Tag::False));
    if (row.isNull(column))
        return to.u8(quint8(Tag::Null));
    const Bytes bytes = row.bytes(column);
    switch (type) {
    case ColumnType::Boolean:
        break;
    case ColumnType::Byte:
        return encodePlain(Tag::Byte, part(bytes, 0, 1), to);
    case ColumnType::Integer:
        return encodePlain(Tag::Short, part(bytes, 0, 2), to);
    case ColumnType::Long:
        return encodePlain(Tag::Long, part(bytes, 0, 4), to);
    case ColumnType::Single:
        return encodePlain(Tag::Float, part(bytes, 0, 4), to);
    case ColumnType::Currency:
        return encodePlain(Tag::Currency, part(bytes, 0, 8), to);
    case ColumnType::Double:
        return encodePlain(Tag::Double, part(bytes, 0, 8), to);
    case ColumnType::Date:
        return encodePlain(Tag::Date, part(bytes, 0, 8), to);
    case ColumnType::Text:
        return encodeText(column, bytes, to);
    case ColumnType::Memo:
        return encodeText(column, m_longValues.read(bytes), to);
    case ColumnType::Guid:
        to.u8(quint8(Tag::Text));
        return to.text(guidText(bytes));
    case ColumnType::Decimal:
        return encodeDecimal(column, bytes, to);
    case ColumnType::Binary:
        to.u8(quint8(Tag::Binary));
        return to.blob(bytes);
    case ColumnType::LongBinary: {
        const Bytes value = m_longValues.read(bytes);
        to.u8(quint8(Tag::Binary));
        return to.blob(value);
    }
    }
    throw Damage(Fault::BadType);
}

void RowEncoder::encodeText(qsizetype column, Bytes bytes, wire::WireWriter &to)
{
    m_buffer.resize(0);
    if (!m_text.decode(bytes, m_buffer))
        ++m_faults[size_t(column)].undecodable;
    to.u8(quint8(Tag::Text));
    to.text(m_buffer);
}

void RowEncoder::encodeDecimal(qsizetype column, Bytes bytes, wire::WireWriter &to)
{
    const QByteArray text = decimalText(bytes, m_table.columns.at(column).scale);
    if (significantDigits(text) > kExactDigits)
        ++m_faults[size_t(column)].rounded;
    to.u8(quint8(Tag::Decimal));
    to.blob(Bytes(reinterpret_cast<const uchar *>(text.constData()), size_t(text.size())));
}

} // namespace jet::format
