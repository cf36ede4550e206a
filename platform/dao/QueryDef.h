#pragma once
#include "Database.h"

namespace dao {

struct QueryDefImpl;

/// A query definition: temporary (no name) or stored. It is compiled when its fields or parameters are first read.
class QueryDef
{
public:
    /// Creates a temporary definition. Syntax errors are thrown here; unknown names are reported when fields or
    /// parameters are first read.
    QueryDef(Database &database, const QString &sql);
    /// The stored query of that name; error 3265.
    static QueryDef stored(Database &database, QStringView name);
    ~QueryDef();
    QueryDef(QueryDef &&) noexcept;
    QueryDef &operator=(QueryDef &&) noexcept;

    QString sql() const;
    const sql::CompiledStatement &compiled() const;
    bool returnsRows() const;

    int parameterCount() const;
    const sql::Parameter &parameter(int index) const;
    /// Converts the value to the parameter's type; error 3421 if it cannot be converted. Values are kept for later
    /// runs.
    void setParameter(int index, const Value &value);
    void setParameter(const QString &name, const Value &value); ///< error 3265
    Value parameterValue(int index) const;

    /// The columns of the result. Those of a cross table depend on its data, which is read by this call; while
    /// parameters have no values only the row headings are known.
    int fieldCount() const;
    const FieldInfo &field(int index) const;

    /// Runs an action statement and returns the number of affected rows. An error undoes the statement. Errors: 3065
    /// for a statement that returns rows, 3061 "Too few parameters. Expected n." if one has no value.
    int execute();

private:
    friend class Recordset;
    explicit QueryDef(std::unique_ptr<QueryDefImpl> impl);
    std::unique_ptr<QueryDefImpl> m_impl;
};

} // namespace dao
