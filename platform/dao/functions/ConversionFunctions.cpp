#include "Call.h"

#include <dao/values/Decimal.h>
#include <dao/values/OleDate.h>
#include <dao/values/Value.h>

#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

namespace dao::functions {
namespace {

/// A number, or a text that reads as one; the error for other texts is the caller's.
double numberOf(const Call &call, int index, int error)
{
    if (call.isNumber(index))
        return call.real(index);
    if (call.isText(index)) {
        const QString text = call.text(index);
        if (const std::optional<double> number = parseNumber(text))
            return *number;
        // The words of a logical value are numbers too.
        const Value truth = convertValue(Value::fromText(text), DataType::Boolean);
        if (!truth.isEmpty())
            return truth.real();
    }
    fail(error);
}

double dateOf(const Call &call, int index, int error)
{
    double date = 0;
    if (call.isText(index)) {
        const QString text = call.text(index);
        const std::optional<double> parsed = parseDate(text);
        const std::optional<double> number = parsed ? parsed : parseNumber(text);
        if (!number)
            fail(error);
        date = *number;
    } else if (call.isNumber(index)) {
        date = call.real(index);
    } else {
        fail(error);
    }
    if (!isValidDate(date))
        fail(error::Overflow);
    return date;
}

template <typename T>
qint64 wholeIn(double number, int error)
{
    const double rounded = roundHalfEven(number);
    if (!(rounded >= double(std::numeric_limits<T>::min()) && rounded <= double(std::numeric_limits<T>::max())))
        fail(error);
    return qint64(rounded);
}

double singleOf(double number, int error)
{
    if (std::fabs(number) > double(std::numeric_limits<float>::max()))
        fail(error);
    return double(float(number));
}

double currencyOf(double number, int error)
{
    constexpr double Limit = 922337203685477.0;
    if (std::fabs(number) > Limit)
        fail(error);
    return roundDecimal(number, 4);
}

void refuseNull(const Call &call)
{
    if (call.isNull(0))
        fail(error::InvalidUseOfNull);
}

// ---- what users call: Null is refused, the errors are those of expressions --------------------------------------

void cbool(const Call &call)
{
    refuseNull(call);
    call.giveBoolean(numberOf(call, 0, error::TypeMismatch) != 0);
}

template <typename T>
void cwhole(const Call &call)
{
    refuseNull(call);
    call.give(wholeIn<T>(numberOf(call, 0, error::TypeMismatch), error::Overflow));
}

void ccur(const Call &call)
{
    refuseNull(call);
    call.give(currencyOf(numberOf(call, 0, error::TypeMismatch), error::Overflow));
}

void csng(const Call &call)
{
    refuseNull(call);
    call.give(singleOf(numberOf(call, 0, error::TypeMismatch), error::Overflow));
}

void cdbl(const Call &call)
{
    refuseNull(call);
    call.give(numberOf(call, 0, error::TypeMismatch));
}

void cdate(const Call &call)
{
    refuseNull(call);
    call.give(dateOf(call, 0, error::TypeMismatch));
}

void cvdate(const Call &call)
{
    call.give(dateOf(call, 0, error::TypeMismatch));
}

void cstr(const Call &call)
{
    if (call.isNull(1))
        fail(error::InvalidUseOfNull);
    if (call.isText(1)) {
        call.pass(1);
        return;
    }
    switch (DataType(call.whole(0))) {
    case DataType::Date:
        call.give(generalDateText(call.real(1)));
        break;
    case DataType::Single:
        call.give(singleText(call.real(1)));
        break;
    case DataType::Boolean:
        call.give(call.real(1) != 0 ? u"True"_s : u"False"_s);
        break;
    default:
        call.give(numberText(call.real(1)));
        break;
    }
}

void cvar(const Call &call)
{
    call.pass(0);
}

// Blanks count nowhere; the first character that cannot belong to a number ends it.
void val(const Call &call)
{
    QByteArray digits;
    for (const QChar c : call.text(0)) {
        if (c == u' ' || c == u'\t' || c == u'\n' || c == u'\r')
            continue;
        digits += c.unicode() < 0x80 ? char(c.unicode()) : '?';
    }
    if (digits.startsWith("&H") || digits.startsWith("&h") || digits.startsWith("&O") || digits.startsWith("&o")) {
        const bool hex = digits[1] == 'H' || digits[1] == 'h';
        qsizetype end = 2;
        while (end < digits.size() &&
               (hex ? std::isxdigit(uchar(digits[end])) != 0 : digits[end] >= '0' && digits[end] <= '7'))
            ++end;
        const quint64 value = digits.sliced(2, std::min<qsizetype>(end - 2, 11)).toULongLong(nullptr, hex ? 16 : 8);
        call.give(value <= 0xFFFF ? double(qint16(value)) : double(qint32(quint32(value))));
        return;
    }
    qsizetype end = 0;
    bool point = false;
    const auto digitAt = [&digits](qsizetype i) { return i < digits.size() && digits[i] >= '0' && digits[i] <= '9'; };
    if (end < digits.size() && (digits[end] == '-' || digits[end] == '+'))
        ++end;
    while (digitAt(end) || (!point && end < digits.size() && digits[end] == '.'))
        point = digits[end++] == '.' || point;
    if (end < digits.size() && (digits[end] == 'e' || digits[end] == 'E')) {
        const qsizetype sign = end + 1 < digits.size() && (digits[end + 1] == '-' || digits[end + 1] == '+') ? 2 : 1;
        if (digitAt(end + sign)) {
            end += sign;
            while (digitAt(end))
                ++end;
        }
    }
    call.give(digits.first(end).toDouble());
}

void str(const Call &call)
{
    const QString text = numberText(call.real(0));
    call.give(text.startsWith(u'-') ? text : u' ' + text);
}

template <int Radix>
void radixText(const Call &call)
{
    call.give(QString::number(quint32(call.whole(0)), Radix).toUpper());
}

// ---- what the generator inserts: Null stays Null, a misfit is a mismatch ----------------------------------------

void asText(const Call &call)
{
    call.give(call.text(0));
}

void asTextSingle(const Call &call)
{
    call.give(call.isText(0) ? call.text(0) : singleText(call.real(0)));
}

void asTextDate(const Call &call)
{
    call.give(call.isText(0) ? call.text(0) : generalDateText(call.real(0)));
}

void asNumber(const Call &call)
{
    if (call.isNumber(0))
        call.pass(0);
    else
        call.give(numberOf(call, 0, error::CriteriaMismatch));
}

void asDate(const Call &call)
{
    call.give(dateOf(call, 0, error::CriteriaMismatch));
}

void asTruth(const Call &call)
{
    call.giveBoolean(numberOf(call, 0, error::CriteriaMismatch) != 0);
}

// ---- assignments to fields --------------------------------------------------------------------------------------

void toBoolean(const Call &call)
{
    call.giveBoolean(!call.isNull(0) && numberOf(call, 0, error::CriteriaMismatch) != 0);
}

template <typename T>
void toWhole(const Call &call)
{
    call.give(wholeIn<T>(numberOf(call, 0, error::CriteriaMismatch), error::NumericOverflow));
}

void toCurrency(const Call &call)
{
    call.give(currencyOf(numberOf(call, 0, error::CriteriaMismatch), error::NumericOverflow));
}

void toSingle(const Call &call)
{
    call.give(singleOf(numberOf(call, 0, error::CriteriaMismatch), error::NumericOverflow));
}

void toDouble(const Call &call)
{
    call.give(numberOf(call, 0, error::CriteriaMismatch));
}

void toBinary(const Call &call)
{
    if (call.isNumber(0) || call.isText(0))
        fail(error::CriteriaMismatch);
    call.pass(0);
}

void notNull(const Call &call)
{
    refuseNull(call);
    call.pass(0);
}

constexpr Entry entries[] = {
    {"cbool", 1, cbool, Entry::NullIn},
    {"cbyte", 1, cwhole<quint8>, Entry::NullIn},
    {"cint", 1, cwhole<qint16>, Entry::NullIn},
    {"clng", 1, cwhole<qint32>, Entry::NullIn},
    {"ccur", 1, ccur, Entry::NullIn},
    {"csng", 1, csng, Entry::NullIn},
    {"cdbl", 1, cdbl, Entry::NullIn},
    {"cdec", 1, cdbl, Entry::NullIn},
    {"cdate", 1, cdate, Entry::NullIn},
    {"cvdate", 1, cvdate},
    {"cstr", 2, cstr, Entry::NullIn},
    {"cvar", 1, cvar},
    {"val", 1, val},
    {"str", 1, str},
    {"hex", 1, radixText<16>},
    {"oct", 1, radixText<8>},
    {"as_text", 1, asText},
    {"as_text_single", 1, asTextSingle},
    {"as_text_date", 1, asTextDate},
    {"as_number", 1, asNumber},
    {"as_date", 1, asDate},
    {"as_truth", 1, asTruth},
    {"to_boolean", 1, toBoolean, Entry::NullIn},
    {"to_byte", 1, toWhole<quint8>},
    {"to_integer", 1, toWhole<qint16>},
    {"to_long", 1, toWhole<qint32>},
    {"to_currency", 1, toCurrency},
    {"to_single", 1, toSingle},
    {"to_double", 1, toDouble},
    {"to_date", 1, asDate},
    {"to_binary", 1, toBinary},
    {"not_null", 1, notNull, Entry::NullIn},
};

} // namespace

std::span<const Entry> conversionEntries()
{
    return entries;
}

} // namespace dao::functions
