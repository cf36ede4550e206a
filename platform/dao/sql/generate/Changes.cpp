#include "Generator.h"
#include "Rank.h"

#include "../bind/Types.h"

using namespace Qt::StringLiterals;

// Statements that change rows. Each has two forms. The plain one leaves as much as it can to the inner engine. The
// asking one is for statements that must not be interrupted half-way (see ActionPlan): what may read for long without
// writing a row becomes a select, which can be interrupted, and what writes asks at every row.
//
// In both forms conditions and new values see the rows as they were before the statement: where they may read what it
// writes, the rows are gathered first.

namespace dao::sql::generate {
namespace {

using namespace bound;

using Step = ActionPlan::Step;

/// A domain function reads through a statement of its own, which the inner engine does not see: it would find the rows
/// that the statement around it has written already.
bool hasDomainCall(const Query &query)
{
    bool found = false;
    forEachExpr(query, [&found](const Expr &expr) {
        found = found || anyPart(expr, [](const Expr &part) {
                    const Query *inner = subqueryOf(part);
                    return part.as<DomainCall>() || (inner && hasDomainCall(*inner));
                });
    });
    return found;
}

/// The rows of one table in its own order, each looked at once.
bool isPlainWalk(const Query &query)
{
    const Select *select = query.singleSelect();
    if (!select || select->sources.size() != 1 || !select->sources.front()->table || select->aggregated ||
        select->distinct || select->top || !select->order.empty() || (select->where && readsRows(*select->where)))
        return false;
    return std::none_of(select->columns.begin(), select->columns.end(),
                        [](const OutputColumn &column) { return readsRows(*column.expr); });
}

} // namespace

QString Generator::asking(const QString &condition) const
{
    const QString question = m_target.stopFunction + u"() = 0"_s;
    return condition.isEmpty() ? question : QString(question + u" AND ("_s + condition + u')');
}

QString Generator::gathered() const
{
    return m_target.temporary + u'.' + quoted(m_target.gatherTable);
}

Step Generator::gather(const QString &rows, bool keyed) const
{
    return {rows, false, m_target.gatherTable.toString(), keyed};
}

Step Generator::dropGathered() const
{
    return {u"DROP TABLE "_s + gathered(), false, {}, false};
}

ActionPlan Generator::insert(const Insert &insert)
{
    QStringList names;
    for (const int field : insert.fields)
        names.append(quoted(insert.table->fields[field].name));
    ActionPlan plan;
    plan.tables.append(insert.table->name);
    const QString into = u"INSERT INTO "_s + quoted(insert.table->name) + u" ("_s + names.join(u", "_s) + u") "_s;
    if (!insert.query) {
        plan.steps.append({into + u"VALUES ("_s + arguments(insert.values) + u')', true, {}, false});
        return plan;
    }
    const QString rows = insert.rows ? u"SELECT "_s + arguments(insert.converted) + u" FROM "_s + leafText(*insert.rows)
                                     : queryText(*insert.query, Shape::Plain);
    if (hasDomainCall(*insert.query))
        plan.steps = {gather(rows, false),
                      {into + u"SELECT * FROM "_s + gathered() + u" ORDER BY rowid"_s, true, {}, false},
                      dropGathered()};
    else
        plan.steps.append({into + rows, true, {}, false});
    if (!insert.rows && isPlainWalk(*insert.query)) {
        m_asking = insert.query->singleSelect();
        plan.askingSteps.append({into + queryText(*insert.query, Shape::Plain), true, {}, false});
        m_asking = nullptr;
        return plan;
    }
    plan.askingSteps = {
        gather(rows, false),
        {into + u"SELECT * FROM "_s + gathered() + u" WHERE "_s + asking({}) + u" ORDER BY rowid"_s, true, {}, false},
        dropGathered()};
    return plan;
}

ActionPlan Generator::update(const Update &update)
{
    const Select &select = *update.select;
    const bool reads = (select.where && readsRows(*select.where)) ||
                       std::any_of(update.fields.begin(), update.fields.end(),
                                   [](const AssignedField &field) { return readsRows(*field.value); });
    if (select.sources.size() > 1 || reads)
        return updateJoined(update);
    QStringList assignments;
    for (const AssignedField &field : update.fields)
        assignments.append(quoted(field.source->table->fields[field.field].name) + u" = "_s + value(*field.value).text);
    const Source &source = *select.sources.front();
    const QString set = u"UPDATE "_s + leafText(source) + u" SET "_s + assignments.join(u", ");
    const QString condition = select.where ? truth(*select.where).text : QString();
    ActionPlan plan;
    plan.askingSteps.append({set + u" WHERE "_s + asking(condition), true, {}, false});
    plan.tables.append(source.table->name);
    plan.steps.append({condition.isEmpty() ? set : QString(set + u" WHERE "_s + condition), true, {}, false});
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
    const QString rows =
        u"SELECT "_s + cells.join(u", ") + tail(select) + u" ORDER BY "_s + tieBreakers(select).join(u", ");
    const bool keyed = targets.size() == 1 && update.absent.empty();

    ActionPlan plan;
    plan.steps.append(gather(rows, keyed));
    for (const AbsentRows &absent : update.absent) {
        const auto t = std::ranges::find(targets, absent.target) - targets.begin();
        if (!absent.added)
            plan.steps.append(refuseAbsent(absent, m_target.keyPrefix + QString::number(t)));
    }
    plan.askingSteps = plan.steps;
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
        const QString last = u"(SELECT "_s + columns.join(u", ") + u", max(rowid) FROM "_s + gathered() + u" WHERE "_s +
                             key + u" IS NOT NULL GROUP BY "_s + key + u')';
        const QString set = u"UPDATE "_s + quoted(targets[t]->table->name) + u" AS _old SET "_s +
                            assignments.join(u", ") + u" FROM "_s + (keyed ? gathered() : last) + u" AS _new WHERE "_s;
        const QString match = u"_old."_s + quoted(targets[t]->table->keyColumn) + u" = _new."_s + key;
        plan.steps.append({set + match, t == 0, {}, false});
        plan.askingSteps.append({set + asking(match), t == 0, {}, false});
        plan.tables.append(targets[t]->table->name);
        const auto absent = std::ranges::find(update.absent, targets[t], &AbsentRows::target);
        if (absent == update.absent.end() || !absent->added)
            continue;
        const QString rest = key + u" IS NULL"_s;
        plan.steps.append({addAbsent(update, *absent) + rest + u" ORDER BY rowid"_s, t == 0, {}, false});
        plan.askingSteps.append({addAbsent(update, *absent) + asking(rest) + u" ORDER BY rowid"_s, t == 0, {}, false});
    }
    plan.steps.append(dropGathered());
    plan.askingSteps.append(dropGathered());
    return plan;
}

