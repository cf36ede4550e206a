#pragma once
#include <dao/Recordset.h>
#include <tarnwick/JDateTime.h>

namespace db {

/// A value read from a field, as a typed result. Null gives 0, false, empty text or the null date; any other value is
/// converted to the target type first, and one that cannot be converted counts as 0. Instances: qint32, qint16, bool
/// (by way of a 16-bit integer), float, double, QString (only a text is taken, nothing is converted), JDateTime (a
/// value that is no date gives JDateTime::invalidDate()).
template <typename T>
T fieldAs(const dao::Value &value);

/// Reads a field of the current row by ordinal or by name.
template <typename T, typename Key>
T getField(const dao::Recordset &recordset, const Key &key)
{
    return fieldAs<T>(recordset.value(key));
}

/// Values for writing. A null date is Null; a date that does not come back the same from its stored form is Empty,
/// which counts as invalid and is stored as Null.
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

/// A text as it goes into that field: an empty text becomes Null where the field does not take zero-length text.
dao::Value textForField(const QString &text, const dao::FieldInfo &field);

/// Sets a field of the row being edited or added, by ordinal or by name. Throws the engine's exceptions.
void setField(dao::Recordset &recordset, int index, const dao::Value &value);
void setField(dao::Recordset &recordset, int index, const QString &text);
template <typename T>
void setField(dao::Recordset &recordset, int index, const T &value)
{
    setField(recordset, index, toValue(value));
}
/// Ordinal of a field by name without regard to case; error 3265 when there is none.
int requireField(const dao::Recordset &recordset, const QString &name);
template <typename T>
void setField(dao::Recordset &recordset, const QString &name, const T &value)
{
    setField(recordset, requireField(recordset, name), value);
}

/// Ordinal of the first field whose name is exactly that (case counts), or -1.
inline int fieldIndex(const dao::Recordset &recordset, QStringView name)
{
    return recordset.fieldIndex(name);
}

/// Everything known of a field, its rule, default, required and zero-length settings included. Error 3265.
const dao::FieldInfo &fieldInfo(const dao::TableInfo &table, QStringView name);
const dao::FieldInfo &fieldInfo(const dao::Recordset &recordset, const QString &name);

} // namespace db
