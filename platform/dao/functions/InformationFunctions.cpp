#include "Call.h"

#include <dao/values/DataType.h>
#include <dao/values/Decimal.h>
#include <dao/values/OleDate.h>
#include <dao/values/Value.h>

using namespace Qt::StringLiterals;

namespace dao::functions {
namespace {

// The first argument of each is the type that the compiler knows of the value (0: none).

DataType typeOf(const Call &call)
{
    const auto known = DataType(call.whole(0));
    if (known != DataType::Unknown)
        return known;
    return call.isText(1) ? DataType::Text : call.isInteger(1) ? DataType::Long : DataType::Double;
}

void isNumeric(const Call &call)
{
    if (call.isNull(1) || typeOf(call) == DataType::Date)
        call.giveBoolean(false);
    else
        call.giveBoolean(call.isNumber(1) || (call.isText(1) && parseNumber(call.text(1)).has_value()));
}

void isDate(const Call &call)
{
    if (call.isNull(1))
        call.giveBoolean(false);
    else
        call.giveBoolean(typeOf(call) == DataType::Date || (call.isText(1) && parseDate(call.text(1)).has_value()));
}

void never(const Call &call)
{
    call.giveBoolean(false);
}

void varType(const Call &call)
{
    call.give(call.isNull(1) ? int(Value::Type::Null) : int(valueTypeOf(typeOf(call))));
}

void typeName(const Call &call)
{
    if (call.isNull(1)) {
        call.give(u"Null"_s);
        return;
    }
    switch (typeOf(call)) {
    case DataType::Boolean:
        call.give(u"Boolean"_s);
        break;
    case DataType::Byte:
        call.give(u"Byte"_s);
        break;
    case DataType::Integer:
        call.give(u"Integer"_s);
        break;
    case DataType::Long:
        call.give(u"Long"_s);
        break;
    case DataType::Currency:
        call.give(u"Currency"_s);
        break;
    case DataType::Single:
        call.give(u"Single"_s);
        break;
    case DataType::Date:
        call.give(u"Date"_s);
        break;
    case DataType::Text:
    case DataType::Memo:
    case DataType::Guid:
        call.give(u"String"_s);
        break;
    case DataType::Binary:
    case DataType::LongBinary:
        call.give(u"Byte()"_s);
        break;
    default:
        call.give(u"Double"_s);
        break;
    }
}

constexpr Entry entries[] = {
    {"isnumeric", 2, isNumeric, Entry::NullIn}, {"isdate", 2, isDate, Entry::NullIn},
    {"isempty", 2, never, Entry::NullIn},       {"iserror", 2, never, Entry::NullIn},
    {"isobject", 2, never, Entry::NullIn},      {"vartype", 2, varType, Entry::NullIn},
    {"typename", 2, typeName, Entry::NullIn},
};

} // namespace

std::span<const Entry> informationEntries()
{
    return entries;
}

} // namespace dao::functions
