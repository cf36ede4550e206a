#include "Generator.h"
#include "Rank.h"

#include "../bind/Types.h"

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

SelectPlan Generator::select(const Query &query)
{
    SelectPlan plan;
    const Source *deletable = nullptr;
    plan.whyNot = whyNotUpdatable(query, deletable);
    plan.fullSql = queryText(query, Shape::Plain);
    plan.keyed = isKeyed(query);
    if (plan.keyed) {
        planKeys(plan, *query.singleSelect());
        const std::vector<const Source *> sources = keySources(*query.singleSelect());
        for (size_t i = 0; i < sources.size(); ++i)
            plan.sources[qsizetype(i)].deletable = plan.updatable() && sources[i] == deletable;
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
    for (const OutputColumn &output : query.output()) {
        dao::sql::Column column;
        column.info = output.info;
        column.info.ordinal = ordinal++;
        const bound::FieldRef *field = output.expr ? output.expr->as<bound::FieldRef>() : nullptr;
        if (field) {
            const auto found = std::find(sources.begin(), sources.end(), field->source);
            column.source = found == sources.end() ? -1 : int(found - sources.begin());
            column.updatable = plan.updatable() && column.source >= 0;
        }
        plan.columns.append(column);
    }
}

void Generator::planKeys(SelectPlan &plan, const Select &select)
{
    plan.keySql = selectText(select, Shape::Keys);
    const std::vector<const Source *> sources = keySources(select);
    for (const Source *source : sources) {
        KeySource key;
        key.table = source->table->name;
        key.alias = source->name;
        key.nullable = source->nullable;
        plan.sources.append(key);
    }
    plan.rowSql = rowText(select, sources);
}

// Each table by its key alone: joins and conditions have decided already which rows belong together. A key that is Null
// gives Null cells; a row that is gone gives no row at all.
QString Generator::rowText(const Select &select, const std::vector<const Source *> &sources)
{
    const QSet<const Source *> grouped = std::exchange(m_grouped, {});
    QString from;
    QStringList conditions;
    const auto add = [&](const Source &source, size_t index) {
        const QString parameter =
            m_target.parameterPrefix + QString::number(m_parameters.size() + qsizetype(index) + 1);
        const QString match = keyText(source) + u" = "_s + parameter;
        if (source.nullable)
            conditions.append(u'(' + parameter + u" IS NULL OR "_s + keyText(source) + u" IS NOT NULL)"_s);
        else if (from.isEmpty())
            conditions.append(match);
        // Where all keys may be Null there is still a row.
        if (from.isEmpty() && source.nullable)
            from = u"(SELECT 1) AS _one"_s;
        if (from.isEmpty())
            from = leafText(source);
        else
            from += (source.nullable ? u" LEFT JOIN "_s : u" JOIN "_s) + leafText(source) + u" ON "_s + match;
    };
    for (const bool nullable : {false, true}) {
        for (size_t i = 0; i < sources.size(); ++i) {
            if (sources[i]->nullable == nullable)
                add(*sources[i], i);
        }
    }
    const QStringList cells = cellsOf(select, Shape::Plain);
    m_grouped = grouped;
    return u"SELECT "_s + cells.join(u", ") + u" FROM "_s + from + u" WHERE "_s + conditions.join(u" AND ");
}

// ---- statements that change rows --------------------------------------------------------------------------------

ActionPlan Generator::insert(const Insert &insert)
{
    QStringList names;
    for (const int field : insert.fields)
        names.append(quoted(insert.table->fields[field].name));
    QString rows;
    if (!insert.query)
        rows = u"VALUES ("_s + arguments(insert.values) + u')';
    else if (insert.rows)
        rows = u"SELECT "_s + arguments(insert.converted) + u" FROM "_s + leafText(*insert.rows);
    else
        rows = queryText(*insert.query, Shape::Plain);
    ActionPlan plan;
    plan.table = insert.table->name;
    plan.steps.append(
        {u"INSERT INTO "_s + quoted(insert.table->name) + u" ("_s + names.join(u", ") + u") "_s + rows, true});
    return plan;
}

ActionPlan Generator::update(const Update &update)
{
    const Select &select = *update.select;
    const bool readsOthers = std::any_of(update.fields.begin(), update.fields.end(), [](const AssignedField &field) {
        return anyPart(*field.value, [](const Expr &part) { return subqueryOf(part) != nullptr; });
    });
    if (select.sources.size() > 1 || readsOthers)
        return updateJoined(update);
    QStringList assignments;
    for (const AssignedField &field : update.fields)
        assignments.append(quoted(field.source->table->fields[field.field].name) + u" = "_s + value(*field.value).text);
    const Source &source = *select.sources.front();
    QString sql = u"UPDATE "_s + leafText(source) + u" SET "_s + assignments.join(u", ");
    if (select.where)
        sql += u" WHERE "_s + truth(*select.where).text;
    ActionPlan plan;
    plan.table = source.table->name;
    plan.steps.append({sql, true});
    return plan;
}

// The new values are computed for all rows first, from the old ones, then written table by table. A row met several
// times takes the last of its values.
ActionPlan Generator::updateJoined(const Update &update)
{
    const Select &select = *update.select;
    markGrouped(select);
    std::vector<const Source *> targets;
    for (const AssignedField &field : update.fields) {
        if (std::find(targets.begin(), targets.end(), field.source) == targets.end())
            targets.push_back(field.source);
    }
    QStringList cells;
    for (size_t i = 0; i < targets.size(); ++i)
        cells.append(keyText(*targets[i]) + u" AS "_s + m_target.keyPrefix + QString::number(i));
    for (size_t i = 0; i < update.fields.size(); ++i)
        cells.append(value(*update.fields[i].value).text + u" AS "_s + m_target.columnPrefix + QString::number(i));
    QString rows = u"SELECT "_s + cells.join(u", ") + tail(select);
    const QStringList order = tieBreakers(select);
    rows += u" ORDER BY "_s + order.join(u", ");
    const QString table = m_target.temporary + u'.' + quoted(m_target.updateTable);

    ActionPlan plan;
    plan.table = targets.front()->table->name;
    plan.steps.append({u"CREATE TEMP TABLE "_s + quoted(m_target.updateTable) + u" AS "_s + rows, false});
    for (size_t t = 0; t < targets.size(); ++t) {
        const QString key = m_target.keyPrefix + QString::number(t);
        QStringList assignments;
        QStringList columns{key};
        for (size_t i = 0; i < update.fields.size(); ++i) {
            if (update.fields[i].source != targets[t])
                continue;
            const QString cell = m_target.columnPrefix + QString::number(i);
            columns.append(cell);
            assignments.append(quoted(targets[t]->table->fields[update.fields[i].field].name) + u" = _new."_s + cell);
        }
        const QString last = u"(SELECT "_s + columns.join(u", ") + u", max(rowid) FROM "_s + table + u" WHERE "_s +
                             key + u" IS NOT NULL GROUP BY "_s + key + u") AS _new"_s;
        const QString target = quoted(targets[t]->table->name);
        plan.steps.append({u"UPDATE "_s + target + u" AS _old SET "_s + assignments.join(u", ") + u" FROM "_s + last +
                               u" WHERE _old."_s + quoted(targets[t]->table->keyColumn) + u" = _new."_s + key,
                           t == 0});
    }
    plan.steps.append({u"DROP TABLE "_s + table, false});
    return plan;
}

ActionPlan Generator::remove(const Delete &statement)
{
    const Select &select = *statement.select;
    const Source &victim = *statement.victim;
    QString sql = u"DELETE FROM "_s;
    if (select.sources.size() == 1) {
        sql += leafText(victim);
        if (select.where)
            sql += u" WHERE "_s + truth(*select.where).text;
    } else {
        markGrouped(select);
        sql += quoted(victim.table->name) + u" WHERE "_s + quoted(victim.table->keyColumn) + u" IN (SELECT "_s +
               keyText(victim) + tail(select) + u')';
    }
    ActionPlan plan;
    plan.table = victim.table->name;
    plan.steps.append({sql, true});
    return plan;
}

} // namespace dao::sql::generate
