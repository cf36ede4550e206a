#include "Decimal.h"
#include "OleDate.h"
#include "Value.h"

#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

namespace dao {
namespace {

// Converts to text as CStr does.
QString textOf(const Value &value)
{
    switch (value.type()) {
    case Value::Type::Text:
        return value.text();
    case Value::Type::Float:
        return singleText(value.real());
    case Value::Type::Currency:
        return currencyText(value.integer());
    case Value::Type::Date:
        return generalDateText(value.real());
    case Value::Type::Boolean:
        return value.boolean() ? u"True"_s : u"False"_s;
    default:
        return numberText(value.real());
    }
}

// Text is read as a number or as one of the words for a truth value.
std::optional<double> numberOf(const Value &value)
{
    if (value.type() != Value::Type::Text)
        return value.real();
    const QString text = value.text();
    if (const std::optional<double> number = parseNumber(text))
        return number;
    for (const QStringView yes : {u"True", u"Yes", u"On"}) {
        if (yes.compare(text.trimmed(), Qt::CaseInsensitive) == 0)
            return -1;
    }
    for (const QStringView no : {u"False", u"No", u"Off"}) {
        if (no.compare(text.trimmed(), Qt::CaseInsensitive) == 0)
            return 0;
    }
    return {};
}

// Rounds half to even before the range check: 32767.4 is an Integer. The comparison is false for NaN.
std::optional<qint64> wholeOf(const Value &value, double low, double high)
{
    const std::optional<double> number = numberOf(value);
    if (!number)
        return {};
    const double rounded = roundHalfEven(*number);
    if (!(rounded >= low && rounded <= high))
        return {};
    return qint64(rounded);
}

template <typename T>
std::optional<qint64> wholeOf(const Value &value)
{
    return wholeOf(value, double(std::numeric_limits<T>::min()), double(std::numeric_limits<T>::max()));
}

Value toDate(const Value &value)
{
    if (value.type() == Value::Type::Text) {
        if (const std::optional<double> date = parseDate(value.text()))
            return Value::fromDate(*date);
    }
    const std::optional<double> number = numberOf(value);
    return number && isValidDate(*number) ? Value::fromDate(*number) : Value();
}

// The limits are those of a 64-bit integer in ten-thousandths.
Value toCurrency(const Value &value)
{
    if (value.type() == Value::Type::Currency)
        return value;
    const std::optional<double> number = numberOf(value);
    constexpr double kCurrencyLimit = 922337203685477.5807;
    if (!number || std::fabs(*number) > kCurrencyLimit)
        return {};
    return Value::fromCurrencyScaled(tenThousandths(roundCurrency(*number)));
}

Value toSingle(const Value &value)
{
    const std::optional<double> number = numberOf(value);
    if (!number || std::fabs(*number) > double(std::numeric_limits<float>::max()))
        return {};
    return Value::fromFloat(float(*number));
}

} // namespace

Value convertValue(const Value &value, DataType type)
{
    if (value.isEmpty() || value.isError())
        return {};
    if (value.isNull())
        return type == DataType::Boolean ? Value::fromBoolean(false) : value;
    const bool binaryTarget = type == DataType::Binary || type == DataType::LongBinary;
    if (binaryTarget || value.type() == Value::Type::Binary)
        return binaryTarget && value.type() == Value::Type::Binary ? value : Value();
    switch (type) {
    case DataType::Boolean: {
        const std::optional<double> number = numberOf(value);
        return number ? Value::fromBoolean(*number != 0) : Value();
    }
    case DataType::Byte: {
        const auto number = wholeOf<quint8>(value);
        return number ? Value::fromByte(quint8(*number)) : Value();
    }
    case DataType::Integer: {
        const auto number = wholeOf<qint16>(value);
        return number ? Value::fromShort(qint16(*number)) : Value();
    }
    case DataType::Long: {
        const auto number = wholeOf<qint32>(value);
        return number ? Value::fromLong(qint32(*number)) : Value();
    }
    case DataType::Currency:
        return toCurrency(value);
    case DataType::Single:
        return toSingle(value);
    case DataType::Double:
    case DataType::Decimal: {
        const std::optional<double> number = numberOf(value);
        return number ? Value::fromDouble(*number) : Value();
    }
    case DataType::Date:
        return toDate(value);
    case DataType::Text:
    case DataType::Memo:
    case DataType::Guid:
        return Value::fromText(textOf(value));
    case DataType::Binary:
    case DataType::LongBinary:
    case DataType::Unknown:
        break;
    }
    return {};
}

} // namespace dao
