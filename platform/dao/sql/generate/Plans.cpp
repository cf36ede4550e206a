#include "Generator.h"
#include "Rank.h"

#include <dao/sql/bind/Types.h>

using namespace Qt::StringLiterals;

namespace dao::sql::generate {
namespace {

using namespace bound;

bool isKeyed(const Query &query)
{
    const Select *select = query.singleSelect();
    return select && !select->distinct && !select->aggregated && !select->sources.empty() &&
           std::all_of(select->sources.begin(), select->sources.end(),
                       [](const auto &source) { return source->table != nullptr; });
}

} // namespace

// ---- queries ----------------------------------------------------------------------------------------------------

//     SELECT a FROM t WHERE c = 'x' ORDER BY b
//     SELECT _s1."a" FROM "t" AS _s1 WHERE _s1."c" = 'x' ORDER BY _s1."b", _s1."id"
//     SELECT _s1."id" FROM "t" AS _s1 WHERE _s1."c" = 'x' ORDER BY _s1."b", _s1."id"
//     SELECT _s1."a" FROM "t" AS _s1 WHERE _s1."id" = ?1
SelectPlan Generator::select(const Query &query)
{
    SelectPlan plan;
    const Source *deletable = nullptr;
    plan.whyNot = whyNotUpdatable(query, deletable);
    if (m_keepsFailures)
        show(query);
    plan.fullSql = queryText(query, Shape::Plain);
    plan.keyed = isKeyed(query);
    if (plan.keyed) {
        planKeys(plan, *query.singleSelect());
        const std::vector<const Source *> sources = keySources(*query.singleSelect());
        for (size_t i = 0; i < sources.size(); ++i)
            plan.sources[qsizetype(i)].deletable = plan.updatable() && sources[i] == deletable;
        if (plan.updatable() && deletable && sources.size() > 1)
            planAddedRows(plan, *query.singleSelect(), *deletable);
    }
    planColumns(plan, query);
    return plan;
}

void Generator::planColumns(SelectPlan &plan, const Query &query) const
{
    std::vector<const Source *> sources;
    if (plan.keyed)
        sources = keySources(*query.singleSelect());
    int ordinal = 0;
    plan.columns.reserve(qsizetype(query.output().size()));
    for (const OutputColumn &output : query.output()) {
        dao::sql::Column column{.info = output.info, .source = -1, .updatable = false};
        column.info.ordinal = ordinal++;
        const bound::FieldRef *field = output.expr ? output.expr->as<bound::FieldRef>() : nullptr;
        if (field) {
            const auto found = std::find(sources.begin(), sources.end(), field->source);
            column.source = found == sources.end() ? -1 : int(found - sources.begin());
            column.updatable = plan.updatable() && column.source >= 0 && !column.info.isAutoIncrement();
        }
        plan.columns.append(std::move(column));
    }
}

namespace {

/// Number of keys of the order, from the first, that the index gives, forwards or backwards.
size_t keysOrderedBy(const IndexInfo &index, const Select &select)
{
    size_t ordered = 0;
    for (; ordered < select.order.size() && ordered < size_t(index.fields.size()); ++ordered) {
        const OrderKey &key = select.order[ordered];
        const auto *field = key.expr->as<bound::FieldRef>();
        const IndexField &indexed = index.fields[qsizetype(ordered)];
        const bool isBackwards = select.order.front().descending != index.fields.front().descending;
        if (!field || field->source->table->fields[field->field].name.compare(indexed.name, Qt::CaseInsensitive) != 0 ||
            (key.descending != indexed.descending) != isBackwards)
            break;
    }
    return ordered;
}

} // namespace

// Whether SQLite would read all rows of one table by an index and sort only the rows that are equal in the index. One
// field of many equal values is left out: sorting its rows would take as long as sorting all.
bool Generator::isOrderedInPart(const Select &select)
{
    if (select.sources.size() != 1 || !select.sources.front()->table || select.where || select.top ||
        select.aggregated || select.distinct || !select.rowSources.empty())
        return false;
    bool isInPart = false;
    for (const IndexInfo &index : select.sources.front()->table->indexes) {
        const size_t ordered = keysOrderedBy(index, select);
        if (ordered == select.order.size())
            return false;
        isInPart = isInPart || (ordered == size_t(index.fields.size()) && ordered > 1);
    }
    return isInPart &&
           std::ranges::all_of(select.order, [](const OrderKey &key) { return key.expr->as<bound::FieldRef>(); });
}

// The row keys in the order of the result, for a dynaset.
//     SELECT u.e, v.b FROM u INNER JOIN v ON u.k = v.a
//     SELECT _s1."rowid", _s2."rowid" FROM "u" AS _s1 JOIN "v" AS _s2 ON _s1."k" = _s2."a" ORDER BY _s1."rowid",
//         _s2."rowid"
void Generator::planKeys(SelectPlan &plan, const Select &select)
{
    if (m_written.select == &select)
        plan.keySql = u"SELECT "_s + cellsOf(select, Shape::Keys).join(u", ") + m_written.rest();
    else
        plan.keySql = withCommon([&] { return selectText(select, Shape::Keys); });
    if (isOrderedInPart(select)) {
        m_isIndexed = false;
        plan.sortedKeySql = withCommon([&] { return selectText(select, Shape::Keys); });
        m_isIndexed = true;
    }
    const std::vector<const Source *> sources = keySources(select);
    for (const Source *source : sources) {
        KeySource key;
        key.table = source->table->name;
        key.alias = source->name;
        key.nullable = source->nullable;
        plan.sources.append(key);
    }
    plan.rowSql = rowText(select, sources, false);
}

// An added row belongs to the result even if the join does not return it.
void Generator::planAddedRows(SelectPlan &plan, const Select &select, const Source &addedTo)
{
    const std::vector<const Source *> sources = keySources(select);
    QStringList names;
    QString match;
    for (size_t i = 0; i < sources.size(); ++i) {
        names.append(m_target.keyPrefix + QString::number(i));
        if (sources[i] == &addedTo)
            match = names.back() + u" = "_s + m_target.parameterPrefix + QString::number(m_parameters.size() + 1);
    }
    if (match.isEmpty())
        return;
    const QString rows = quotedName(u"join.rows"); // table names contain no dot, so this name is free
    plan.addedKeySql = u"WITH "_s + rows + u" ("_s + names.join(u", ") + u") AS ("_s + plan.keySql +
                       u") SELECT * FROM "_s + rows + u" WHERE "_s + match;
    plan.addedRowSql = rowText(select, sources, true);
}

// Reads each table by its key alone: joins and conditions have been evaluated when the keys were read. A Null key
// gives Null cells; if a row was deleted, no row is returned.
//     SELECT t.a, v.b FROM t LEFT JOIN v ON t.id = v.a
//     SELECT _s1."a", _s2."b" FROM "t" AS _s1 LEFT JOIN "v" AS _s2 ON _s2."rowid" = ?2 WHERE _s1."id" = ?1 AND (?2 IS
//         NULL OR _s2."rowid" IS NOT NULL)
QString Generator::rowText(const Select &select, const std::vector<const Source *> &sources, bool anyAbsent)
{
    const QSet<int> grouped = std::exchange(m_grouped, {});
    QString from;
    QStringList conditions;
    const auto add = [&](const Source &source, size_t index) {
        const QString parameter =
            m_target.parameterPrefix + QString::number(m_parameters.size() + qsizetype(index) + 1);
        const QString match = keyText(source) + u" = "_s + parameter;
        const bool nullable = anyAbsent || source.nullable;
        if (nullable)
            conditions.append(u'(' + parameter + u" IS NULL OR "_s + keyText(source) + u" IS NOT NULL)"_s);
        else if (from.isEmpty())
            conditions.append(match);
        // If all keys can be Null there is still one row.
        if (from.isEmpty() && nullable)
            from = u"(SELECT 1) AS _one"_s;
        if (from.isEmpty())
            from = leafText(source);
        else
            from += (nullable ? u" LEFT JOIN "_s : u" JOIN "_s) + leafText(source) + u" ON "_s + match;
    };
    for (const bool nullable : {false, true}) {
        for (size_t i = 0; i < sources.size(); ++i) {
            if (sources[i]->nullable == nullable)
                add(*sources[i], i);
        }
    }
    const QString list = m_written.select == &select
                             ? m_written.text.first(m_written.listEnd)
                             : QString(u"SELECT "_s + cellsOf(select, Shape::Plain).join(u", "));
    m_grouped = grouped;
    return list + u" FROM "_s + from + u" WHERE "_s + conditions.join(u" AND ");
}

} // namespace dao::sql::generate
