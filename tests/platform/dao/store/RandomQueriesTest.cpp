#include "Fixture.h"

#include <QSet>
#include <random>

using namespace Qt::StringLiterals;
using namespace dao;
using Type = Recordset::Type;

// Property tests with random queries over random rows. A failure reports the seed and the query; the seed reproduces
// both.

namespace {

class Maker
{
public:
    explicit Maker(unsigned seed)
        : m_random(seed)
    {
    }

    int number(int below) { return int(m_random() % unsigned(below)); }
    bool chance(int percent) { return number(100) < percent; }
    QString one(const QStringList &list) { return list[number(int(list.size()))]; }

    QString text()
    {
        return one({u"'a'"_s, u"'A'"_s, u"'b'"_s, u"'ab'"_s, u"'aB'"_s, u"'AB'"_s, u"'é'"_s, u"'É'"_s, u"'z '"_s,
                    u"'12'"_s, u"'it''s'"_s, u"'%'"_s, u"'_'"_s});
    }
    QString whole() { return QString::number(number(13) - 4); }
    QString real() { return one({u"0"_s, u"1.5"_s, u"-2.25"_s, u"1E3"_s, u"0.1"_s}); }
    QString date() { return u"#%1/%2/2003 %3:00#"_s.arg(1 + number(3)).arg(1 + number(5)).arg(number(2) * 12); }
    QString truth() { return one({u"True"_s, u"False"_s}); }
    QString orNull(const QString &value, int percent = 25) { return chance(percent) ? u"Null"_s : value; }

    /// A random field of that kind from the tables in FROM.
    QString field(const QString &kind) { return one(m_tables) + u'.' + kind; }
    void setTables(const QStringList &aliases) { m_tables = aliases; }

    QString wholeValue(int depth)
    {
        if (depth <= 0 || chance(60))
            return chance(70) ? field(one({u"id"_s, u"k"_s})) : whole();
        switch (number(5)) {
        case 0:
            return u"Len("_s + field(u"t"_s) + u')';
        case 1:
            return u"IIf("_s + condition(depth - 1) + u", "_s + wholeValue(depth - 1) + u", "_s + whole() + u')';
        case 2:
            return u"Nz("_s + field(u"k"_s) + u", "_s + whole() + u')';
        default:
            return u'(' + wholeValue(depth - 1) + one({u" + "_s, u" - "_s, u" * "_s}) + wholeValue(depth - 1) + u')';
        }
    }

    QString condition(int depth)
    {
        if (depth > 0 && chance(55)) {
            switch (number(6)) {
            case 0:
                return u"Not ("_s + condition(depth - 1) + u')';
            case 1:
                return u'(' + condition(depth - 1) + one({u" Xor "_s, u" Eqv "_s, u" Imp "_s}) + condition(depth - 1) +
                       u')';
            default:
                return u'(' + condition(depth - 1) + one({u" And "_s, u" Or "_s}) + condition(depth - 1) + u')';
            }
        }
        const QString compare = one({u" = "_s, u" <> "_s, u" < "_s, u" >= "_s});
        switch (number(12)) {
        case 0:
            return field(u"t"_s) + compare + text();
        case 1:
            return field(u"t"_s) + u" Like "_s +
                   one({u"'a*'"_s, u"'?b'"_s, u"'*'"_s, u"'[a-b]*'"_s, u"'#*'"_s, u"'%'"_s});
        case 2:
            return field(u"d"_s) + compare + date();
        case 3:
            return field(u"d"_s) + u" Between "_s + date() + u" And "_s + date();
        case 4:
            return field(u"f"_s) + compare + real();
        case 5:
            return field(u"b"_s);
        case 6:
            return field(one({u"k"_s, u"t"_s, u"d"_s, u"f"_s})) + u" Is "_s + one({QString(), u"Not "_s}) + u"Null"_s;
        case 7:
            return field(u"t"_s) + one({u" In ("_s, u" Not In ("_s}) + text() + u", "_s + text() + u')';
        case 8:
            return wholeValue(1) + one({u" In "_s, u" Not In "_s}) + u"(SELECT k FROM u WHERE "_s +
                   one({u"k > 2"_s, u"k Is Not Null"_s, u"t = 'a'"_s}) + u')';
        case 9:
            return u"Exists (SELECT * FROM u AS inner_u WHERE inner_u.k = "_s + field(u"k"_s) + u')';
        case 10:
            return field(u"t"_s) + compare + field(u"t"_s);
        default:
            return wholeValue(2) + compare + wholeValue(2);
        }
    }

