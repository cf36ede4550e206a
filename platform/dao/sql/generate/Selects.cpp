#include "Correlation.h"
#include "Generator.h"
#include "Rank.h"

#include <dao/sql/bind/Types.h>

#include <algorithm>
#include <QScopedValueRollback>
#include <QScopeGuard>

using namespace Qt::StringLiterals;

namespace dao::sql::generate {
namespace {

using namespace bound;

// Capacity for the text of a select, so that it seldom has to grow.
constexpr qsizetype kUsualLength = 500;

bool isPlainJoin(const JoinTree &from)
{
    return from.source || (from.kind == JoinKind::Inner && isPlainJoin(*from.left) && isPlainJoin(*from.right));
}

bool hasRightJoin(const JoinTree &from)
{
    return !from.source && (from.kind == JoinKind::Right || hasRightJoin(*from.left) || hasRightJoin(*from.right));
}

QStringView joinText(JoinKind kind)
{
    return kind == JoinKind::Left ? u" LEFT JOIN " : kind == JoinKind::Right ? u" RIGHT JOIN " : u" JOIN ";
}

/// Adds the word and the items to a text, if there are items.
void addList(QString &text, QStringView word, const QStringList &items)
{
    if (items.isEmpty())
        return;
    text += word;
    for (qsizetype i = 0; i < items.size(); ++i) {
        if (i > 0)
            text += u", ";
        text += items[i];
    }
}

} // namespace

QString Generator::aliasOf(const Source &source) const
{
    if (m_aliases.size() <= source.number)
        m_aliases.resize(source.number + 1);
    QString &alias = m_aliases[source.number];
    if (alias.isEmpty())
        alias = m_target.sourcePrefix + QString::number(source.number);
    return alias;
}

QString Generator::keyText(const Source &source) const
{
    if (m_grouped.contains(source.number))
        return aliasOf(source) + u'.' + m_target.keyPrefix;
    return qualifiedName(aliasOf(source), source.table->keyColumn);
}

QString Generator::queryText(const Query &query, Shape shape)
{
    const QScopedValueRollback outsideCells(m_noting, false);
    return withCommon([&] { return partsText(query, shape); });
}

// Queries in the WITH clause can be named anywhere in the text.
QString Generator::withCommon(const std::function<QString()> &write)
{
    if (m_common)
        return write();
    m_common.emplace();
    const QString text = write();
    const QStringList common = *std::exchange(m_common, std::nullopt);
    return common.isEmpty() ? text : QString(u"WITH "_s + common.join(u", ") + u' ' + text);
}

// The text of a subquery. The stack of SQLite's parser admits few nested parentheses, so a query that contains
// subqueries is moved to the WITH clause and referred to by name.
//     SELECT a FROM t WHERE a IN (SELECT a FROM v WHERE b IN (SELECT b FROM v AS x))
//     WITH "query.1" AS (SELECT _s2."a" FROM "v" AS _s2 WHERE _s2."b" IN (SELECT _s3."b" FROM "v" AS _s3)) SELECT
//         _s1."a" FROM "t" AS _s1 WHERE _s1."a" IN (SELECT * FROM "query.1") ORDER BY _s1."id"
QString Generator::embedded(const Query &query, Shape shape)
{
    if (!m_common || !nests(query) || !isUncorrelated(query))
        return queryText(query, shape);
    const QString text = queryText(query, shape);
    const QString name = quotedName(
        QString(u"query."_s + QString::number(++m_derived))); // table names contain no dot, so this name is free
    m_common->append(name + u" AS ("_s + text + u')');
    return u"SELECT * FROM "_s + name;
}

//     SELECT a FROM t UNION SELECT b FROM v ORDER BY a
//     SELECT _s1."a" AS _c0 FROM "t" AS _s1 UNION SELECT _s2."b" AS _c0 FROM "v" AS _s2 ORDER BY 1
QString Generator::partsText(const Query &query, Shape shape)
{
    if (const Select *single = query.singleSelect())
        return selectText(*single, shape);
    QString text;
    for (const QueryPart &part : query.parts) {
        if (!text.isEmpty())
            text += part.all ? u" UNION ALL "_s : u" UNION "_s;
        // The first part determines the column names and collations of a compound SELECT.
        const bool plain = part.select && !part.select->top;
        const QString inner =
            part.select ? selectText(*part.select, Shape::Nested) : queryText(*part.nested, Shape::Nested);
        text += plain ? inner : u"SELECT * FROM ("_s + inner + u')';
    }
    QStringList order;
    for (const OrderKey &key : query.order)
        order.append(QString::number(key.output + 1) + (key.descending ? u" DESC"_s : QString()));
    addList(text, u" ORDER BY ", order);
    return text;
}

// The select list of a shape: 1 for EXISTS, the row keys for Keys, else the columns.
//     SELECT 1 AS x FROM t HAVING Count(*) > 1
//     SELECT CASE WHEN count(*) >= 0 THEN 1 END FROM "t" AS _s1 HAVING count(*) > 1
QStringList Generator::cellsOf(const Select &select, Shape shape)
{
    QStringList cells;
    if (shape == Shape::Exists)
        return {u"1"_s};
    if (shape == Shape::Keys) {
        for (const Source *source : keySources(select))
            cells.append(keyText(*source));
        return cells;
    }
    // Duplicates are compared without case.
    const bool compares = select.distinct || shape == Shape::Nested;
    for (size_t i = 0; i < select.columns.size(); ++i)
        cells.append(cellText(select, i, compares));
    // SQLite accepts HAVING without GROUP BY only if the select list has an aggregate.
    const bool lacksAggregate =
        select.having && select.groupBy.empty() &&
        std::ranges::none_of(select.columns, [](const OutputColumn &column) { return hasAggregate(*column.expr); });
    if (lacksAggregate)
        cells.front() = u"CASE WHEN count(*) >= 0 THEN "_s + cells.front() + u" END"_s;
    return cells;
}

// One SELECT without the parts of a UNION. Nested: its columns are named _c0, _c1 ... for the outer query.
//     SELECT DISTINCT c FROM t WHERE a > 1 ORDER BY c
//     SELECT DISTINCT _s1."c" FROM "t" AS _s1 WHERE _s1."a" > 1 ORDER BY 1
QString Generator::selectText(const Select &select, Shape shape)
{
    const auto restore = qScopeGuard([this, outside = m_grouped] { m_grouped = outside; });
    for (const auto &source : select.sources)
        m_grouped.remove(source->number);
    markGrouped(select);
    notePruned(select, shape);
    noteHashes(select);
    if (select.top && !select.order.empty() && mayTie(select))
        return topText(select, shape);
    const QStringList cells = cellsOf(select, shape);
    // TOP n PERCENT needs the number of rows. Counting with a copy of the query would double the text at each nesting
    // level.
    const bool shareOfQuery = select.top && select.top->percent &&
                              ((select.where && hasSubquery(*select.where)) ||
                               std::ranges::any_of(select.sources, [](const auto &source) { return !source->table; }));
    if (shareOfQuery)
        return rankedText(select, cells).whole();
    QStringList named = cells;
    if (shape == Shape::Nested) {
        for (qsizetype i = 0; i < named.size(); ++i)
            named[i] += u" AS "_s + m_target.columnPrefix + QString::number(i);
    }
    QString text;
    text.reserve(kUsualLength);
    addList(text, select.distinct ? u"SELECT DISTINCT " : u"SELECT ", named);
    const qsizetype listEnd = text.size();
    addFromToHaving(text, select);
    addList(text, u" ORDER BY ", orderOf(select, shape));
    text += limitText(select, cells);
    // The texts of keys and of rows have the same parts, unless parts have names that are unique in their text or a
    // table has another form here.
    const bool isRepeatable = m_derived == 0 && m_grouped.isEmpty() && m_hashes.isEmpty() && m_pruned.isEmpty();
    if (shape == Shape::Plain && isRepeatable)
        m_written = {.select = &select, .text = text, .listEnd = listEnd};
    return text;
}

// TOP without ORDER BY: any n rows.
//     SELECT TOP 10 PERCENT a FROM t
//     SELECT _s1."a" FROM "t" AS _s1 ORDER BY _s1."id" LIMIT ((SELECT count(*) FROM (SELECT 1 FROM "t" AS _s1)) * 10 +
//         99) / 100
QString Generator::limitText(const Select &select, const QStringList &cells)
{
    if (!select.top)
        return {};
    const QString count = QString::number(qint64(select.top->count));
    if (!select.top->percent)
        return m_target.limit + count;
    // An aggregate without GROUP BY returns one row even if there are no rows.
    const QString rows = select.distinct     ? QString(u"SELECT DISTINCT "_s + cells.join(u", "))
                         : select.aggregated ? u"SELECT count(*)"_s
                                             : u"SELECT 1"_s;
    const QString total = u"(SELECT count(*) FROM ("_s + rows + fromToHaving(select) + u"))"_s;
    return m_target.limit + u'(' + total + u" * "_s + count + u" + 99) / 100"_s;
}

// TOP over rows that have no row key, such as groups: rows are ranked and limited by rank.
//     SELECT TOP 1 a FROM t GROUP BY a ORDER BY Count(*)
//     SELECT _c0 FROM (SELECT *, rank() OVER (ORDER BY _o0) AS _rank FROM (SELECT _s1."a" AS _c0, count(*) AS _o0 FROM
//         "t" AS _s1 GROUP BY _s1."a")) WHERE _rank <= 1 ORDER BY _rank
Generator::Ranked Generator::rankedText(const Select &select, const QStringList &cells)
{
    QStringList inner = cells;
    QStringList outer;
    for (qsizetype i = 0; i < cells.size(); ++i) {
        const QString name = m_target.columnPrefix + QString::number(i);
        inner[i] += u" AS "_s + name;
        outer.append(name);
    }
    QStringList order;
    for (size_t i = 0; i < select.order.size(); ++i) {
        const OrderKey &key = select.order[i];
        QString name = u"_o"_s + QString::number(i);
        if (select.distinct)
            name = m_target.columnPrefix + QString::number(key.output);
        else
            inner.append(sortable(*key.expr) + u" AS "_s + name);
        order.append(key.descending ? name + u" DESC"_s : name);
    }
    QStringList finalOrder{u"_rank"_s};
    const QStringList ties = tieBreakers(select);
    for (qsizetype i = 0; i < ties.size(); ++i) {
        inner.append(ties[i] + u" AS _t"_s + QString::number(i));
        finalOrder.append(u"_t"_s + QString::number(i));
    }
    const QString rows = (select.distinct ? u"SELECT DISTINCT "_s : u"SELECT "_s) + inner.join(u", ");
    return {u"SELECT "_s + outer.join(u", "),
            u" FROM (SELECT *, "_s + rankText(*select.top, order) + u" FROM ("_s + rows,
            fromToHaving(select) + u")) WHERE _rank <= "_s + lastRankText(*select.top) + u" ORDER BY "_s +
                finalOrder.join(u", ")};
}

QString Generator::rankText(const Top &top, const QStringList &order)
{
    const QString rank =
        order.isEmpty() ? u"row_number() OVER ()"_s : QString(u"rank() OVER (ORDER BY "_s + order.join(u", ") + u')');
    return rank + u" AS _rank"_s + (top.percent ? u", count(*) OVER () AS _rows"_s : QString());
}

// The condition on _rank: a number of rows, or a share of them, rounded up.
//     SELECT TOP 10 PERCENT a FROM t GROUP BY a ORDER BY Count(*)
//     SELECT _c0 FROM (SELECT *, rank() OVER (ORDER BY _o0) AS _rank, count(*) OVER () AS _rows FROM (SELECT _s1."a" AS
//         _c0, count(*) AS _o0 FROM "t" AS _s1 GROUP BY _s1."a")) WHERE _rank <= (_rows * 10 + 99) / 100 ORDER BY _rank
QString Generator::lastRankText(const Top &top)
{
    const QString count = QString::number(qint64(top.count));
    return top.percent ? u"(_rows * "_s + count + u" + 99) / 100"_s : count;
}

QString Generator::allText(const std::vector<ExprPtr> &terms)
{
    QStringList texts;
    for (const ExprPtr &term : terms)
        texts.append(terms.size() == 1 ? truth(*term).text : truthAt(*term, rank::And + 1));
    return texts.join(u" AND ");
}

// The conjunction without the word WHERE.
//     SELECT a FROM t WHERE b > 1 AND c IS NULL
//     SELECT _s1."a" FROM "t" AS _s1 WHERE _s1."b" > 1 AND _s1."c" IS NULL ORDER BY _s1."id"
QString Generator::whereText(const Select &select)
{
    // Elsewhere false and unknown can have different results.
    const auto outside = m_tests;
    noteTests(select);
    std::vector<ExprPtr> terms;
    if (!m_numberTests.isEmpty())
        terms = termsOf(select.where);
    const auto isNumberTest = [this](const ExprPtr &term) { return m_numberTests.contains(term->as<Compare>()); };
    QString text;
    if (std::ranges::any_of(terms, isNumberTest)) {
        // Number tests are true for nearly all rows, so they are evaluated last.
        std::stable_partition(terms.begin(), terms.end(), [&](const ExprPtr &term) { return !isNumberTest(term); });
        text = allText(terms);
    } else if (select.where) {
        text = truth(*select.where).text;
    }
    m_tests = outside;
    return text;
}

// A HAVING condition on a group key is true for all rows of a group or for none, so it is moved to WHERE: rows that it
// excludes need not be grouped.
//     SELECT a, Count(*) AS n FROM t GROUP BY a HAVING a > 5 AND Count(*) > 1
//     SELECT _s1."a", count(*) FROM "t" AS _s1 WHERE _s1."a" > 5 GROUP BY _s1."a" HAVING count(*) > 1
QString Generator::fromToHaving(const Select &select)
{
    QString text;
    addFromToHaving(text, select);
    return text;
}

void Generator::addFromToHaving(QString &text, const Select &select)
{
    if (!select.from.empty()) {
        text += u" FROM ";
        text += fromText(select);
    }
    QString condition = whereText(select);
    std::vector<ExprPtr> ofKeys;
    std::vector<ExprPtr> ofGroups;
    forEachTerm(select.having,
                [&](const ExprPtr &term) { (isConditionOnKey(*term, select) ? ofKeys : ofGroups).push_back(term); });
    if (!ofKeys.empty())
        condition =
            condition.isEmpty() ? allText(ofKeys) : QString(u'(' + condition + u") AND ("_s + allText(ofKeys) + u')');
    if (&select == m_cancellableSelect)
        condition = cancellable(condition);
    if (!condition.isEmpty()) {
        text += u" WHERE ";
        text += condition;
    }
    QStringList groups;
    for (const ExprPtr &key : select.groupBy) {
        // GROUP BY and ORDER BY treat an integer constant as a column number.
        groups.append(key->as<Literal>() ? u"NULL"_s : sortable(*key));
    }
    for (const Source *source : select.rowSources)
        groups.append(keyText(*source));
    addList(text, u" GROUP BY ", groups);
    if (!ofGroups.empty())
        text += u" HAVING "_s + allText(ofGroups);
}

// The comma-separated joins of FROM.
//     SELECT t.a FROM t, v WHERE t.id = v.a
//     SELECT _s1."a" FROM "t" AS _s1, "v" AS _s2 WHERE _s1."id" = _s2."a" ORDER BY _s1."id", _s2."rowid"
QString Generator::fromText(const Select &select)
{
    QString text;
    for (const JoinTreePtr &all : select.from) {
        const JoinTreePtr from = withoutPruned(all);
        if (from && text.isEmpty())
            text = fromText(*from, false);
        else if (from)
            text += u", " + fromText(*from, hasRightJoin(*from));
    }
    return text;
}

//     SELECT t.a FROM t, (u RIGHT JOIN v ON u.k = v.a)
//     SELECT _s1."a" FROM "t" AS _s1, ((SELECT "rowid" AS _k, * FROM "u") AS _s2 RIGHT JOIN (SELECT "rowid" AS _k, *
//         FROM "v") AS _s3 ON _s2."k" = _s3."a") ORDER BY _s1."id", _s2._k, _s3._k
QString Generator::fromText(const JoinTree &from, bool grouped)
{
    if (from.source)
        return leafText(*from.source);
    if (grouped)
        return u'(' + fromText(from, false) + u')';
    // Inner joins on the right side of an inner join need no parentheses: their conditions move to the last one.
    const bool linear = from.kind == JoinKind::Inner && isPlainJoin(*from.right) && !from.right->source;
    QString text = fromText(*from.left, false) + joinText(from.kind);
    if (!linear) {
        text += fromText(*from.right, !from.right->source);
        return from.on ? text + u" ON "_s + truth(*from.on).text : text;
    }
    QStringList conditions;
    if (from.on)
        conditions.append(truthAt(*from.on, rank::Not));
    QStringList leaves;
    const std::function<void(const JoinTree &)> flatten = [&](const JoinTree &part) {
        if (part.source) {
            leaves.append(leafText(*part.source));
            return;
        }
        flatten(*part.left);
        flatten(*part.right);
        if (part.on)
            conditions.append(truthAt(*part.on, rank::Not));
    };
    flatten(*from.right);
    text += leaves.join(joinText(JoinKind::Inner));
    return conditions.isEmpty() ? text : text + u" ON "_s + conditions.join(u" AND ");
}

void Generator::markGrouped(const Select &select)
{
    for (const JoinTreePtr &from : select.from)
        markGrouped(*from, from != select.from.front() && hasRightJoin(*from));
}

// SQLite hides the row key of tables inside a parenthesised join, so it is selected under another name.
void Generator::markGrouped(const JoinTree &from, bool inside)
{
    if (from.source) {
        if (inside && from.source->table)
            m_grouped.insert(from.source->number);
        return;
    }
    const bool linear = from.kind == JoinKind::Inner && isPlainJoin(*from.right);
    markGrouped(*from.left, inside);
    markGrouped(*from.right, inside || (!from.right->source && !linear));
}

// A table, or a nested query in parentheses.
//     SELECT x.n, t.a FROM t INNER JOIN (SELECT DISTINCT a AS n FROM v) AS x ON t.id = x.n
//     SELECT _s3._c0, _s1."a" FROM "t" AS _s1 JOIN (SELECT DISTINCT _s2."a" AS _c0 FROM "v" AS _s2) AS _s3 ON _s1."id"
//         = _s3._c0 ORDER BY _s1."id"
QString Generator::leafText(const Source &source)
{
    if (!source.table && m_keepsFailures)
        show(*source.query);
    if (!source.table)
        return u'(' + embedded(*source.query, Shape::Nested) + u") AS "_s + aliasOf(source);
    if (m_grouped.contains(source.number) && m_hashes.contains(source.number))
        return hashedLeafText(source);
    if (m_grouped.contains(source.number))
        return u"(SELECT "_s + quotedName(source.table->keyColumn) + u" AS "_s + m_target.keyPrefix + u", * FROM "_s +
               quotedName(source.table->name) + u") AS "_s + aliasOf(source);
    return quotedName(source.table->name) + u" AS "_s + aliasOf(source) + (m_isIndexed ? QString() : u" NOT INDEXED"_s);
}

QString Generator::orderKeyText(const OrderKey &key)
{
    return sortable(*key.expr) + (key.descending ? u" DESC"_s : QString());
}

// The requested order, then the row keys of the tables, so that the order of equal rows is repeatable.
//     SELECT a FROM t ORDER BY b DESC
//     SELECT _s1."a" FROM "t" AS _s1 ORDER BY _s1."b" DESC, _s1."id"
QStringList Generator::orderOf(const Select &select, Shape shape)
{
    QStringList order;
    const bool matters = shape == Shape::Plain || shape == Shape::Keys || select.top;
    if (!matters)
        return order;
    for (const OrderKey &key : select.order) {
        // A constant has no effect on the order and would be treated as a column number.
        if (!select.distinct && key.expr->as<Literal>())
            continue;
        order.append(select.distinct ? QString::number(key.output + 1) + (key.descending ? u" DESC"_s : QString())
                                     : orderKeyText(key));
    }
    return order + tieBreakers(select);
}

// The row keys; none where a row is not one row of the tables.
//     SELECT t.a FROM t LEFT JOIN v ON t.id = v.a
//     SELECT _s1."a" FROM "t" AS _s1 LEFT JOIN "v" AS _s2 ON _s1."id" = _s2."a" ORDER BY _s1."id", _s2."rowid"
QStringList Generator::tieBreakers(const Select &select) const
{
    QStringList keys;
    if (select.aggregated || select.distinct)
        return keys;
    for (const Source *source : keySources(select))
        keys.append(keyText(*source));
    return keys;
}

} // namespace dao::sql::generate
