#include "Value.h"

namespace dao {
namespace {

// Keeps each factory function to one line, as the members are private.
template <typename T>
const T *held(const std::variant<std::monostate, qint64, double, QString, QByteArray> &data)
{
    return std::get_if<T>(&data);
}

} // namespace

Value Value::null()
{
    Value value;
    value.m_type = Type::Null;
    return value;
}

Value Value::fromShort(qint16 number)
{
    Value value;
    value.m_type = Type::Short;
    value.m_data = qint64(number);
    return value;
}

Value Value::fromLong(qint32 number)
{
    Value value;
    value.m_type = Type::Long;
    value.m_data = qint64(number);
    return value;
}

Value Value::fromFloat(float number)
{
    Value value;
    value.m_type = Type::Float;
    value.m_data = double(number);
    return value;
}

Value Value::fromDouble(double number)
{
    Value value;
    value.m_type = Type::Double;
    value.m_data = number;
    return value;
}

Value Value::fromCurrencyScaled(qint64 tenThousandths)
{
    Value value;
    value.m_type = Type::Currency;
    value.m_data = tenThousandths;
    return value;
}

Value Value::fromDate(double days)
{
    Value value;
    value.m_type = Type::Date;
    value.m_data = days;
    return value;
}

Value Value::fromText(const QString &text)
{
    Value value;
    value.m_type = Type::Text;
    value.m_data = text;
    return value;
}

Value Value::fromBoolean(bool flag)
{
    Value value;
    value.m_type = Type::Boolean;
    value.m_data = qint64(flag ? -1 : 0);
    return value;
}

Value Value::fromByte(quint8 number)
{
    Value value;
    value.m_type = Type::Byte;
    value.m_data = qint64(number);
    return value;
}

Value Value::fromBinary(const QByteArray &bytes)
{
    Value value;
    value.m_type = Type::Binary;
    value.m_data = bytes;
    return value;
}

Value Value::fromError(int number)
{
    Value value;
    value.m_type = Type::Error;
    value.m_data = qint64(number);
    return value;
}

qint64 Value::integer() const
{
    const qint64 *number = held<qint64>(m_data);
    return number ? *number : 0;
}

double Value::real() const
{
    if (const double *number = held<double>(m_data))
        return *number;
    if (m_type == Type::Error)
        return 0;
    return m_type == Type::Currency ? double(integer()) / 10000.0 : double(integer());
}

QString Value::text() const
{
    const QString *text = held<QString>(m_data);
    return text ? *text : QString();
}

QByteArray Value::binary() const
{
    const QByteArray *bytes = held<QByteArray>(m_data);
    return bytes ? *bytes : QByteArray();
}

Value::Type valueTypeOf(DataType type)
{
    switch (type) {
    case DataType::Boolean:
        return Value::Type::Boolean;
    case DataType::Byte:
        return Value::Type::Byte;
    case DataType::Integer:
        return Value::Type::Short;
    case DataType::Long:
        return Value::Type::Long;
    case DataType::Currency:
        return Value::Type::Currency;
    case DataType::Single:
        return Value::Type::Float;
    case DataType::Double:
    case DataType::Decimal:
        return Value::Type::Double;
    case DataType::Date:
        return Value::Type::Date;
    case DataType::Text:
    case DataType::Memo:
    case DataType::Guid:
        return Value::Type::Text;
    case DataType::Binary:
    case DataType::LongBinary:
        return Value::Type::Binary;
    case DataType::Unknown:
        break;
    }
    return Value::Type::Empty;
}

} // namespace dao