    QString source()
    {
        switch (number(6)) {
        case 0:
            setTables({u"t"_s, u"u"_s});
            return u"t INNER JOIN u ON t.id = u.k"_s;
        case 1:
            setTables({u"t"_s, u"u"_s});
            return u"t LEFT JOIN u ON t.k = u.id"_s;
        case 2:
            setTables({u"t"_s, u"u"_s});
            return u"u RIGHT JOIN t ON t.k = u.id"_s;
        case 3:
            setTables({u"s"_s});
            return one({u"(SELECT * FROM t WHERE k > 0) AS s"_s, u"(SELECT TOP 12 * FROM t ORDER BY k, id) AS s"_s,
                        u"stored AS s"_s});
        default:
            setTables({u"t"_s});
            return u"t"_s;
        }
    }

    /// Rows of tables, one by one.
    QString plainQuery()
    {
        const QString from = source();
        QStringList list;
        for (const QString &table : m_tables)
            list.append(table + u".*"_s);
        if (chance(40))
            list.append(wholeValue(2) + u" AS computed"_s);
        QString sql = u"SELECT "_s + (chance(20) ? u"TOP %1 "_s.arg(1 + number(20)) : QString()) + list.join(u", "_s) +
                      u" FROM "_s + from;
        if (chance(75))
            sql += u" WHERE "_s + condition(3);
        return sql + order();
    }

    QString groupedQuery()
    {
        const QString from = source();
        const QString key = field(one({u"t"_s, u"b"_s, u"k"_s, u"d"_s}));
        const QString where = chance(60) ? u" WHERE "_s + condition(2) : QString();
        if (chance(30))
            return u"SELECT DISTINCT "_s + key + u", "_s + field(u"b"_s) + u" AS other FROM "_s + from + where;
        return u"SELECT UCase("_s + key + u") AS g, Count(*) AS n, Sum("_s + field(u"k"_s) + u") AS s, Max("_s +
               field(u"f"_s) + u") AS m FROM "_s + from + where + u" GROUP BY "_s + key +
               (chance(30) ? u" HAVING Count(*) > 1"_s : QString());
    }

    QString order() { return chance(60) ? u" ORDER BY "_s + orderKeys().join(u", "_s) : QString(); }

    QStringList orderKeys()
    {
        QStringList keys;
        for (int i = 0; i <= number(3); ++i)
            keys.append(field(one({u"t"_s, u"k"_s, u"d"_s, u"f"_s, u"b"_s})) + one({QString(), u" DESC"_s}));
        keys.removeDuplicates();
        return keys;
    }

private:
    std::mt19937 m_random;
    QStringList m_tables;
};

QString folded(const QString &text)
{
    QString result = text;
    for (QChar &c : result) {
        if (c >= u'A' && c <= u'Z')
            c = c.toLower();
    }
    return result;
}

} // namespace

class RandomQueriesTest : public StoreTest, public ::testing::WithParamInterface<int>
{
protected:
    static constexpr int queriesPerSeed = 40;

