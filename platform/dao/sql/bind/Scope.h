#pragma once
#include "Bound.h"

namespace dao::sql::bound {

struct ScopeColumn
{
    QString name;
    ExprPtr expr;
};

/// A source that expressions can name: a table, a stored query or a derived table, by its alias.
struct ScopeSource
{
    QString name;
    std::vector<ScopeColumn> columns;
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
        const ScopeColumn *column = nullptr;
        const ScopeSource *source = nullptr;
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