Step Generator::refuseAbsent(const AbsentRows &absent, const QString &key) const
{
    Step step{u"SELECT 1 FROM "_s + gathered() + u" WHERE "_s + key + u" IS NULL LIMIT 1"_s, false, {}, false};
    step.refusal = DaoException(error::NotUpdatableQuery, u"DAO.Database"_s, errorText(error::NotUpdatableQuery),
                                m_context.userPlace(absent.place))
                       .withHint(absent.hint);
    return step;
}

// A row for each of the gathered ones, up to its condition.
QString Generator::addAbsent(const Update &update, const AbsentRows &absent)
{
    const TableInfo &table = *absent.target->table;
    QStringList names;
    QStringList cells;
    for (size_t i = 0; i < update.fields.size(); ++i) {
        if (update.fields[i].source != absent.target)
            continue;
        names.append(quoted(table.fields[update.fields[i].field].name));
        cells.append(m_target.columnPrefix + QString::number(i));
    }
    for (const AssignedField &field : absent.defaults) {
        names.append(quoted(table.fields[field.field].name));
        cells.append(value(*field.value).text);
    }
    return u"INSERT INTO "_s + quoted(table.name) + u" ("_s + names.join(u", ") + u") SELECT "_s + cells.join(u", ") +
           u" FROM "_s + gathered() + u" WHERE "_s;
}

ActionPlan Generator::remove(const Delete &statement)
{
    const Select &select = *statement.select;
    const Source &victim = *statement.victim;
    const QString table = quoted(victim.table->name);
    const QString key = quoted(victim.table->keyColumn);
    ActionPlan plan;
    plan.tables.append(victim.table->name);
    const bool alone = select.sources.size() == 1;
    if (!alone)
        markGrouped(select);
    if (alone && !(select.where && readsRows(*select.where))) {
        const QString remove = u"DELETE FROM "_s + leafText(victim);
        const QString condition = select.where ? truth(*select.where).text : QString();
        plan.steps.append({condition.isEmpty() ? remove : QString(remove + u" WHERE "_s + condition), true, {}, false});
        plan.askingSteps.append({remove + u" WHERE "_s + asking(condition), true, {}, false});
        return plan;
    }
    const QString rows = u"SELECT "_s + keyText(victim) + u" AS "_s + m_target.keyPrefix + u'0' + tail(select);
    // The list of keys is complete before the first row goes.
    plan.steps.append({u"DELETE FROM "_s + table + u" WHERE "_s + key + u" IN ("_s + rows + u')', true, {}, false});
    plan.askingSteps = {gather(rows, true),
                        {u"DELETE FROM "_s + table + u" WHERE "_s +
                             asking(key + u" IN (SELECT "_s + m_target.keyPrefix + u"0 FROM "_s + gathered() + u')'),
                         true,
                         {},
                         false},
                        dropGathered()};
    return plan;
}

} // namespace dao::sql::generate