    RandomQueriesTest()
        : maker(unsigned(GetParam()))
    {
        indexed.create(path(u"indexed.mdb"_s), {});
        const int count = 30 + maker.number(40);
        for (Database *each : {&database, &indexed}) {
            for (const QString &name : {u"t"_s, u"u"_s})
                each->execute(u"CREATE TABLE "_s + name +
                              u" (id COUNTER PRIMARY KEY, k LONG, t TEXT(10), d DATETIME, f DOUBLE, b BIT)"_s);
            each->createQuery({u"stored"_s, u"SELECT * FROM t WHERE b Or k Is Null ORDER BY t"_s});
        }
        Transaction transaction(workspace);
        Transaction otherTransaction(otherWorkspace);
        for (int i = 0; i < count; ++i) {
            const QString insert = u"INSERT INTO %1 (k, t, d, f, b) VALUES (%2)"_s.arg(
                maker.one({u"t"_s, u"u"_s}),
                QStringList{maker.orNull(maker.whole()), maker.orNull(maker.text()), maker.orNull(maker.date()),
                            maker.orNull(maker.real()), maker.truth()}
                    .join(u", "_s));
            database.execute(insert);
            indexed.execute(insert);
        }
        transaction.commit();
        otherTransaction.commit();
        for (const QString &sql :
             {u"CREATE INDEX k ON t (k)"_s, u"CREATE INDEX tk ON t (t, k DESC)"_s, u"CREATE INDEX d ON t (d)"_s,
              u"CREATE INDEX bf ON t (b, f)"_s, u"CREATE INDEX k ON u (k)"_s, u"CREATE INDEX t ON u (t)"_s})
            indexed.execute(sql);
        indexed.analyze();
    }

    /// The rows of a query in order, or the error it gives.
    QStringList read(Database &from, const QString &sql, Type type)
    {
        QStringList found;
        try {
            Recordset set(from);
            for (set.open(type, sql); !set.isEof(); set.moveNext()) {
                QStringList cells;
                for (int i = 0; i < set.fieldCount(); ++i)
                    cells.append(textOf(set.value(i)));
                found.append(cells.join(u'|'));
            }
        } catch (const DaoException &e) {
            return {u"error %1 %2"_s.arg(QString::number(e.number()), e.description())};
        }
        return found;
    }
    qint64 count(const QString &from, const QString &condition)
    {
        const QStringList found =
            read(database,
                 u"SELECT Count(*) AS n FROM "_s + from + (condition.isEmpty() ? QString() : u" WHERE "_s + condition),
                 Type::Snapshot);
        bool ok = false;
        const qint64 number = found.value(0).toLongLong(&ok);
        EXPECT_TRUE(ok) << found.join(u' ').toStdString();
        return number;
    }

    /// The first rows of an ordered list and those that tie, by the number of leading key cells.
    static QStringList firstOf(const QStringList &all, qsizetype count, qsizetype keys)
    {
        const auto key = [&](qsizetype row) { return folded(all[row].section(u'|', 0, int(keys) - 1)); };
        while (count > 0 && count < all.size() && key(count) == key(count - 1))
            ++count;
        return all.first(qMin(count, all.size()));
    }
    /// Equivalent statements must give equal rows, with and without indexes.
    void expectSame(const QString &sql, const QString &otherSql)
    {
        QStringList expected = read(database, otherSql, Type::Snapshot);
        EXPECT_FALSE(expected.value(0).startsWith(u"error"_s)) << expected.value(0).toStdString();
        expected.sort();
        for (Database *each : {&database, &indexed}) {
            QStringList found = read(*each, sql, Type::Dynaset);
            found.sort();
            EXPECT_EQ(found, expected) << "seed " << GetParam() << ": " << sql.toStdString();
        }
    }

    Workspace otherWorkspace;
    Database indexed{otherWorkspace};
    Maker maker;
};

TEST_P(RandomQueriesTest, ADynasetGivesTheRowsOfASnapshot)
{
    for (int i = 0; i < queriesPerSeed; ++i) {
        const QString sql = maker.chance(75) ? maker.plainQuery() : maker.groupedQuery();
        const QStringList snapshot = read(database, sql, Type::Snapshot);
        EXPECT_FALSE(snapshot.value(0).startsWith(u"error"_s)) << sql.toStdString() << '\n'
                                                               << snapshot[0].toStdString();
        EXPECT_EQ(read(database, sql, Type::Dynaset), snapshot) << "seed " << GetParam() << ": " << sql.toStdString();
    }
}

TEST_P(RandomQueriesTest, AnIndexChangesNoRows)
{
    for (int i = 0; i < queriesPerSeed; ++i) {
        const bool plain = maker.chance(75);
        const QString sql = plain ? maker.plainQuery() : maker.groupedQuery();
        QStringList without = read(database, sql, Type::Snapshot);
        QStringList with = read(indexed, sql, Type::Snapshot);
        if (!plain) {
            // Any spelling of texts that differ only in case can represent the group.
            for (QStringList *rows : {&without, &with}) {
                for (QString &row : *rows)
                    row = folded(row);
                rows->sort();
            }
        }
        EXPECT_EQ(with, without) << "seed " << GetParam() << ": " << sql.toStdString();
    }
}

