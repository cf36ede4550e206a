#pragma once
#include "Bound.h"

namespace dao::sql::bound {

struct ScopeColumn
{
    QString name;
    ExprPtr expr;
};

/// What the user can name in FROM: a table, a stored query or a derived table, by its alias.
struct ScopeSource
{
    QString name;
    std::vector<ScopeColumn> columns;
};

/// The names that one FROM clause brings, and those of the queries around it.
class Scope
{
public:
    explicit Scope(const Scope *outer = nullptr)
        : m_outer(outer)
    {
    }

    const Scope *outer() const { return m_outer; }
    const std::vector<ScopeSource> &sources() const { return m_sources; }
    /// False when there is a source of that name already.
    bool add(ScopeSource source);

    struct Found
    {
        int count = 0; ///< more than one: ambiguous
        const ScopeColumn *column = nullptr;
        const ScopeSource *source = nullptr;
    };
    /// A column of any source from first to before last.
    Found find(QStringView field, size_t first, size_t last) const;
    Found find(QStringView source, QStringView field) const;
    const ScopeSource *source(QStringView name) const;
    QStringList columnNames() const;

private:
    const Scope *m_outer;
    std::vector<ScopeSource> m_sources;
};

} // namespace dao::sql::bound
