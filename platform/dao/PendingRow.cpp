#include "PendingRow.h"

#include <dao/store/ErrorTranslation.h>

#include <cstring>

using namespace Qt::StringLiterals;

namespace dao {

namespace {

const QString kSource = u"DAO.Field"_s;
constexpr double kCurrencyScale = 10'000.0;
constexpr qsizetype kFirstReserve = 1024;

} // namespace

// The buffer keeps its memory for the next row.
void PendingRow::reset(int fieldCount)
{
    m_cells.resize(size_t(fieldCount));
    m_mask.assign(size_t(fieldCount + 63) / 64, 0);
    m_used = 0;
}

bool PendingRow::isEmpty() const
{
    return std::all_of(m_mask.begin(), m_mask.end(), [](quint64 bits) { return bits == 0; });
}

// Doubles the buffer, so that many small texts do not reallocate it each time.
void PendingRow::reserve(qsizetype bytes)
{
    const auto needed = size_t(m_used + bytes);
    if (m_bytes.size() < needed)
        m_bytes.resize(std::max({needed, m_bytes.size() * 2, size_t(kFirstReserve)}));
}

// Encodes into the buffer directly; toUtf8() would allocate a QByteArray per cell.
void PendingRow::setText(Cell &cell, const QString &text)
{
    reserve(m_encoder.requiredSpace(text.size()) + 1);
    char *start = m_bytes.data() + m_used;
    const char *end = m_encoder.appendToBuffer(start, text);
    cell = {Kind::Text, 0, 0, m_used, end - start};
    m_used += cell.length;
}

void PendingRow::setBytes(Cell &cell, const QByteArray &bytes)
{
    reserve(bytes.size() + 1);
    std::memcpy(m_bytes.data() + m_used, bytes.constData(), size_t(bytes.size()));
    cell = {Kind::Bytes, 0, 0, m_used, bytes.size()};
    m_used += cell.length;
}

// A value of the field's own type, the usual case, is used without a conversion.
void PendingRow::set(int field, const FieldInfo &info, const Value &given)
{
    Value converted;
    const Value *value = &given;
    if (given.type() != valueTypeOf(info.type)) {
        converted = convertValue(given, info.type);
        if (converted.isEmpty())
            throw store::fieldError(error::ConversionFailed, kSource, info.sourceTable, info);
        value = &converted;
    }
    Cell &cell = m_cells[size_t(field)];
    switch (value->type()) {
    case Value::Type::Text: {
        const QString text = value->text();
        if (info.type == DataType::Text && info.size > 0 && text.size() > info.size)
            throw store::fieldError(error::FieldTooSmall, kSource, info.sourceTable, info);
        setText(cell, text);
        break;
    }
    case Value::Type::Binary:
        setBytes(cell, value->binary());
        break;
    case Value::Type::Boolean:
    case Value::Type::Byte:
    case Value::Type::Short:
    case Value::Type::Long:
        cell = {Kind::Integer, value->integer(), 0, 0, 0};
        break;
    case Value::Type::Currency:
        cell = {Kind::Real, 0, double(value->integer()) / kCurrencyScale, 0, 0};
        break;
    case Value::Type::Float:
    case Value::Type::Double:
    case Value::Type::Date:
        cell = {Kind::Real, 0, value->real(), 0, 0};
        break;
    default:
        cell = {};
    }
    m_mask[size_t(field) / 64] |= quint64(1) << (field % 64);
}

Value PendingRow::value(int field, DataType type) const
{
    const Cell &cell = m_cells[size_t(field)];
    switch (cell.kind) {
    case Kind::Integer:
        return convertValue(type == DataType::Boolean ? Value::fromBoolean(cell.integer != 0)
                                                      : Value::fromLong(qint32(cell.integer)),
                            type);
    case Kind::Real:
        return convertValue(type == DataType::Date ? Value::fromDate(cell.real) : Value::fromDouble(cell.real), type);
    case Kind::Text:
        return Value::fromText(QString::fromUtf8(m_bytes.data() + cell.offset, cell.length));
    case Kind::Bytes:
        return Value::fromBinary(QByteArray(m_bytes.data() + cell.offset, cell.length));
    case Kind::Null:
        break;
    }
    return Value::null();
}

void PendingRow::bind(store::Statement &statement, int parameter, int field) const
{
    const Cell &cell = m_cells[size_t(field)];
    switch (cell.kind) {
    case Kind::Null:
        statement.bindNull(parameter);
        break;
    case Kind::Integer:
        statement.bind(parameter, cell.integer);
        break;
    case Kind::Real:
        statement.bind(parameter, cell.real);
        break;
    case Kind::Text:
        statement.bindUtf8(parameter, m_bytes.data() + cell.offset, cell.length);
        break;
    case Kind::Bytes:
        statement.bindBytes(parameter, m_bytes.data() + cell.offset, cell.length);
        break;
    }
}

} // namespace dao
