#pragma once
#include "DataType.h"

#include <optional>
#include <QList>
#include <QString>
#include <QStringList>

namespace dao {

/// The description of a field of a table or of an output column of a query.
struct FieldInfo
{
    QString name;
    DataType type = DataType::Unknown;
    int size = 0; ///< characters for Text, else the bytes of the type; 0 if the type has no size
    int ordinal = 0;
    int attributes = 0;
    bool required = false;
    bool allowZeroLength = false;
    QString defaultValue;
    QString validationRule;
    QString validationText;
    QString sourceTable; ///< base table of a query's field; empty for an expression
    QString sourceField;

    bool isAutoIncrement() const { return attributes & AutoIncrement; }
};

/// A value that a change of the table definition assigns to a field in every row: an Access SQL expression over the old
/// row.
struct FieldFill
{
    QString field;
    QString expression;
};

struct IndexField
{
    QString name;
    bool descending = false;
};

struct IndexInfo
{
    QString name;
    QList<IndexField> fields;
    bool primary = false;
    bool unique = false;
    bool ignoreNulls = false;
    bool required = false;
    bool foreign = false;
};

struct RelationField
{
    QString field;        ///< field of the primary table
    QString foreignField; ///< field of the foreign table
};

struct RelationInfo
{
    QString name;
    QString table;
    QString foreignTable;
    int attributes = 0;
    QList<RelationField> fields;
};

struct TableInfo
{
    QString name;
    int attributes = 0;
    QList<FieldInfo> fields;
    QList<IndexInfo> indexes;
    QString validationRule;
    QString validationText;
    /// SQLite's name of the row key that no field of the table hides.
    QString keyColumn = QStringLiteral("rowid");

    /// The index of a field by name, without regard to case, or -1.
    int indexOf(QStringView fieldName) const;
    const FieldInfo *field(QStringView fieldName) const;
    const IndexInfo *index(QStringView indexName) const;
};

struct QueryInfo
{
    QString name;
    QString sql;
};

/// The schema as the compiler uses it. Names are matched without regard to case. Pointers are valid until the next
/// change of the schema.
class SchemaView
{
public:
    virtual ~SchemaView() = default;
    virtual const TableInfo *findTable(QStringView name) const = 0;
    virtual const QueryInfo *findQuery(QStringView name) const = 0;
    /// Names of all tables and stored queries that users see, for "Did you mean".
    virtual QStringList sourceNames() const = 0;
};

} // namespace dao
