#include "Correlation.h"
#include "Generator.h"

namespace dao::sql::generate {
namespace {

using namespace bound;

/// True if the join has no condition.
bool isCrossed(const JoinTree &from)
{
    return !from.source && (!from.on || isCrossed(*from.left) || isCrossed(*from.right));
}

NotUpdatable joinedUpdatable(const Select &select, const Source *&deletable)
{
    if (select.from.size() > 1 || select.commaJoin || isCrossed(*select.from.front()))
        return NotUpdatable::CommaJoin;
    const QHash<const Source *, QSet<int>> fields = joinedFields(select);
    std::vector<const Source *> free;
    for (const auto &source : select.sources) {
        // Joined by a unique key each row of the other tables matches at most one row of this table.
        if (!holdUniqueKey(*source->table, fields.value(source.get()), Nulls::Ignored))
            free.push_back(source.get());
    }
    if (free.size() > 1)
        return NotUpdatable::ManyToMany;
    // One-to-one join: the first table that always has a row.
    for (const auto &source : select.sources) {
        if (free.empty() && !source->nullable)
            free.push_back(source.get());
    }
    deletable = free.empty() ? nullptr : free.front();
    return NotUpdatable::No;
}

} // namespace

std::vector<const Source *> keySources(const Select &select)
{
    if (!select.rowSources.empty())
        return select.rowSources;
    std::vector<const Source *> sources;
    for (const auto &source : select.sources) {
        if (source->table)
            sources.push_back(source.get());
    }
    return sources;
}

NotUpdatable whyNotUpdatable(const Query &query, const Source *&deletable)
{
    deletable = nullptr;
    const Select *select = query.singleSelect();
    if (!select)
        return NotUpdatable::Union;
    if (select->distinct)
        return NotUpdatable::Distinct;
    if (!select->groupBy.empty())
        return NotUpdatable::Grouped;
    if (select->aggregated)
        return NotUpdatable::Aggregate;
    if (select->sources.empty())
        return NotUpdatable::NoTable;
    for (const auto &source : select->sources) {
        if (!source->table)
            return NotUpdatable::NestedQuery;
    }
    for (const OutputColumn &column : select->columns) {
        if (hasSubquery(*column.expr))
            return NotUpdatable::SubqueryColumn;
    }
    if (select->sources.size() == 1) {
        deletable = select->sources.front().get();
        return NotUpdatable::No;
    }
    return joinedUpdatable(*select, deletable);
}

} // namespace dao::sql::generate
