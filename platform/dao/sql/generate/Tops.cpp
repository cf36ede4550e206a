#include "Generator.h"
#include "Rank.h"

#include "Correlation.h"

using namespace Qt::StringLiterals;

// TOP n with an order returns the first n rows and all rows that tie with the last of them. SQLite has LIMIT,
// which does not know ties. Where a query has rows of tables, the first n of them are taken by LIMIT, which needs only
// the keys and can follow an index; then the rows that tie are found by the values of the last one.

namespace dao::sql::generate {
namespace {

using namespace bound;

QString joined(const QString &condition, const QString &other)
{
    return condition.isEmpty() ? other : other.isEmpty() ? condition : QString(condition + u" AND "_s + other);
}

QString inAnd(const QString &condition)
{
    return condition.isEmpty() ? condition : QString(u'(' + condition + u')');
}

bool isTableJoin(const JoinTree &from)
{
    return from.source ? from.source->table != nullptr
                       : from.kind != JoinKind::Right && isTableJoin(*from.left) && isTableJoin(*from.right);
}

/// True for all rows of a table in the order of an index.
bool followsIndex(const Select &select)
{
    const FieldRef *first = select.order.front().expr->as<FieldRef>();
    return first && !select.where && select.sources.size() == 1 && leadsIndex(*first);
}

} // namespace

bool Generator::mayTie(const Select &select) const
{
    const auto isInOrder = [&](const Expr &expr) {
        return std::ranges::any_of(select.order, [&](const OrderKey &key) { return sameExpr(*key.expr, expr); });
    };
    if (select.distinct)
        return !std::ranges::all_of(select.columns,
                                    [&](const OutputColumn &column) { return isInOrder(*column.expr); });
    if (select.aggregated)
        return !std::ranges::all_of(select.groupBy, [&](const ExprPtr &key) { return isInOrder(*key); });
    if (select.sources.size() != 1 || !select.sources.front()->table)
        return true;
    QSet<int> fields;
    for (const OrderKey &key : select.order) {
        if (const FieldRef *field = key.expr->as<FieldRef>())
            fields.insert(field->field);
    }
    return !holdUniqueKey(*select.sources.front()->table, fields, Nulls::Refused);
}

// Chooses the form: rows that are found by keys are cheapest. Groups and rows of nested queries have none, so they are
// ranked.
//     SELECT TOP 2 x.n FROM (SELECT DISTINCT a AS n FROM t) AS x ORDER BY x.n
//     SELECT _c0 FROM (SELECT *, rank() OVER (ORDER BY _o0) AS _rank FROM (SELECT _s2._c0 AS _c0, _s2._c0 AS _o0 FROM
//         (SELECT DISTINCT _s1."a" AS _c0 FROM "t" AS _s1) AS _s2)) WHERE _rank <= 2 ORDER BY _rank
QString Generator::topText(const Select &select, Shape shape)
{
    const bool ofTables = !select.aggregated && !select.distinct && select.rowSources.empty() &&
                          !select.sources.empty() &&
                          std::ranges::all_of(select.sources, [](const auto &source) { return source->table; });
    if (!ofTables)
        return rankedText(select, cellsOf(select, shape)).whole();
    const Reading reading = readingOf(select);
    // SQLite expands a WITH entry at each use: nested TOPs would multiply the text.
    if (reading.hasTop && !reading.namesOuter)
        return rankedRowsText(select, shape);
    if (reading.hasTop)
        return rankedText(select, cellsOf(select, shape)).whole();
    if (!reading.namesOuter)
        return firstRowsText(select, reading, shape);
    const bool simple = std::ranges::all_of(select.from, [](const JoinTreePtr &from) { return isTableJoin(*from); });
    if (simple && !reading.varies && !select.top->percent)
        return firstOfGroupText(select, cellsOf(select, shape));
    return rankedText(select, cellsOf(select, shape)).whole();
}

// Selects the rows of LIMIT and those that tie with the last one, by row keys and order keys; cells are read only for
// these rows.
//     SELECT TOP 2 a FROM t ORDER BY b DESC
//     WITH "top.1" AS MATERIALIZED (SELECT _s1."id" AS _t0, _s1."b" AS _o0 FROM "t" AS _s1 ORDER BY _o0 DESC LIMIT 2),
//         "last.1" AS MATERIALIZED (SELECT _o0 FROM "top.1" ORDER BY _o0 LIMIT 1) SELECT _s1."a" FROM (SELECT * FROM
//         "top.1" WHERE _o0 IS NOT (SELECT _o0 FROM "last.1") UNION ALL SELECT _s1."id", _s1."b" FROM "t" AS _s1 WHERE
//         _s1."b" IS (SELECT _o0 FROM "last.1")) AS _first CROSS JOIN "t" AS _s1 ON _s1."id" = _t0 ORDER BY _o0 DESC,
//         _t0
// If reading the rows twice costs much, or may give others the second time, they are kept as "all.1" first. A share of
// the rows (PERCENT) has to count them, which is cheap for all rows of a table.
QString Generator::firstRowsText(const Select &select, const Reading &reading, Shape shape)
{
    const QString number = QString::number(++m_derived);
    const auto named = [&](const QString &name) {
        return quotedName(QString(name + u'.' + number));
    }; // table names contain no dot
    const FirstRows first = firstRowsOf(select);
    QStringList names;
    QStringList reversed;
    QStringList differences;
    QStringList ties;
    for (size_t i = 0; i < select.order.size(); ++i) {
        const QString name = first.names[first.keys + qsizetype(i)];
        const QString last = u"(SELECT "_s + name + u" FROM "_s + named(u"last"_s) + u')';
        names.append(name);
        reversed.append(select.order[i].descending ? name : name + u" DESC"_s);
        differences.append(name + u" IS NOT "_s + last);
        ties.append(u" IS "_s + last);
    }
    const QString from = u" FROM "_s + fromText(select);
    const QString where = inAnd(whereText(select));
    const QString condition = where.isEmpty() ? where : QString(u" WHERE "_s + where);
    QString rows = u"SELECT "_s + first.list() + from + condition;

    QString rest;
    QString tie;
    const bool kept = reading.varies || reading.hasFreeSubquery || (select.top->percent && !followsIndex(select));
    for (qsizetype i = 0; i < ties.size(); ++i)
        tie = joined(tie, (kept ? names[i] : first.values[first.keys + i]) + ties[i]);
    if (kept) {
        m_common->append(named(u"all"_s) + u" AS MATERIALIZED ("_s + rows + u')');
        rows = u"SELECT * FROM "_s + named(u"all"_s);
        rest = rows + u" WHERE "_s + tie;
    } else {
        rest = u"SELECT "_s + first.values.join(u", ") + from + u" WHERE "_s + joined(tie, where);
    }
    const QString count = QString::number(qint64(select.top->count));
    const QString counted = kept ? QString(u" FROM "_s + named(u"all"_s)) : from + condition;
    const QString limit =
        select.top->percent ? u"(SELECT (count(*) * "_s + count + u" + 99) / 100"_s + counted + u')' : count;
    m_common->append(named(u"top"_s) + u" AS MATERIALIZED ("_s + rows + u" ORDER BY "_s + first.order.join(u", ") +
                     m_target.limit + limit + u')');
    m_common->append(named(u"last"_s) + u" AS MATERIALIZED (SELECT "_s + names.join(u", ") + u" FROM "_s +
                     named(u"top"_s) + u" ORDER BY "_s + reversed.join(u", ") + m_target.limit + u"1)"_s);
    const QString text = u"(SELECT * FROM "_s + named(u"top"_s) + u" WHERE "_s + differences.join(u" OR ") +
                         u" UNION ALL "_s + rest + u')';
    return cellsOfRowsText(select, first, text, first.order + first.names.first(first.keys), shape);
}

// Rows that another TOP selects are ranked by row keys alone; cells are read only for the first ones.
//     SELECT TOP 2 a FROM t WHERE id IN (SELECT TOP 9 id FROM t ORDER BY b) ORDER BY d
//     WITH "top.1" AS MATERIALIZED (SELECT _s2."id" AS _t0, _s2."b" AS _o0 FROM "t" AS _s2 ORDER BY _o0 LIMIT 9),
//         "last.1" AS MATERIALIZED (SELECT _o0 FROM "top.1" ORDER BY _o0 DESC LIMIT 1) SELECT _s1."a" FROM (SELECT _t0,
//         _o0, _rank FROM (SELECT *, rank() OVER (ORDER BY _o0) AS _rank FROM (SELECT _s1."id" AS _t0, _s1."d" AS _o0
//         FROM "t" AS _s1 WHERE _s1."id" IN (SELECT _t0 FROM (SELECT * FROM "top.1" WHERE _o0 IS NOT (SELECT _o0 FROM
//         "last.1") UNION ALL SELECT _s2."id", _s2."b" FROM "t" AS _s2 WHERE _s2."b" IS (SELECT _o0 FROM "last.1")))))
//         WHERE _rank <= 2) AS _first CROSS JOIN "t" AS _s1 ON _s1."id" = _t0 ORDER BY _rank, _t0
QString Generator::rankedRowsText(const Select &select, Shape shape)
{
    const FirstRows first = firstRowsOf(select);
    const QString where = whereText(select);
    const QString rows = u"SELECT "_s + first.list() + u" FROM "_s + fromText(select) +
                         (where.isEmpty() ? where : QString(u" WHERE "_s + where));
    const QString text = u"(SELECT "_s + first.names.join(u", ") + u", _rank FROM (SELECT *, "_s +
                         rankText(*select.top, first.order) + u" FROM ("_s + rows + u")) WHERE _rank <= "_s +
                         lastRankText(*select.top) + u')';
    return cellsOfRowsText(select, first, text, QStringList{u"_rank"_s} + first.names.first(first.keys), shape);
}

Generator::FirstRows Generator::firstRowsOf(const Select &select)
{
    FirstRows first;
    for (const Source *source : keySources(select)) {
        first.names.append(u"_t"_s + QString::number(first.names.size()));
        first.values.append(keyText(*source));
    }
    first.keys = first.names.size();
    for (const OrderKey &key : select.order) {
        const QString name = u"_o"_s + QString::number(first.order.size());
        first.names.append(name);
        first.values.append(sortable(*key.expr));
        first.order.append(key.descending ? name + u" DESC"_s : name);
    }
    return first;
}

QString Generator::FirstRows::list() const
{
    QStringList list;
    for (qsizetype i = 0; i < names.size(); ++i)
        list.append(values[i] + u" AS "_s + names[i]);
    return list.join(u", ");
}

// Selects the cells for the rows that `rows` returns under the names of `first`.
//     SELECT TOP 2 id FROM t ORDER BY b
//     WITH "top.1" AS MATERIALIZED (SELECT _s1."id" AS _t0, _s1."b" AS _o0 FROM "t" AS _s1 ORDER BY _o0 LIMIT 2),
//         "last.1" AS MATERIALIZED (SELECT _o0 FROM "top.1" ORDER BY _o0 DESC LIMIT 1) SELECT _t0 FROM (SELECT * FROM
//         "top.1" WHERE _o0 IS NOT (SELECT _o0 FROM "last.1") UNION ALL SELECT _s1."id", _s1."b" FROM "t" AS _s1 WHERE
//         _s1."b" IS (SELECT _o0 FROM "last.1")) ORDER BY _o0, _t0
QString Generator::cellsOfRowsText(const Select &select, const FirstRows &first, const QString &rows,
                                   const QStringList &order, Shape shape)
{
    const QString sorted = shape == Shape::Subquery ? QString() : QString(u" ORDER BY "_s + order.join(u", "));
    if (shape == Shape::Keys)
        return u"SELECT "_s + first.names.first(first.keys).join(u", ") + u" FROM "_s + rows + sorted;
    // If `rows` contains all cells, the tables are not read again. In comparisons only a key (a number) can replace the
    // field: other values would lose the field's collation.
    QStringList cells;
    const qsizetype usable = shape == Shape::Plain ? first.names.size() : shape == Shape::Subquery ? first.keys : 0;
    for (const OutputColumn &column : select.columns) {
        const qsizetype index = column.expr->as<FieldRef>() ? first.values.indexOf(value(*column.expr).text) : -1;
        if (index >= 0 && index < usable)
            cells.append(first.names[index]);
    }
    if (cells.size() == qsizetype(select.columns.size()))
        return u"SELECT "_s + cells.join(u", ") + u" FROM "_s + rows + sorted;
    return rowsByKeyText(select, rows, shape) + sorted;
}

// Selects the cells of the rows whose keys `rows` returns as _t0 and so on.
QString Generator::rowsByKeyText(const Select &select, const QString &rows, Shape shape)
{
    // No table is inside a parenthesised join here.
    const auto grouped = std::exchange(m_grouped, {});
    QString from = rows + u" AS _first"_s;
    int index = 0;
    for (const Source *source : keySources(select))
        from += (source->nullable ? u" LEFT JOIN "_s : u" CROSS JOIN "_s) + leafText(*source) + u" ON "_s +
                keyText(*source) + u" = _t"_s + QString::number(index++);
    QStringList cells = cellsOf(select, shape);
    m_grouped = grouped;
    for (qsizetype i = 0; shape == Shape::Nested && i < cells.size(); ++i)
        cells[i] += u" AS "_s + m_target.columnPrefix + QString::number(i);
    return u"SELECT "_s + cells.join(u", ") + u" FROM "_s + from;
}

// TOP in a correlated subquery: finds the order values of the n-th row, then the rows that do not sort after it.
//     SELECT a FROM t WHERE a IN (SELECT TOP 2 b FROM v WHERE v.a = t.b ORDER BY b DESC)
//     SELECT _s1."a" FROM "t" AS _s1 WHERE _s1."a" IN (SELECT _s2."b" AS _c0 FROM (SELECT _o0 FROM (SELECT _s2."b" AS
//         _o0 FROM "v" AS _s2 WHERE (_s2."a" = _s1."b") ORDER BY _o0 DESC LIMIT 2) ORDER BY _o0 LIMIT 1) AS _last1
//         CROSS JOIN "v" AS _s2 WHERE (_s2."b" > _last1._o0 OR (_last1._o0 IS NULL AND _s2."b" IS NOT NULL) OR _s2."b"
//         IS _last1._o0) AND (_s2."a" = _s1."b")) ORDER BY _s1."id"
QString Generator::firstOfGroupText(const Select &select, const QStringList &cells)
{
    const QString last = u"_last"_s + QString::number(++m_derived);
    QStringList list;
    QStringList names;
    QStringList order;
    QStringList reversed;
    QString notBehind;
    for (size_t i = select.order.size(); i-- > 0;) {
        const OrderKey &key = select.order[i];
        const QString name = u"_o"_s + QString::number(i);
        const QString value = sortable(*key.expr);
        const QString bound = last + u'.' + name;
        const QString missing = key.descending ? bound : value;
        const QString present = key.descending ? value : bound;
        list.prepend(value + u" AS "_s + name);
        names.prepend(name);
        order.prepend(key.descending ? name + u" DESC"_s : name);
        reversed.prepend(key.descending ? name : name + u" DESC"_s);
        // Null sorts before all other values.
        const QString before = value + (key.descending ? u" > "_s : u" < "_s) + bound + u" OR ("_s + missing +
                               u" IS NULL AND "_s + present + u" IS NOT NULL)"_s;
        const QString same = joined(value + u" IS "_s + bound, notBehind);
        notBehind = select.top->count <= 1 ? same : u'(' + before + u" OR "_s + same + u')';
    }
    const QString from = fromText(select);
    const QString where = inAnd(whereText(select));
    const QString rows = u"SELECT "_s + list.join(u", ") + u" FROM "_s + from +
                         (where.isEmpty() ? where : QString(u" WHERE "_s + where)) + u" ORDER BY "_s +
                         order.join(u", ") + m_target.limit + QString::number(qint64(select.top->count));
    QStringList output = cells;
    for (qsizetype i = 0; i < output.size(); ++i)
        output[i] += u" AS "_s + m_target.columnPrefix + QString::number(i);
    return u"SELECT "_s + output.join(u", ") + u" FROM (SELECT "_s + names.join(u", ") + u" FROM ("_s + rows +
           u") ORDER BY "_s + reversed.join(u", ") + m_target.limit + u"1) AS "_s + last + u" CROSS JOIN "_s + from +
           u" WHERE "_s + joined(notBehind, where);
}

} // namespace dao::sql::generate
