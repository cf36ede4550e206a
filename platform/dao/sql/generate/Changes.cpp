#include "Generator.h"
#include "Rank.h"

#include <dao/sql/bind/Types.h>

using namespace Qt::StringLiterals;

// Statements that change rows. Each has two forms. The plain form leaves as much as possible to SQLite. The
// cancellable form is for statements that must not be interrupted half-way (see ActionPlan): reading that may take long
// without writing a row becomes a SELECT, which can be interrupted, and each row that is written checks for a request
// to stop.
//
// In both forms conditions and new values see the rows as they were before the statement. If they may read what the
// statement writes, the rows are materialised first, in a temporary table.

namespace dao::sql::generate {
namespace {

using namespace bound;

using Step = ActionPlan::Step;

Step changeStep(const QString &sql, bool counts = true)
{
    return {.sql = sql, .countsRows = counts, .materialiseInto = {}, .keyed = false, .refusal = std::nullopt};
}

/// A domain function runs its own statement, of which SQLite knows nothing: it would see rows that the outer statement
/// has already written.
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

/// A scan of one table in key order that visits each row once.
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

QString Generator::cancellable(const QString &condition) const
{
    const QString question = m_target.stopFunction + u"() = 0"_s;
    return condition.isEmpty() ? question : QString(question + u" AND ("_s + condition + u')');
}

QString Generator::materialised() const
{
    return m_target.temporary + u'.' + quotedName(m_target.materialisedTable);
}

// Keeps the rows before anything is written, because the condition may read what the statement writes.
//     UPDATE t SET a = 1 WHERE a IN (SELECT a FROM t AS x)
//     SELECT _s1."id" AS _k0, 1 AS _c0 FROM "t" AS _s1 WHERE _s1."a" IN (SELECT _s2."a" FROM "t" AS _s2) ORDER BY
//         _s1."id"
Step Generator::materialise(const QString &rows, bool keyed) const
{
    return {.sql = rows,
            .countsRows = false,
            .materialiseInto = m_target.materialisedTable.toString(),
            .keyed = keyed,
            .refusal = std::nullopt};
}

Step Generator::dropMaterialised() const
{
    return changeStep(u"DROP TABLE "_s + materialised(), false);
}

//     INSERT INTO v (a, b) SELECT a, b FROM t WHERE b > 1
//     INSERT INTO "v" ("a", "b") SELECT _s1."a", _s1."b" FROM "t" AS _s1 WHERE _s1."b" > 1 ORDER BY _s1."id"
ActionPlan Generator::insert(const Insert &insert)
{
    QStringList names;
    for (const int field : insert.fields)
        names.append(quotedName(insert.table->fields[field].name));
    ActionPlan plan;
    plan.tables.append(insert.table->name);
    const QString into = u"INSERT INTO "_s + quotedName(insert.table->name) + u" ("_s + names.join(u", "_s) + u") "_s;
    if (!insert.query) {
        plan.steps.append(changeStep(into + u"VALUES ("_s + arguments(insert.values) + u')'));
        return plan;
    }
    const QString rows = insert.rows ? u"SELECT "_s + arguments(insert.converted) + u" FROM "_s + leafText(*insert.rows)
                                     : queryText(*insert.query, Shape::Plain);
    if (hasDomainCall(*insert.query))
        plan.steps = {materialise(rows, false),
                      changeStep(into + u"SELECT * FROM "_s + materialised() + u" ORDER BY rowid"_s),
                      dropMaterialised()};
    else
        plan.steps.append(changeStep(into + rows));
    if (!insert.rows && isPlainWalk(*insert.query)) {
        m_cancellableSelect = insert.query->singleSelect();
        plan.cancellableSteps.append(changeStep(into + queryText(*insert.query, Shape::Plain)));
        m_cancellableSelect = nullptr;
        return plan;
    }
    plan.cancellableSteps = {
        materialise(rows, false),
        changeStep(into + u"SELECT * FROM "_s + materialised() + u" WHERE "_s + cancellable({}) + u" ORDER BY rowid"_s),
        dropMaterialised()};
    return plan;
}

//     UPDATE t SET a = b WHERE b > 1
//     UPDATE "t" AS _s1 SET "a" = _s1."b" WHERE _s1."b" > 1
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
        assignments.append(quotedName(field.source->table->fields[field.field].name) + u" = "_s +
                           value(*field.value).text);
    const Source &source = *select.sources.front();
    const QString set = u"UPDATE "_s + leafText(source) + u" SET "_s + assignments.join(u", ");
    const QString condition = select.where ? truth(*select.where).text : QString();
    ActionPlan plan;
    plan.cancellableSteps.append(changeStep(set + u" WHERE "_s + cancellable(condition)));
    plan.tables.append(source.table->name);
    plan.steps.append(changeStep(condition.isEmpty() ? set : QString(set + u" WHERE "_s + condition)));
    return plan;
}

// The new values of all rows are computed first, from the old values, then written table by table. A row that the join
// returns several times gets the last value.
//     UPDATE t INNER JOIN v ON t.id = v.a SET t.b = v.b
//     SELECT _s1."id" AS _k0, _s2."b" AS _c0 FROM "t" AS _s1 JOIN "v" AS _s2 ON _s1."id" = _s2."a" ORDER BY _s1."id",
//         _s2."rowid"
//     UPDATE "t" AS _old SET "b" = _new._c0 FROM temp."_materialised" AS _new WHERE _old."id" = _new._k0
//     DROP TABLE temp."_materialised"
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
        u"SELECT "_s + cells.join(u", ") + fromToHaving(select) + u" ORDER BY "_s + tieBreakers(select).join(u", ");
    const bool keyed = targets.size() == 1 && update.absent.empty();

