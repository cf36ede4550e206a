#include "ValueText.h"

#include <dao/values/Decimal.h>
#include <dao/values/OleDate.h>

namespace dao::functions {

using namespace Qt::StringLiterals;

DataType typeArgument(const Call &call, int index)
{
    return call.isInteger(index) ? DataType(call.wholeNumber(index)) : DataType::Unknown;
}

QString numberTextOf(double number, DataType type)
{
    return type == DataType::Single ? singleText(number) : numberText(number);
}

QString textOf(const Call &call, int typeIndex, int valueIndex)
{
    if (call.isNull(valueIndex) || call.isText(valueIndex))
        return call.text(valueIndex);
    switch (typeArgument(call, typeIndex)) {
    case DataType::Boolean:
        return call.condition(valueIndex) ? u"True"_s : u"False"_s;
    case DataType::Date:
        return generalDateText(call.date(valueIndex));
    case DataType::Single:
        return numberTextOf(call.number(valueIndex), DataType::Single);
    default:
        return call.text(valueIndex);
    }
}

QString upperCaseOf(QString text)
{
    for (QChar &c : text)
        c = c.toUpper();
    return text;
}

QString lowerCaseOf(QString text)
{
    for (QChar &c : text)
        c = c.toLower();
    return text;
}

} // namespace dao::functions