TEST_P(RandomQueriesTest, AConditionItsOppositeAndTheUnknownShareTheRows)
{
    for (int i = 0; i < queriesPerSeed; ++i) {
        const QString from = maker.source();
        const QString condition = maker.condition(3);
        const qint64 all = count(from, {});
        const qint64 parts = count(from, condition) + count(from, u"Not ("_s + condition + u')') +
                             count(from, u'(' + condition + u") Is Null"_s);
        EXPECT_EQ(parts, all) << "seed " << GetParam() << ": " << from.toStdString() << " WHERE "
                              << condition.toStdString();
    }
}

TEST_P(RandomQueriesTest, TopTakesTheFirstRowsAndThoseThatTie)
{
    for (int i = 0; i < queriesPerSeed; ++i) {
        const QString from = maker.source();
        const QStringList order = maker.orderKeys();
        QStringList keys = order;
        keys.replaceInStrings(u" DESC"_s, QString());
        const bool distinct = maker.chance(25);
        QStringList conditions;
        if (maker.chance(50))
            conditions.append(maker.condition(2));
        if (maker.chance(30))
            conditions.append(maker.field(u"id"_s) + u" IN (SELECT TOP 9 id FROM t AS other ORDER BY k, d DESC)"_s);
        const QString where = conditions.isEmpty() ? QString() : u" WHERE "_s + conditions.join(u" AND "_s);
        const QString others = distinct || maker.chance(30) ? QString() : u", *"_s;
        const QString rows = keys.join(u", "_s) + others + u" FROM "_s + from + where + u" ORDER BY "_s +
                             (distinct ? order.first() : order.join(u", "_s));
        const QString word = distinct ? u"SELECT DISTINCT "_s : u"SELECT "_s;
        const bool percent = maker.chance(25);
        const int top = 1 + maker.number(percent ? 100 : 20);
        const QString sql = word + u"TOP %1 "_s.arg(top) + (percent ? u"PERCENT "_s : QString()) + rows;
        const QStringList all = read(database, word + rows, Type::Snapshot);
        QStringList first = firstOf(all, percent ? (all.size() * top + 99) / 100 : top, distinct ? 1 : order.size());
        for (Database *each : {&database, &indexed}) {
            for (const Type type : {Type::Snapshot, Type::Dynaset}) {
                QStringList found = read(*each, sql, type);
                if (distinct) { // of texts that differ in case any may stand for the others, and ties have no order
                    for (QStringList *list : {&found, &first}) {
                        std::ranges::transform(*list, list->begin(), folded);
                        list->sort();
                    }
                }
                EXPECT_EQ(found, first) << "seed " << GetParam() << ": " << sql.toStdString();
            }
        }
    }
}