    ActionPlan plan;
    plan.steps.append(materialise(rows, keyed));
    for (const AbsentRows &absent : update.absent) {
        const auto t = std::ranges::find(targets, absent.target) - targets.begin();
        if (!absent.added)
            plan.steps.append(refuseAbsent(absent, m_target.keyPrefix + QString::number(t)));
    }
    plan.cancellableSteps = plan.steps;
    for (size_t t = 0; t < targets.size(); ++t) {
        const QString key = m_target.keyPrefix + QString::number(t);
        QStringList assignments;
        QStringList columns{key};
        for (size_t i = 0; i < update.fields.size(); ++i) {
            if (update.fields[i].source != targets[t])
                continue;
            const QString cell = m_target.columnPrefix + QString::number(i);
            columns.append(cell);
            assignments.append(quotedName(targets[t]->table->fields[update.fields[i].field].name) + u" = _new."_s +
                               cell);
        }
        const QString last = u"(SELECT "_s + columns.join(u", ") + u", max(rowid) FROM "_s + materialised() +
                             u" WHERE "_s + key + u" IS NOT NULL GROUP BY "_s + key + u')';
        const QString set = u"UPDATE "_s + quotedName(targets[t]->table->name) + u" AS _old SET "_s +
                            assignments.join(u", ") + u" FROM "_s + (keyed ? materialised() : last) +
                            u" AS _new WHERE "_s;
        const QString match = u"_old."_s + quotedName(targets[t]->table->keyColumn) + u" = _new."_s + key;
        plan.steps.append(changeStep(set + match, t == 0));
        plan.cancellableSteps.append(changeStep(set + cancellable(match), t == 0));
        plan.tables.append(targets[t]->table->name);
        const auto absent = std::ranges::find(update.absent, targets[t], &AbsentRows::target);
        if (absent == update.absent.end() || !absent->added)
            continue;
        const QString rest = key + u" IS NULL"_s;
        plan.steps.append(changeStep(addAbsent(update, *absent) + rest + u" ORDER BY rowid"_s, t == 0));
        plan.cancellableSteps.append(
            changeStep(addAbsent(update, *absent) + cancellable(rest) + u" ORDER BY rowid"_s, t == 0));
    }
    plan.steps.append(dropMaterialised());
    plan.cancellableSteps.append(dropMaterialised());
    return plan;
}

