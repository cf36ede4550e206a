#include "ValueText.h"

#include "Errors.h"
#include "FieldAccess.h"
#include "Messages.h"

#include <dao/values/CellFailure.h>
#include <QLocale>
#include <tarnwick/JFormatSpec.h>
#include <tarnwick/StringToValue.h>

namespace db {

using namespace Qt::StringLiterals;
using tarnwick::JDateTime;
using tarnwick::JFormatSpec;
using tarnwick::string_to_value;
using Type = dao::Value::Type;

QString valueToText(const dao::Value &value, const QString &format)
{
    const auto print = [&format](const tarnwick::FormatArg &argument, const QString &standard) {
        return JFormatSpec(format.isEmpty() ? standard : format).apply(argument);
    };
    switch (value.type()) {
    case Type::Null:
        return {};
    case Type::Error:
        return dao::failureWord(int(value.integer()));
    case Type::Short:
    case Type::Long:
        return print(qint32(value.integer()), u"%d"_s);
    case Type::Float:
    case Type::Double:
        return print(value.real(), u"%f"_s);
    case Type::Date:
        return print(fieldAs<JDateTime>(value), u"%t"_s);
    case Type::Text:
        return print(value.text(), u"%U"_s);
    case Type::Byte:
        return print(quint32(value.integer()), u"%u"_s);
    default:
        return u"???"_s;
    }
}

namespace {

bool textToBoolean(const QString &text)
{
    static const QStringList no{u"NO"_s, u"N"_s, u"F"_s, u"FALSE"_s, u"OFF"_s, u"0"_s};
    return !no.contains(text.toUpper());
}

template <typename T>
void setNumber(dao::Value &value, const QString &text)
{
    if (const auto number = string_to_value<T>(text))
        value = toValue(*number);
}

void setByte(dao::Value &value, const QString &text)
{
    const auto number = string_to_value<qint16>(text, 10);
    if (number && quint16(*number) < 256)
        value = dao::Value::fromByte(quint8(*number));
}

void setCurrency(tarnwick::UserPrompts &prompts, dao::Value &value, const QString &text)
{
    if (const auto amount = parseCurrency(text))
        value = dao::Value::fromCurrencyScaled(*amount);
    else
        showOleError(prompts, OleException(OleException::kTypeMismatch), messages::kParseCurrency, text);
}

void setDate(tarnwick::UserPrompts &prompts, dao::Value &value, const QString &text)
{
    if (const auto date = JDateTime::parse(text))
        value = dao::Value::fromDate(date->toOleDate());
    else
        showOleError(prompts, OleException(OleException::kTypeMismatch), messages::kParseDate, text);
}

} // namespace

void textToValue(tarnwick::UserPrompts &prompts, dao::Value &value, dao::DataType type, const QString &text)
{
    switch (type) {
    case dao::DataType::Boolean:
        value = dao::Value::fromBoolean(textToBoolean(text));
        break;
    case dao::DataType::Byte:
        setByte(value, text);
        break;
    case dao::DataType::Integer:
        setNumber<qint16>(value, text);
        break;
    case dao::DataType::Long:
        setNumber<qint32>(value, text);
        break;
    case dao::DataType::Currency:
        setCurrency(prompts, value, text);
        break;
    case dao::DataType::Single:
        setNumber<float>(value, text);
        break;
    case dao::DataType::Double:
    case dao::DataType::Decimal:
        setNumber<double>(value, text);
        break;
    case dao::DataType::Date:
        setDate(prompts, value, text);
        break;
    case dao::DataType::Text:
        value = dao::Value::fromText(text);
        break;
    default:
        break;
    }
}

JDateTime parseDateTime(tarnwick::UserPrompts &prompts, const QString &text)
{
    if (const auto date = JDateTime::parse(text))
        return *date;
    showOleError(prompts, OleException(OleException::kTypeMismatch), messages::kParseDateTime);
    return {};
}

QString currencyText(const dao::Value &value)
{
    const QLocale locale;
    // Below this amount a double holds every ten-thousandth exactly enough to print all digits.
    constexpr qint64 kExact = 1'000'000'000'000'000;
    const qint64 amount = value.integer();
    if (value.type() != dao::Value::Type::Currency || (amount < kExact && amount > -kExact))
        return locale.toCurrencyString(value.real());
    constexpr qint64 kCents = 100;
    const qint64 cents = amount / kCents + (amount % kCents) / (kCents / 2);
    QString text = locale.toCurrencyString(cents / kCents);
    qsizetype end = text.size();
    while (end > 0 && !text[end - 1].isDigit())
        --end;
    return text.insert(end, locale.decimalPoint() + QString::number(std::abs(cents % kCents)).rightJustified(2, u'0'));
}

std::optional<qint64> parseCurrency(const QString &text)
{
    const QLocale locale;
    QString amount = text.trimmed();
    const bool bracketed = amount.startsWith(u'(') && amount.endsWith(u')');
    if (bracketed)
        amount = amount.sliced(1, amount.size() - 2);
    for (const QString &sign : {locale.currencySymbol(), locale.currencySymbol(QLocale::CurrencyIsoCode), u"$"_s})
        if (!sign.isEmpty())
            amount.remove(sign, Qt::CaseInsensitive);
    amount = amount.trimmed();

    bool ok = false;
    double number = locale.toDouble(amount, &ok);
    if (!ok)
        number = QLocale::c().toDouble(amount, &ok);
    constexpr double kScale = 10000;
    constexpr double kLimit = 9.2e18;
    const double scaled = std::round((bracketed ? -number : number) * kScale);
    if (!ok || !(std::abs(scaled) < kLimit))
        return std::nullopt;
    return qint64(scaled);
}

} // namespace db
