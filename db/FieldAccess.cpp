#include "FieldAccess.h"

#include <charconv>
#include <cmath>
#include <iterator>

namespace db {

using namespace Qt::StringLiterals;
using tarnwick::JDateTime;

namespace {

dao::Value converted(const dao::Value &value, dao::DataType type)
{
    return value.hasNoValue() ? value : dao::convertValue(value, type);
}

[[noreturn]] void noSuchField(QStringView source, QStringView name)
{
    constexpr int kItemNotFound = 3265;
    throw dao::DaoException(kItemNotFound, source.toString(), u"Item not found in this collection: '%1'."_s.arg(name));
}

} // namespace

template <>
qint32 fieldAs<qint32>(const dao::Value &value)
{
    return qint32(converted(value, dao::DataType::Long).integer());
}

template <>
qint16 fieldAs<qint16>(const dao::Value &value)
{
    return qint16(converted(value, dao::DataType::Integer).integer());
}

template <>
bool fieldAs<bool>(const dao::Value &value)
{
    return fieldAs<qint16>(value) != 0;
}

template <>
float fieldAs<float>(const dao::Value &value)
{
    return float(converted(value, dao::DataType::Single).real());
}

template <>
double fieldAs<double>(const dao::Value &value)
{
    return converted(value, dao::DataType::Double).real();
}

double decimalOf(const dao::Value &value)
{
    const double number = fieldAs<double>(value);
    if (value.type() != dao::Value::Type::Float)
        return number;
    // Most measurements have few decimals; the general way through a text takes longer.
    constexpr double kScale = 1e4;
    const double rounded = std::round(number * kScale) / kScale;
    if (float(rounded) == float(number))
        return rounded;
    char shortest[32];
    const auto end = std::to_chars(std::begin(shortest), std::end(shortest), float(number)).ptr;
    double decimal = number;
    std::from_chars(std::begin(shortest), end, decimal);
    return decimal;
}

template <>
QString fieldAs<QString>(const dao::Value &value)
{
    return value.text();
}

template <>
JDateTime fieldAs<JDateTime>(const dao::Value &value)
{
    if (value.hasNoValue())
        return {};
    const dao::Value date = dao::convertValue(value, dao::DataType::Date);
    return date.hasNoValue() ? JDateTime::invalidDate() : JDateTime::fromOleDate(date.real());
}

dao::Value toValue(const JDateTime &value)
{
    if (value.isNull())
        return dao::Value::null();
    const double days = value.toOleDate();
    const std::tm before = value.local();
    const std::tm after = JDateTime::fromOleDate(days).local();
    const bool same = before.tm_year == after.tm_year && before.tm_mon == after.tm_mon &&
                      before.tm_mday == after.tm_mday && before.tm_hour == after.tm_hour &&
                      before.tm_min == after.tm_min && before.tm_sec == after.tm_sec;
    return same ? dao::Value::fromDate(days) : dao::Value();
}

dao::Value textForField(const QString &text, const dao::FieldInfo &field)
{
    return text.isEmpty() && !field.allowZeroLength ? dao::Value::null() : dao::Value::fromText(text);
}

void setField(dao::Recordset &recordset, int index, const dao::Value &value)
{
    recordset.setValue(index, value.isEmpty() ? dao::Value::null() : value);
}

void setField(dao::Recordset &recordset, int index, const QString &text)
{
    recordset.setValue(index, textForField(text, recordset.field(index)));
}

int requireField(const dao::Recordset &recordset, const QString &name)
{
    const int count = recordset.fieldCount();
    for (int i = 0; i < count; ++i)
        if (recordset.field(i).name.compare(name, Qt::CaseInsensitive) == 0)
            return i;
    noSuchField(u"DAO.Recordset", name);
}

const dao::FieldInfo &fieldInfo(const dao::TableInfo &table, QStringView name)
{
    if (const dao::FieldInfo *field = table.field(name))
        return *field;
    noSuchField(u"DAO.TableDef", name);
}

const dao::FieldInfo &fieldInfo(const dao::Recordset &recordset, const QString &name)
{
    return recordset.field(requireField(recordset, name));
}

} // namespace db
