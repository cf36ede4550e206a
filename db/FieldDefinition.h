#pragma once
#include <dao/values/Schema.h>
#include <QStringList>
#include <QStringView>

namespace db {

/// The display name of a field type by its DAO number ("Integer", "Text", ...); empty for 9 and any other number.
QString daoTypeName(int type);
inline QString daoTypeName(dao::DataType type)
{
    return daoTypeName(int(type));
}

/// Bits of an index's flag word.
enum IndexFlag : int { PrimaryIndex = 1, UniqueIndex = 2, IgnoreNulls = 4, RequiredIndex = 8, ForeignIndex = 16 };

/// Appends a field to a table definition. Text keeps the size, every other type gets 0. flags holds three letters, each
/// in its place or "-": "R" required, "Z" zero-length text allowed (Text and Memo only), "A" autonumber.
void createField(dao::TableInfo &table, const QString &name, dao::DataType type, int size, const QString &defaultValue,
                 const QString &validationRule, QStringView flags);

/// Field definition as the conversion of older databases adds it: required exactly if it has a default (null: none);
/// Text of size 0 becomes Text 255; no validation rule.
dao::FieldInfo convertedField(const QString &name, dao::DataType type, const QString &defaultValue = {},
                              int attributes = 0, int size = 0, bool allowZeroLength = false);
/// Appends convertedField() to a table definition.
void addField(dao::TableInfo &table, const QString &name, dao::DataType type, const QString &defaultValue = {},
              int attributes = 0, int size = 0, bool allowZeroLength = false);

/// Index over the named fields in this order, all ascending. flags holds bits of IndexFlag. The list ends at its first
/// empty name and may be empty.
dao::IndexInfo newIndex(const QString &name, int flags, const QStringList &fields);
void createIndex(dao::TableInfo &table, const QString &name, int flags, const QStringList &fields);

} // namespace db
