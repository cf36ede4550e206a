#pragma once
#include "BindContext.h"

namespace dao::sql::bound {

struct ScopeColumn
{
    QString name;
    ExprPtr expr;
};

/// A source that expressions can name: a table, a stored query or a derived table, by its alias.
class ScopeSource
{
public:
    /// The columns of a query.
    ScopeSource(const QString &name, std::vector<ScopeColumn> columns);
    /// The fields of a base table. Their expressions are made when they are named: a query uses few fields of a wide
    /// table.
    ScopeSource(const QString &name, const Source &table);

    const QString &name() const { return m_name; }
    std::vector<ScopeColumn> columns() const;
    QStringList columnNames() const;
    /// The index of the first column of that name, or -1.
    int indexOf(QStringView column) const;
    const QString &columnName(int index) const;
    /// A copy of the column's expression, which the caller can change.
    std::shared_ptr<Expr> column(int index, BindContext &context) const;

private:
    QString m_name;
    std::vector<ScopeColumn> m_columns;
    const Source *m_table = nullptr;
};

/// The names of one FROM clause, and those of the outer queries.
class Scope
{
public:
    explicit Scope(const Scope *outer = nullptr)
        : m_outer(outer)
    {
    }

    const Scope *outer() const { return m_outer; }
    const std::vector<ScopeSource> &sources() const { return m_sources; }
    /// Returns false if a source of that name exists.
    bool add(ScopeSource source);

    struct Found
    {
        int count = 0; ///< more than one: ambiguous
        const ScopeSource *source = nullptr;
        int column = -1; ///< of the source
    };
    /// Finds a column in the sources from first to before last.
    Found find(QStringView field, size_t first, size_t last) const;
    Found find(QStringView source, QStringView field) const;
    const ScopeSource *source(QStringView name) const;
    QStringList columnNames() const;

private:
    const Scope *m_outer;
    std::vector<ScopeSource> m_sources;
};

} // namespace dao::sql::bound
