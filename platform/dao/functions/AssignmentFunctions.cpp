#include "Call.h"

#include <cmath>
#include <dao/values/Decimal.h>
#include <dao/values/Errors.h>
#include <dao/values/OleDate.h>
#include <limits>
#include <sqlite3.h>

// Conversions that the compiler inserts: "to_" for a value that is stored in a field, "as_" for a value used where
// another type is needed. Text that cannot be converted is error 3464, a number outside the field's range 3349.

namespace dao::functions {

using namespace Qt::StringLiterals;

namespace {

std::optional<double> textNumber(const Call &call)
{
    const QString text = call.text(0);
    if (const auto number = parseNumber(text))
        return number;
    return parseDate(text);
}

double numberOf(const Call &call)
{
    if (!call.isText(0))
        return call.number(0);
    if (const auto number = parseNumber(call.text(0)))
        return *number;
    throw FunctionFault{error::CriteriaMismatch};
}

double dateOf(const Call &call)
{
    std::optional<double> date;
    if (call.isText(0)) {
        date = parseDate(call.text(0));
        if (!date)
            date = textNumber(call);
    } else {
        date = call.number(0);
    }
    if (!date)
        throw FunctionFault{error::CriteriaMismatch};
    if (!isValidDate(*date))
        throw FunctionFault{error::NumericOverflow};
    return *date;
}

void toBoolean(Call &call)
{
    if (call.isNull(0))
        return call.resultBoolean(false);
    if (call.isText(0)) {
        const QString text = call.text(0).trimmed().toLower();
        if (text == "true"_L1 || text == "yes"_L1 || text == "on"_L1)
            return call.resultBoolean(true);
        if (text == "false"_L1 || text == "no"_L1 || text == "off"_L1)
            return call.resultBoolean(false);
    }
    call.resultBoolean(numberOf(call) != 0);
}

template <int least, int most>
void toWhole(Call &call)
{
    const double rounded = roundHalfEven(numberOf(call));
    if (!(rounded >= least && rounded <= most))
        throw FunctionFault{error::NumericOverflow};
    call.result(qint64(rounded));
}

void toCurrency(Call &call)
{
    constexpr double kMost = 922337203685477.5807; // 64 bits, in ten-thousandths
    const double rounded = roundCurrency(numberOf(call));
    if (!(std::abs(rounded) <= kMost))
        throw FunctionFault{error::NumericOverflow};
    call.result(rounded);
}

void toSingle(Call &call)
{
    const double number = numberOf(call);
    if (!(std::abs(number) <= double(std::numeric_limits<float>::max())))
        throw FunctionFault{error::NumericOverflow};
    call.result(double(float(number)));
}

void toNumber(Call &call)
{
    // Integers stay integers, so that they compare and print as integers.
    if (call.isInteger(0))
        call.resultArgument(0);
    else
        call.result(numberOf(call));
}

void toDouble(Call &call)
{
    call.result(numberOf(call));
}

void toDate(Call &call)
{
    call.result(dateOf(call));
}

void toBinary(Call &call)
{
    call.resultArgument(0);
}

// Sizes count UTF-16 units. A text that is also too long for the CHECK constraint is passed on: the error of the
// constraint names the field.
void toText(Call &call)
{
    const int size = call.integer(1);
    if (call.isText(0) && sqlite3_value_bytes(call.raw(0)) > size) {
        const QString text = call.text(0);
        const qsizetype end = text.indexOf(QChar(u'\0'));
        const qsizetype counted = QStringView(text).first(end < 0 ? text.size() : end).toUcs4().size();
        if (text.size() > size && counted <= size)
            throw FunctionFault{error::FieldTooSmall};
    }
    call.resultArgument(0);
}

void asTruth(Call &call)
{
    if (!call.isText(0))
        return call.resultArgument(0);
    toBoolean(call);
}

void asText(Call &call)
{
    call.result(call.text(0));
}

void asTextDate(Call &call)
{
    call.result(call.isText(0) ? call.text(0) : generalDateText(call.date(0)));
}

void asTextSingle(Call &call)
{
    call.result(call.isText(0) ? call.text(0) : singleText(call.number(0)));
}

constexpr Entry kEntries[] = {
    {"to_boolean", 1, 1, toBoolean, 0},
    {"to_byte", 1, 1, toWhole<0, 255>},
    {"to_integer", 1, 1, toWhole<std::numeric_limits<qint16>::min(), std::numeric_limits<qint16>::max()>},
    {"to_long", 1, 1, toWhole<std::numeric_limits<qint32>::min(), std::numeric_limits<qint32>::max()>},
    {"to_currency", 1, 1, toCurrency},
    {"to_single", 1, 1, toSingle},
    {"to_double", 1, 1, toDouble},
    {"to_date", 1, 1, toDate},
    {"to_binary", 1, 1, toBinary},
    {"to_text", 2, 2, toText, 0},
    {"as_number", 1, 1, toNumber},
    {"as_date", 1, 1, toDate},
    {"as_truth", 1, 1, asTruth},
    {"as_text", 1, 1, asText},
    {"as_text_date", 1, 1, asTextDate},
    {"as_text_single", 1, 1, asTextSingle},
};

} // namespace

std::span<const Entry> assignmentFunctions()
{
    return kEntries;
}

} // namespace dao::functions