TEST_P(RandomQueriesTest, ATestAgainstAGroupIsThatOfEachRow)
{
    for (int i = 0; i < queriesPerSeed; ++i) {
        maker.setTables({u"@"_s});
        const QString group = maker.one({u"k"_s, u"t"_s, u"d"_s, u"b"_s});
        const QString key = maker.one({u"f"_s, u"k"_s, u"d"_s, u"t"_s});
        const bool descending = maker.chance(50);
        const QString condition = maker.chance(50) ? u" AND "_s + maker.condition(1) : QString();
        const QString outer = maker.chance(50) ? maker.condition(1).replace(u"@."_s, u"t."_s) : u"True"_s;
        const QString of = maker.one({u"t"_s, u"u"_s});
        const auto named = [](QString text, const QString &alias) { return text.replace(u"@."_s, alias + u'.'); };
        const QString before = descending ? u"(y.%1 > x.%1 OR (y.%1 Is Not Null AND x.%1 Is Null))"_s.arg(key)
                                          : u"(y.%1 < x.%1 OR (y.%1 Is Null AND x.%1 Is Not Null))"_s.arg(key);
        const int top = 1 + maker.number(3);
        expectSame(u"SELECT id FROM t WHERE %1 AND id IN (SELECT TOP %2 x.id FROM %3 AS x WHERE x.%4 = t.%4%5 ORDER "
                   "BY x.%6)"_s.arg(outer, QString::number(top), of, group, named(condition, u"x"_s),
                                    key + (descending ? u" DESC"_s : QString())),
                   u"SELECT id FROM t WHERE %1 AND EXISTS (SELECT * FROM %2 AS x WHERE x.id = t.id AND x.%3 = t.%3%4 "
                   "AND (SELECT Count(*) FROM %2 AS y WHERE y.%3 = x.%3%5 AND %6) < %7)"_s
                       .arg(outer, of, group, named(condition, u"x"_s), named(condition, u"y"_s), before)
                       .arg(top));
        expectSame(
            u"SELECT id FROM t WHERE %1 AND k IN (SELECT k FROM t AS x WHERE True%2 GROUP BY k, %3 HAVING "
            "Count(*) > 1 AND %3 = t.%3)"_s.arg(outer, named(condition, u"x"_s), group),
            u"SELECT id FROM t WHERE %1 AND (SELECT Count(*) FROM t AS x WHERE x.k = t.k AND x.%2 = t.%2%3) > 1"_s.arg(
                outer, group, named(condition, u"x"_s)));
        expectSame(u"SELECT k, Count(*) AS n FROM t GROUP BY k HAVING k > 0 AND Count(*) > 1"_s,
                   u"SELECT k, Count(*) AS n FROM t WHERE k > 0 GROUP BY k HAVING Count(*) > 1"_s);
    }
}

TEST_P(RandomQueriesTest, TextsAreGroupedWithoutCase)
{
    QSet<QString> different;
    for (const QString &each : read(database, u"SELECT t FROM t"_s, Type::Snapshot))
        different.insert(folded(each));
    QSet<QString> distinct;
    const QStringList found = read(database, u"SELECT DISTINCT t FROM t"_s, Type::Dynaset);
    for (const QString &each : found)
        distinct.insert(folded(each));
    EXPECT_EQ(distinct, different);
    EXPECT_EQ(found.size(), different.size());
    EXPECT_EQ(read(indexed, u"SELECT t FROM t UNION SELECT t FROM t"_s, Type::Dynaset).size(), different.size());
    qint64 grouped = 0;
    Recordset groups(database);
    for (groups.open(Type::Dynaset, u"SELECT t, Count(*) AS n FROM t GROUP BY t"_s); !groups.isEof();
         groups.moveNext()) {
        const qint64 n = groups.value(1).integer();
        grouped += n;
        if (groups.value(0).isNull())
            continue;
        const QString literal = groups.value(0).text().replace(u'\'', u"''"_s);
        EXPECT_EQ(count(u"t"_s, u"t = '"_s + literal + u'\''), n) << literal.toStdString();
        EXPECT_EQ(count(u"t"_s, u"t & '' = '"_s + literal + u'\''), n) << literal.toStdString();
    }
    EXPECT_EQ(grouped, count(u"t"_s, {}));
}

TEST_P(RandomQueriesTest, AnUpdateReachesTheRowsThatItsConditionSelects)
{
    for (int i = 0; i < queriesPerSeed / 4; ++i) {
        maker.setTables({u"t"_s});
        const QString condition = maker.condition(2);
        const qint64 selected = count(u"t"_s, condition);
        workspace.beginTrans();
        EXPECT_EQ(database.execute(u"UPDATE t SET f = 4711 WHERE "_s + condition), selected)
            << "seed " << GetParam() << ": " << condition.toStdString();
        EXPECT_EQ(count(u"t"_s, u"f = 4711"_s), selected);
        workspace.rollback();
        workspace.beginTrans();
        EXPECT_EQ(database.execute(u"DELETE FROM t WHERE "_s + condition), selected)
            << "seed " << GetParam() << ": " << condition.toStdString();
        workspace.rollback();
        EXPECT_EQ(count(u"t"_s, condition), selected);
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomQueriesTest, testing::Range(1, 9));
