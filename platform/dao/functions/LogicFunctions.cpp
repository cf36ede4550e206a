#include "Call.h"
#include "ValueText.h"

#include <dao/values/Decimal.h>
#include <dao/values/Errors.h>
#include <dao/values/OleDate.h>
#include <dao/values/Value.h>

namespace dao::functions {

using namespace Qt::StringLiterals;

namespace {

// Arguments of all: (type, value).

void isNumeric(Call &call)
{
    if (call.isNull(1) || typeArgument(call, 0) == DataType::Date)
        return call.resultBoolean(false);
    call.resultBoolean(!call.isText(1) || parseNumber(call.text(1)).has_value());
}

void isDate(Call &call)
{
    if (call.isNull(1))
        return call.resultBoolean(false);
    call.resultBoolean(call.isText(1) ? parseDate(call.text(1)).has_value() : typeArgument(call, 0) == DataType::Date);
}

void never(Call &call)
{
    call.resultBoolean(false);
}

Value::Type kindOf(const Call &call)
{
    if (call.isNull(1))
        return Value::Type::Null;
    if (call.isText(1))
        return Value::Type::Text;
    const DataType type = typeArgument(call, 0);
    if (type != DataType::Unknown && !isTextType(type))
        return valueTypeOf(type);
    return call.isInteger(1) ? Value::Type::Long : Value::Type::Double;
}

void kind(Call &call)
{
    call.result(int(kindOf(call)));
}

void kindName(Call &call)
{
    switch (kindOf(call)) {
    case Value::Type::Null:
        return call.result(u"Null"_s);
    case Value::Type::Short:
        return call.result(u"Integer"_s);
    case Value::Type::Long:
        return call.result(u"Long"_s);
    case Value::Type::Float:
        return call.result(u"Single"_s);
    case Value::Type::Currency:
        return call.result(u"Currency"_s);
    case Value::Type::Date:
        return call.result(u"Date"_s);
    case Value::Type::Text:
        return call.result(u"String"_s);
    case Value::Type::Boolean:
        return call.result(u"Boolean"_s);
    case Value::Type::Byte:
        return call.result(u"Byte"_s);
    case Value::Type::Binary:
        return call.result(u"Byte()"_s);
    case Value::Type::Error:
        return call.result(u"Error"_s);
    case Value::Type::Empty:
        return call.result(u"Empty"_s);
    case Value::Type::Double:
        break;
    }
    call.result(u"Double"_s);
}

// Partition. Arguments: (number, start, stop, interval). Returns the range that contains the number as "10: 19", padded
// so that ranges sort as text.
void partition(Call &call)
{
    const int number = call.integer(0);
    const int start = call.integer(1);
    const int stop = call.integer(2);
    const int interval = call.integer(3);
    if (start < 0 || stop <= start || interval < 1)
        throw FunctionFault{error::InvalidProcedureCall};
    // Both bounds are padded to the width of the longest one, so that the ranges sort as text.
    const qsizetype width =
        std::max(QString::number(qint64(start) - 1).size(), QString::number(qint64(stop) + 1).size());
    QString lower;
    QString upper;
    if (number < start) {
        upper = QString::number(qint64(start) - 1);
    } else if (number > stop) {
        lower = QString::number(qint64(stop) + 1);
    } else {
        const qint64 first = start + (qint64(number) - start) / interval * interval;
        lower = QString::number(first);
        upper = QString::number(std::min<qint64>(first + interval - 1, stop));
    }
    call.result(QString(lower.rightJustified(width) + u':' + upper.rightJustified(width)));
}

constexpr Entry kEntries[] = {
    {"isnumeric", 2, 2, isNumeric, 0}, {"isdate", 2, 2, isDate, 0},    {"isempty", 2, 2, never, 0},
    {"iserror", 2, 2, never, 0},       {"isobject", 2, 2, never, 0},   {"vartype", 2, 2, kind, 0},
    {"typename", 2, 2, kindName, 0},   {"partition", 4, 4, partition},
};

} // namespace

std::span<const Entry> logicFunctions()
{
    return kEntries;
}

} // namespace dao::functions
