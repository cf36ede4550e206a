#pragma once
#include <dao/values/DaoException.h>
#include <dao/values/Schema.h>

#include <functional>
#include <QList>
#include <QString>
#include <variant>

namespace dao::sql {

/// A parameter of a statement: declared in PARAMETERS, or a name that resolved to nothing.
struct Parameter
{
    QString name;                   ///< without brackets
    DataType type = DataType::Text; ///< declared, or that of what it is compared with or assigned to; else Text
    bool declared = false;
    SourceRange where;     ///< its first appearance
    QString suggestion;    ///< a column that is probably meant, when the name looks like a slip; else empty
    bool bareText = false; ///< a word without brackets in the place of a text: quotes may have been forgotten
};

/// Why rows of a result cannot be updated. Each has a text for the user (notUpdatableText).
enum class NotUpdatable {
    No, ///< it can
    Distinct,
    Grouped,
    Aggregate,
    Union,
    Crosstab,
    CommaJoin,
    NoTable,
    SubqueryColumn,
    NestedQuery, ///< a source that is itself not updatable
    ReadOnlyDatabase,
    ManyToMany ///< a join over fields that are unique on neither side
};
QString notUpdatableText(NotUpdatable reason);

/// An output column.
struct Column
{
    FieldInfo info;  ///< name, type, size; sourceTable and sourceField when it is a plain field; its rule, default, ...
    int source = -1; ///< index into SelectPlan::sources of the table the field is read from; -1 for an expression
    bool updatable = false;
};

/// A base table whose rows make up a result row.
struct KeySource
{
    QString table;          ///< table name
    QString alias;          ///< as the user calls it
    bool nullable = false;  ///< on the null-supplied side of an outer join: its key may be Null
    bool deletable = false; ///< deleting the result row deletes this table's row
};

/// A cross table whose columns only its data can tell. Run valuesSql first (parameters as everywhere): each row is the
/// name of a column and its value as inner SQL; then withHeadings() (Compiler.h) completes the plan.
struct CrosstabPlan
{
    QString valuesSql;
    QString names;      ///< of the row heads; goes before the head, and takes names of the cells; empty: not needed
    QString head;       ///< the SELECT with its row heads
    QStringList cell;   ///< the text of one cell, to be joined by the heading's value
    QString tail;       ///< FROM and the rest
    FieldInfo cellInfo; ///< what all cells have in common; their names are the headings
    bool valuesNeedParameters = false;
};

inline constexpr qsizetype maxCrosstabColumns = 255;

/// A heading of a cross table: a row of CrosstabPlan::valuesSql.
struct CrosstabHeading
{
    QString name;
    QString valueSql;
};

/// Runs the valuesSql of a cross table that needs no parameters, and returns its rows.
using HeadingReader = std::function<QList<CrosstabHeading>(const CrosstabPlan &)>;

/// A row-returning statement. In every SQL text (also in the steps of an ActionPlan) the parameters are bound as ?1..?n
/// in the order of CompiledStatement::parameters, and the row's keys, where there are any, as ?n+1..?n+k in the order
/// of sources. A text need not use all of them.
struct SelectPlan
{
    QList<Column> columns;
    /// The select list, all rows, one pass.
    QString fullSql;
    /// True when a row can be found again by the keys of its sources; else it must be materialised.
    bool keyed = false;
    QList<KeySource> sources;
    /// Only the keys of the sources (one integer column each), all rows, in the asked order, else in the table's own.
    QString keySql;
    /// The select list of the one row with the given keys.
    QString rowSql;
    /// For rows that are added to an updatable join, else empty. The keys of the join's rows (one or none) in which the
    /// deletable source has the key ?n+1.
    QString addedKeySql;
    /// Likewise: as rowSql, but any of the keys may be Null, as the join need not return the row.
    QString addedRowSql;
    NotUpdatable whyNot = NotUpdatable::No;
    /// Set: the plan has only the row heads as columns and no SQL yet.
    std::optional<CrosstabPlan> crosstab;
    bool updatable() const { return whyNot == NotUpdatable::No; }
};

/// A statement that changes rows: steps of inner SQL run in order inside one savepoint.
struct ActionPlan
{
    struct Step
    {
        QString sql;
        bool countsRows = false; ///< the rows it changes are those reported as affected
        /// Not empty: sql is a select, whose rows go into a new temporary table of this name.
        QString gathersInto;
        /// The first column of what is gathered is a row key: rows without one are left out, of several with the same
        /// the last one stays.
        bool keyed = false;
        /// Set: sql is a select, and a row of it ends the statement with this.
        std::optional<DaoException> refusal = std::nullopt;
    };
    QList<Step> steps;
    /// The same for when the statement must not be interrupted but may have to stop all the same: reading, which can be
    /// interrupted, is done by selects, and what is written asks dao_cancelled() row by row. Empty for a statement that
    /// cannot take long.
    QList<Step> askingSteps;
    QStringList tables; ///< those changed
};

/// SELECT ... INTO: the new table with the types of the select list, then filled from the select.
struct SelectIntoPlan
{
    TableInfo table;
    SelectPlan select;
};

// Definitions: what to do, carried out by the catalog.
struct NamedCheck
{
    QString name; ///< may be empty
    QString condition;
};
struct CreateTablePlan
{
    TableInfo table;
    QList<RelationInfo> relations;
    QList<NamedCheck> checks; ///< besides the table's own rule
};
struct AddFieldPlan
{
    QString table;
    FieldInfo field;
    QList<IndexInfo> indexes;
    QList<RelationInfo> relations;
    QList<NamedCheck> checks;
};
struct AlterFieldPlan
{
    QString table;
    FieldInfo field;
};
struct DropFieldPlan
{
    QString table;
    QString field;
};
struct AddConstraintPlan
{
    QString table;
    QList<IndexInfo> indexes;
    QList<RelationInfo> relations;
    NamedCheck check; ///< no text: none
};
struct DropConstraintPlan
{
    QString table;
    QString name;
    SourceRange where; ///< of the name in the text
};
struct DropTablePlan
{
    QString name;
}; ///< a table or stored query of that name
struct CreateIndexPlan
{
    QString table;
    IndexInfo index;
};
struct DropIndexPlan
{
    QString table;
    QString index;
};
struct CreateQueryPlan
{
    QueryInfo query;
};
struct DropQueryPlan
{
    QString name;
};
/// EXECUTE of a stored query; the arguments' inner SQL expressions go to its parameters in order.
struct ExecutePlan
{
    QString query;
    QStringList arguments;
};

using Plan = std::variant<SelectPlan, ActionPlan, SelectIntoPlan, CreateTablePlan, AddFieldPlan, AlterFieldPlan,
                          DropFieldPlan, AddConstraintPlan, DropConstraintPlan, DropTablePlan, CreateIndexPlan,
                          DropIndexPlan, CreateQueryPlan, DropQueryPlan, ExecutePlan>;

struct CompiledStatement
{
    QList<Parameter> parameters; ///< declared ones first, then the others in order of appearance
    Plan plan;
    /// It reads a cross table whose columns are those that the data gave while it was compiled: compile it again before
    /// each run.
    bool dependsOnData = false;

    bool returnsRows() const { return std::holds_alternative<SelectPlan>(plan); }
};

} // namespace dao::sql
