#pragma once
#include "Expr.h"

#include <optional>

namespace dao::sql::ast {

/// A name and its place in the text.
struct NameAt
{
    QString name;
    Range range;
};

// ---- queries ----------------------------------------------------------------------------------------------------

struct SelectItem
{
    ExprPtr expr;          ///< null for a star
    QString alias;         ///< empty when there is none
    QString starQualifier; ///< t of "t.*"
    Range range;
    bool isStar() const { return !expr; }
};

struct OrderItem
{
    ExprPtr expr;
    bool descending = false;
};

enum class JoinKind { Inner, Left, Right };

struct TableRef;
using TableRefPtr = std::unique_ptr<TableRef>;

struct NamedTable
{
    QString name;
};
struct DerivedTable
{
    QueryPtr query;
};
struct Join
{
    JoinKind kind;
    TableRefPtr left;
    TableRefPtr right;
    ExprPtr on;
};

struct TableRef
{
    Range range;
    int depth = 1; ///< depth of the joins and queries in it
    QString alias; ///< empty when there is none
    std::variant<NamedTable, DerivedTable, Join> node;
};

struct Top
{
    double count = 0;
    bool percent = false;
};

enum class Duplicates { Keep, Distinct, DistinctRow };

struct Select
{
    Range range;
    Duplicates duplicates = Duplicates::Keep;
    std::optional<Top> top;
    std::vector<SelectItem> items;
    std::optional<NameAt> into;
    std::vector<TableRefPtr> from;
    ExprPtr where;
    std::vector<ExprPtr> groupBy;
    ExprPtr having;
    std::vector<OrderItem> orderBy;
};

/// One part of a union: a select, a query in parentheses, or TABLE name.
struct QueryPart
{
    std::unique_ptr<Select> select;
    QueryPtr nested;
    std::optional<NameAt> table;
    bool all = false; ///< combined with the previous part by UNION ALL
};

struct Query
{
    Range range;
    int depth = 1; ///< depth of all expressions, joins and queries in it
    std::vector<QueryPart> parts;
    std::vector<OrderItem> orderBy; ///< for a union; a single select has its own

    bool isUnion() const { return parts.size() > 1; }
    const Select *singleSelect() const { return isUnion() ? nullptr : parts.front().select.get(); }
};

struct Transform
{
    ExprPtr value;
    QString valueAlias;
    Select select;
    ExprPtr pivot;
    std::vector<ExprPtr> headings;
};

// ---- statements that change rows --------------------------------------------------------------------------------

struct Insert
{
    NameAt table;
    std::vector<NameAt> columns; ///< empty: no list
    std::vector<ExprPtr> values;
    QueryPtr query; ///< null: VALUES
};

struct Assignment
{
    ExprPtr target; ///< always a Name
    ExprPtr value;
};

struct Update
{
    std::vector<TableRefPtr> from;
    std::vector<Assignment> assignments;
    ExprPtr where;
};

struct Delete
{
    std::vector<SelectItem> items; ///< the list between DELETE and FROM
    std::vector<TableRefPtr> from;
    ExprPtr where;
};

// ---- definitions ------------------------------------------------------------------------------------------------

struct Constraint
{
    enum class Kind { PrimaryKey, Unique, NotNull, ForeignKey, Check };
    Kind kind = Kind::Unique;
    QString name;
    std::vector<NameAt> fields;
    NameAt referencedTable;
    std::vector<NameAt> referencedFields;
    bool cascadeUpdate = false;
    bool cascadeDelete = false;
    QString check;
    Range checkRange; ///< place of its condition
    Range range;
};

struct FieldDefinition
{
    NameAt name;
    TypeName type;
    int size = 0;
    std::optional<bool> notNull; ///< NOT NULL or NULL, when written
    QString defaultValue;
    Range defaultRange;
    std::vector<Constraint> constraints;
};

struct CreateTable
{
    NameAt table;
    std::vector<FieldDefinition> fields;
    std::vector<Constraint> constraints;
};

struct AlterTable
{
    struct AddField
    {
        FieldDefinition field;
    };
    struct AlterField
    {
        FieldDefinition field;
    };
    struct DropField
    {
        NameAt field;
    };
    struct DropConstraint
    {
        NameAt constraint;
    };

    NameAt table;
    std::variant<AddField, AlterField, DropField, Constraint, DropConstraint> change;
};

struct CreateIndex
{
    NameAt index;
    NameAt table;
    struct Field
    {
        NameAt name;
        bool descending = false;
    };
    std::vector<Field> fields;
    bool unique = false;
    bool primary = false;
    bool disallowNull = false;
    bool ignoreNull = false;
};

struct DropTable
{
    NameAt table;
};
struct DropIndex
{
    NameAt index;
    NameAt table;
};
/// CREATE VIEW or CREATE PROCEDURE: stores a query.
struct CreateQuery
{
    NameAt query;
    QString sql; ///< its text
};
struct DropQuery
{
    NameAt query;
};

struct Execute
{
    NameAt query;
    std::vector<ExprPtr> arguments;
};

struct ParameterDeclaration
{
    NameAt name;
    DataType type = DataType::Text;
    bool variant = false; ///< declared with type VALUE
};

struct Statement
{
    std::shared_ptr<ExprMemory> memory; ///< of all expressions below
    std::vector<ParameterDeclaration> parameters;
    std::variant<QueryPtr, Transform, Insert, Update, Delete, CreateTable, AlterTable, CreateIndex, DropTable,
                 DropIndex, CreateQuery, DropQuery, Execute>
        node;
};

} // namespace dao::sql::ast