// Ends the statement if an outer join returned a row without a row of the updated table.
//     UPDATE u RIGHT JOIN v ON u.k = v.a SET u.e = 'x'
//     SELECT 1 FROM temp."_materialised" WHERE _k0 IS NULL LIMIT 1
Step Generator::refuseAbsent(const AbsentRows &absent, const QString &key) const
{
    Step step = changeStep(u"SELECT 1 FROM "_s + materialised() + u" WHERE "_s + key + u" IS NULL LIMIT 1"_s, false);
    step.refusal = DaoException(error::NotUpdatableQuery, u"DAO.Database"_s, errorText(error::NotUpdatableQuery),
                                m_context.userPlace(absent.place))
                       .withHint(absent.hint);
    return step;
}

// Inserts a row for each materialised row. Ends with WHERE; the caller adds the condition.
//     UPDATE u RIGHT JOIN v ON u.k = v.a SET u.k = v.a, u.e = 'x'
//     INSERT INTO "u" ("k", "e") SELECT _c0, _c1 FROM temp."_materialised" WHERE _k0 IS NULL ORDER BY rowid
QString Generator::addAbsent(const Update &update, const AbsentRows &absent)
{
    const TableInfo &table = *absent.target->table;
    QStringList names;
    QStringList cells;
    for (size_t i = 0; i < update.fields.size(); ++i) {
        if (update.fields[i].source != absent.target)
            continue;
        names.append(quotedName(table.fields[update.fields[i].field].name));
        cells.append(m_target.columnPrefix + QString::number(i));
    }
    for (const AssignedField &field : absent.defaults) {
        names.append(quotedName(table.fields[field.field].name));
        cells.append(value(*field.value).text);
    }
    return u"INSERT INTO "_s + quotedName(table.name) + u" ("_s + names.join(u", ") + u") SELECT "_s +
           cells.join(u", ") + u" FROM "_s + materialised() + u" WHERE "_s;
}

//     DELETE t.* FROM t INNER JOIN v ON t.id = v.a
//     DELETE FROM "t" WHERE "id" IN (SELECT _s1."id" AS _k0 FROM "t" AS _s1 JOIN "v" AS _s2 ON _s1."id" = _s2."a")
ActionPlan Generator::remove(const Delete &statement)
{
    const Select &select = *statement.select;
    const Source &target = *statement.deleteTarget;
    const QString table = quotedName(target.table->name);
    const QString key = quotedName(target.table->keyColumn);
    ActionPlan plan;
    plan.tables.append(target.table->name);
    const bool alone = select.sources.size() == 1;
    if (!alone)
        markGrouped(select);
    if (alone && !(select.where && readsRows(*select.where))) {
        const QString remove = u"DELETE FROM "_s + leafText(target);
        const QString condition = select.where ? truth(*select.where).text : QString();
        plan.steps.append(changeStep(condition.isEmpty() ? remove : QString(remove + u" WHERE "_s + condition)));
        plan.cancellableSteps.append(changeStep(remove + u" WHERE "_s + cancellable(condition)));
        return plan;
    }
    const QString rows = u"SELECT "_s + keyText(target) + u" AS "_s + m_target.keyPrefix + u'0' + fromToHaving(select);
    // SQLite completes the list of keys before it deletes the first row.
    plan.steps.append(changeStep(u"DELETE FROM "_s + table + u" WHERE "_s + key + u" IN ("_s + rows + u')'));
    plan.cancellableSteps = {
        materialise(rows, true),
        changeStep(u"DELETE FROM "_s + table + u" WHERE "_s +
                   cancellable(key + u" IN (SELECT "_s + m_target.keyPrefix + u"0 FROM "_s + materialised() + u')')),
        dropMaterialised()};
    return plan;
}

} // namespace dao::sql::generate
