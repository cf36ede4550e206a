#pragma once
#include <dao/values/DaoException.h>
#include <dao/values/Schema.h>

#include <functional>
#include <QList>
#include <QString>
#include <variant>

namespace dao::sql {

/// A parameter of a statement: declared in PARAMETERS, or a name that is no field, alias or source.
struct Parameter
{
    QString name;                   ///< without brackets
    DataType type = DataType::Text; ///< the declared type, else that of the operand it is compared with or the field it
                                    ///< is assigned to, else Text
    bool declared = false;
    SourceRange where;     ///< its first occurrence
    QString suggestion;    ///< a column with a similar name, if the parameter is probably a typing error; else empty
    bool bareText = false; ///< a word without brackets where a text is expected: quotes may be missing
};

/// The reason why rows of a result cannot be updated. notUpdatableText() gives the text for the user.
enum class NotUpdatable {
    No, ///< updatable
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
    FieldInfo info;  ///< name, type, size; for a plain field also sourceTable, sourceField, rule, default, ...
    int source = -1; ///< index into SelectPlan::sources of the table that contains the field; -1 for an expression
    bool updatable = false;
};

/// A base table that contributes a row to each result row.
struct KeySource
{
    QString table;          ///< table name
    QString alias;          ///< its name in the statement
    bool nullable = false;  ///< on the null-supplied side of an outer join: its key may be Null
    bool deletable = false; ///< deleting a result row deletes the row of this table
};

/// A cross table whose columns depend on its data. Run valuesSql first (with the parameters): each row is the name of a
/// column and its value as SQLite SQL. withHeadings() then completes the plan.
struct CrosstabPlan
{
    QString valuesSql;
    QString names;      ///< WITH clause that names the row headings; precedes head; empty if not needed
    QString head;       ///< SELECT with the row headings
    QStringList cell;   ///< the text of one cell, split where the heading's value is inserted
    QString tail;       ///< FROM clause to the end of the statement
    FieldInfo cellInfo; ///< type and size of all cells; the headings are their names
    bool valuesNeedParameters = false;
};

inline constexpr qsizetype kMaxCrosstabColumns = 255;

/// A heading of a cross table: a row of CrosstabPlan::valuesSql.
struct CrosstabHeading
{
    QString name;
    QString valueSql;
};

/// Runs valuesSql of a cross table, whose parameters are bound in the given order, and returns its rows. Nothing if a
/// parameter that it needs has no value.
using HeadingReader =
    std::function<std::optional<QList<CrosstabHeading>>(const CrosstabPlan &, const QList<Parameter> &)>;

/// A statement that returns rows. In every SQL text (also in the steps of an ActionPlan) the parameters are bound as
/// ?1..?n in the order of CompiledStatement::parameters, and the keys of the row, if used, as ?n+1..?n+k in the order
/// of sources. A text need not use all of them.
struct SelectPlan
{
    QList<Column> columns;
    /// Returns the select list for all rows.
    QString fullSql;
    /// True if a row can be found again by the keys of its sources; otherwise the result must be materialised.
    bool keyed = false;
    QList<KeySource> sources;
    /// Returns only the keys of the sources (one integer column each) for all rows, in the requested order, else in
    /// table order.
    QString keySql;
    /// Set if an index gives the requested order only in part: reads and sorts the whole table, so that all keys are
    /// found in about half the time, but none of them soon. Else empty.
    QString sortedKeySql;
    /// Returns the select list of the row with the given keys.
    QString rowSql;
    /// For rows added to an updatable join, else empty: returns the keys of the join's rows (one or none) in which the
    /// deletable source has the key ?n+1.
    QString addedKeySql;
    /// For rows added to an updatable join, else empty: like rowSql, but each key can be Null, because the join need
    /// not return the row.
    QString addedRowSql;
    NotUpdatable whyNot = NotUpdatable::No;
    /// If set, the plan has only the row headings as columns and no SQL yet.
    std::optional<CrosstabPlan> crosstab;
    bool updatable() const { return whyNot == NotUpdatable::No; }
};

/// Completes the plan of a cross table with its column headings. Error 3205 if there are too many.
SelectPlan withHeadings(const SelectPlan &plan, const QList<CrosstabHeading> &headings);

/// A statement that changes rows: steps of SQLite SQL that run in order inside one savepoint.
struct ActionPlan
{
    struct Step
    {
        QString sql;
        bool countsRows = false; ///< the number of affected rows is that of this step
        /// Not empty: sql is a select, whose rows go into a new temporary table of this name.
        QString materialiseInto;
        /// The first column of the select is a row key: rows without a key are skipped; of several rows with the same
        /// key the last one is kept.
        bool keyed = false;
        /// If set, sql is a select that checks the change: if it returns a row, the statement ends with this error.
        std::optional<DaoException> refusal = std::nullopt;
    };
    QList<Step> steps;
    /// The steps for a statement that must not be interrupted but must be cancellable: rows are read by separate
    /// selects, which can be interrupted, and writing steps call dao_cancelled() for each row. Empty if the statement
    /// cannot take long.
    QList<Step> cancellableSteps;
    QStringList tables; ///< the changed tables
};

/// SELECT ... INTO: creates a table with the types of the select list and fills it from the select.
struct SelectIntoPlan
{
    TableInfo table;
    SelectPlan select;
};

// Changes of definitions, which the catalog executes.
struct NamedCheck
{
    QString name; ///< may be empty: unnamed
    QString condition;
};
struct CreateTablePlan
{
    TableInfo table;
    QList<RelationInfo> relations;
    QList<NamedCheck> checks; ///< in addition to the table's rule
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
    NamedCheck check; ///< empty condition: none
};
struct DropConstraintPlan
{
    QString table;
    QString name;
    SourceRange where; ///< place of the name in the text
};
struct DropTablePlan
{
    QString name;
}; ///< deletes the table or stored query of that name
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
/// EXECUTE of a stored query; arguments are SQLite expressions for its parameters, in order.
struct ExecutePlan
{
    QString query;
    QStringList arguments;
    bool returnsRows = false; ///< the stored query returns rows
};

using Plan = std::variant<SelectPlan, ActionPlan, SelectIntoPlan, CreateTablePlan, AddFieldPlan, AlterFieldPlan,
                          DropFieldPlan, AddConstraintPlan, DropConstraintPlan, DropTablePlan, CreateIndexPlan,
                          DropIndexPlan, CreateQueryPlan, DropQueryPlan, ExecutePlan>;

struct CompiledStatement
{
    QList<Parameter> parameters; ///< declared ones first, then the others by first occurrence
    Plan plan;
    /// The statement reads a cross table whose columns were taken from the data while it was compiled; compile it again
    /// before each run.
    bool dependsOnData = false;
    /// These columns depend on parameters too. Compile it again when the values of parameters have changed: without
    /// them, names that may be such columns are neither columns nor parameters.
    bool dependsOnValues = false;

    bool returnsRows() const
    {
        const auto *execute = std::get_if<ExecutePlan>(&plan);
        return execute ? execute->returnsRows : std::holds_alternative<SelectPlan>(plan);
    }
};

} // namespace dao::sql
