#pragma once
#include "Database.h"

namespace dao {

/// A query definition: temporary (no name) or stored. Compiled when first asked for its fields or parameters.
class QueryDef
{
public:
    /// A temporary definition; syntax errors are thrown here, unknown names when fields or parameters are first read.
    QueryDef(Database &database, const QString &sql);
    /// The stored query of that name; error 3265.
    static QueryDef stored(Database &database, QStringView name);
    ~QueryDef();
    QueryDef(QueryDef &&) noexcept;
    QueryDef &operator=(QueryDef &&) noexcept;

    Database &database() const;
    QString sql() const;
    const sql::CompiledStatement &compiled() const;
    bool returnsRows() const;

    int parameterCount() const;
    const sql::Parameter &parameter(int index) const;
    /// Converts to the parameter's type; error 3421 when it cannot be. Values stay for later runs.
    void setParameter(int index, const Value &value);
    void setParameter(const QString &name, const Value &value); ///< error 3265
    Value parameterValue(int index) const;

    /// The columns of what it returns. Those of a cross table are told by its data: it is looked at now, and only the
    /// row heads are known while parameters have no values.
    int fieldCount() const;
    const FieldInfo &field(int index) const;

    /// Runs an action statement, fail-on-error: a failure undoes the statement. Returns the rows affected.
    /// Errors: 3065 for a statement that returns rows, 3061 "Too few parameters. Expected n." when one has no value.
    int execute();

private:
    friend class Recordset;
    friend class PlanExecution;
    struct Impl;
    explicit QueryDef(std::unique_ptr<Impl> impl);
    std::unique_ptr<Impl> m_impl;
};

} // namespace dao
