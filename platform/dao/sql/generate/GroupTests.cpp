#include "Correlation.h"
#include "Generator.h"
#include "Rank.h"

using namespace Qt::StringLiterals;

// Tests of a row against the other rows of its group, written as a correlated subquery that runs once per row. If the
// groups are those of one table by equal fields, the subquery is replaced by one that runs once for all groups.

namespace dao::sql::generate {

using namespace bound;

void Generator::noteTests(const Select &select)
{
    forEachTerm(select.where, [&](const ExprPtr &term) {
        if (const InQuery *test = term->as<InQuery>())
            m_tests.insert(test, &select);
    });
}

//     SELECT a FROM t WHERE a IN (SELECT a FROM t AS x GROUP BY a, b HAVING Count(*) > 1 AND b = t.b)
//     SELECT _s1."a" FROM "t" AS _s1 WHERE (_s1."a", _s1."b") IN (SELECT _s2."a", _s2."b" FROM "t" AS _s2 GROUP BY
//         _s2."b", _s2."a" HAVING count(*) > 1) ORDER BY _s1."id"
// Empty: the test is none of those.
QString Generator::groupTestText(const InQuery &node, const Select &around)
{
    const std::optional<GroupTest> test = groupTestOf(node, around);
    if (!test)
        return {};
    if (test->ofKey)
        return sortable(*node.operand) + u" IN ("_s + groupsText(*node.query->singleSelect(), *test) + u')';
    QStringList row{sortable(*node.operand)};
    for (const GroupTest::Pair &pair : test->pairs)
        row.append(sortable(*pair.outer));
    return u'(' + row.join(u", ") + u") IN ("_s + groupsText(*node.query->singleSelect(), *test) + u')';
}

// A test of a unique key, as in this example, finds the row itself: only the key is compared, and Null groups are
// excluded.
//     SELECT a FROM t WHERE id IN (SELECT TOP 2 id FROM t AS x WHERE x.a = t.a ORDER BY b DESC)
//     SELECT _s1."a" FROM "t" AS _s1 WHERE _s1."id" IN (SELECT _c0 FROM (SELECT _s2."id" AS _c0, rank() OVER (PARTITION
//         BY _s2."a" ORDER BY _s2."b" DESC) AS _rank FROM "t" AS _s2 WHERE _s2."a" IS NOT NULL) WHERE _rank <= 2) ORDER
//         BY _s1."id"
QString Generator::groupsText(const Select &inner, const GroupTest &test)
{
    QStringList fields;
    QStringList rowFields;
    QStringList conditions;
    for (const GroupTest::Pair &pair : test.pairs) {
        fields.append(value(*pair.inner).text);
        const FieldRef &field = *pair.inner->as<FieldRef>();
        if (test.ofKey && !field.source->table->fields[field.field].required)
            conditions.append(fields.back() + u" IS NOT NULL"_s);
        rowFields.append(value(*pair.outer).text);
    }
    const QString from = u" FROM "_s + fromText(inner);
    if (!test.where.empty())
        conditions.append(u'(' + allText(test.where) + u')');
    if (!test.filter.empty()) {
        const Source &row = *test.pairs.front().outer->as<FieldRef>()->source;
        conditions.append(u'(' + fields.join(u", ") + u") IN (SELECT "_s + rowFields.join(u", ") + u" FROM "_s +
                          leafText(row) + u" WHERE "_s + allText(test.filter) + u')');
    }
    const QString rest = from + (conditions.isEmpty() ? QString() : u" WHERE "_s + conditions.join(u" AND "));
    const QString cell = value(*inner.columns.front().expr).text;
    if (!inner.top) {
        QStringList groups = fields;
        for (const ExprPtr &key : inner.groupBy)
            groups.append(key->as<Literal>() ? u"NULL"_s : sortable(*key));
        groups.removeDuplicates();
        return u"SELECT "_s + cell + u", "_s + fields.join(u", ") + rest + u" GROUP BY "_s + groups.join(u", ") +
               (test.having.empty() ? QString() : u" HAVING "_s + allText(test.having));
    }
    QStringList names{u"_c0"_s};
    QStringList list{cell + u" AS _c0"_s};
    for (qsizetype i = 0; i < fields.size() && !test.ofKey; ++i) {
        names.append(u"_g"_s + QString::number(i));
        list.append(fields[i] + u" AS "_s + names.back());
    }
    QStringList order;
    for (const OrderKey &key : inner.order)
        order.append(orderKeyText(key));
    return u"SELECT "_s + names.join(u", ") + u" FROM (SELECT "_s + list.join(u", ") +
           u", rank() OVER (PARTITION BY "_s + fields.join(u", ") + u" ORDER BY "_s + order.join(u", ") +
           u") AS _rank"_s + rest + u") WHERE _rank <= "_s + QString::number(qint64(inner.top->count));
}

} // namespace dao::sql::generate
