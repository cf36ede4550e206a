#pragma once
#include <dao/Recordset.h>
#include <tarnwick/JDateTime.h>

namespace db {

/// Reads a value as a C++ type. Null gives 0, false, empty text or the null date. Other values are converted to the
/// target type first; a value that cannot be converted gives 0. Instances: qint32, qint16, bool (converted through a
/// 16-bit integer), float, double, QString (only text values, without conversion), JDateTime (a value that is not a
/// date gives JDateTime::invalidDate()).
template <typename T>
T fieldAs(const dao::Value &value);

/// The decimal number that a value of single precision was meant to be: 0.7, not 0.69999998. So it is shown as it was
/// stored, and passes a threshold that looks equal. Other values as with fieldAs<double>().
double decimalOf(const dao::Value &value);

/// Reads a field of the current row by ordinal or by name.
template <typename T, typename Key>
T getField(const dao::Recordset &recordset, const Key &key)
{
    return fieldAs<T>(recordset.value(key));
}

/// Converts to a value for writing. A null date becomes Null. A date that changes when stored and read back becomes
/// Empty, which means invalid and is stored as Null.
dao::Value toValue(const tarnwick::JDateTime &value);
inline dao::Value toValue(qint16 value)
{
    return dao::Value::fromShort(value);
}
inline dao::Value toValue(qint32 value)
{
    return dao::Value::fromLong(value);
}
inline dao::Value toValue(float value)
{
    return dao::Value::fromFloat(value);
}
inline dao::Value toValue(double value)
{
    return dao::Value::fromDouble(value);
}
inline dao::Value toValue(bool value)
{
    return dao::Value::fromBoolean(value);
}
inline dao::Value toValue(const QString &value)
{
    return dao::Value::fromText(value);
}

/// Converts a text for this field: an empty text becomes Null if the field does not allow zero-length text.
dao::Value textForField(const QString &text, const dao::FieldInfo &field);

/// Sets a field of the row that is being edited or added, by ordinal or by name. Throws the engine's exceptions.
void setField(dao::Recordset &recordset, int index, const dao::Value &value);
void setField(dao::Recordset &recordset, int index, const QString &text);
template <typename T>
void setField(dao::Recordset &recordset, int index, const T &value)
{
    setField(recordset, index, toValue(value));
}
/// Ordinal of a field by name, ignoring case. Throws error 3265 if there is none.
int requireField(const dao::Recordset &recordset, const QString &name);
template <typename T>
void setField(dao::Recordset &recordset, const QString &name, const T &value)
{
    setField(recordset, requireField(recordset, name), value);
}

/// Ordinal of the first field with exactly this name (case-sensitive), or -1.
inline int fieldIndex(const dao::Recordset &recordset, QStringView name)
{
    return recordset.fieldIndex(name);
}

/// Full definition of a field, including rule, default, required and zero-length settings. Throws error 3265.
const dao::FieldInfo &fieldInfo(const dao::TableInfo &table, QStringView name);
const dao::FieldInfo &fieldInfo(const dao::Recordset &recordset, const QString &name);

} // namespace db
