#include <query/StatementWords.h>
#include <support/DatabaseFixture.h>

using namespace Qt::StringLiterals;
using query::StatementWords;

namespace {

class StatementWordsTest : public support::DatabaseTest
{
protected:
    StatementWordsTest()
    {
        execute(u"CREATE TABLE n (n LONG)"_s);
        for (int i = 1; i <= 25; ++i)
            execute(u"INSERT INTO n (n) VALUES (%1)"_s.arg(i));
        execute(u"INSERT INTO tubes (sec, row, col, x, y, is_periph, is_marked) SELECT 0, a.n, b.n, a.n, b.n, 0, 0 "
                u"FROM n AS a, n AS b"_s);
        execute(u"CREATE TABLE [my calls] (id COUNTER PRIMARY KEY, a LONG, b LONG, name TEXT(20), note MEMO)"_s);
        execute(u"INSERT INTO [my calls] (a, b, name) SELECT row, col, 'x' FROM tubes"_s);
        execute(u"CREATE INDEX by_b ON [my calls] (b)"_s);
    }
    StatementWords words(const QString &sql) { return StatementWords::of(database(), sql); }
};

struct Case
{
    QString sql;
    QString step; ///< is among the steps
    QString create;
};

} // namespace

TEST_F(StatementWordsTest, TellsHowRowsAreFoundAndWhichIndexWouldHelp)
{
    const QString all = u"Reads all of table \"my calls\" (625 rows)."_s;
    for (const Case &c : std::initializer_list<Case>{
             {u"SELECT * FROM [my calls] WHERE a = 3 AND name > 'b'"_s, all,
              u"CREATE INDEX by_a_name ON [my calls] (a, name)"_s},
             {u"SELECT * FROM [my calls] WHERE a BETWEEN 1 AND [last]"_s, all,
              u"CREATE INDEX by_a ON [my calls] (a)"_s},
             {u"DELETE FROM [my calls] WHERE name LIKE 'x*'"_s, all, u"CREATE INDEX by_name ON [my calls] (name)"_s},
             {u"SELECT * FROM [my calls] ORDER BY name"_s, u"Sorts the rows that were found."_s,
              u"CREATE INDEX by_name ON [my calls] (name)"_s},
             {u"SELECT c.b FROM n LEFT JOIN [my calls] AS c ON n.n = c.a"_s,
              u"For each of these rows, makes an index of table \"my calls\" (625 rows) for this run only, and finds "
              u"rows by a."_s,
              u"CREATE INDEX by_a ON [my calls] (a)"_s},
             {u"SELECT * FROM n WHERE n IN (SELECT a FROM [my calls] WHERE name = 'y')"_s, all,
              u"CREATE INDEX by_name ON [my calls] (name)"_s},
             {u"SELECT * FROM [my calls] WHERE id = 4"_s, u"Finds one row of table \"my calls\" by its key."_s, {}},
             {u"SELECT * FROM [my calls] WHERE a = 1 OR name = 'x'"_s, all, {}},
             {u"SELECT * FROM [my calls] WHERE a = b + a"_s, all, {}},
             {u"SELECT Count(*) FROM [my calls]"_s,
              u"Reads all of index \"by_b\" of table \"my calls\" (625 rows); the "
              u"rows themselves are not needed."_s,
              {}},
             {u"SELECT * FROM n WHERE n = 3"_s, u"Reads all of table \"n\" (25 rows)."_s, {}},
             {u"SELECT 1"_s, u"Reads no table."_s, {}},
         }) {
        const StatementWords told = words(c.sql);
        EXPECT_TRUE(told.steps.contains(c.step)) << qPrintable(c.sql + u'\n' + told.text());
        const QString create = told.advice.isEmpty() ? QString() : told.advice.first().create;
        EXPECT_EQ(create, c.create) << qPrintable(c.sql + u'\n' + told.text());
    }
}

TEST_F(StatementWordsTest, AnIndexIsTakenOnceItIsMadeAndThoseOfTheProgramStay)
{
    const QString sql = u"SELECT b FROM [my calls] WHERE a = 3"_s;
    execute(words(sql).advice.first().create);
    EXPECT_TRUE(words(sql).text().startsWith(u"1. Finds rows of table \"my calls\" by its index \"by_a\" (a): "_s));
    EXPECT_TRUE(words(sql).advice.isEmpty());
    const StatementWords program = words(u"SELECT row FROM tubes WHERE x = 3"_s);
    ASSERT_EQ(program.advice.size(), 1);
    EXPECT_TRUE(program.advice[0].create.isEmpty());
    EXPECT_TRUE(program.advice[0].text.contains(u"belongs to the program"_s));
    EXPECT_TRUE(
        StatementWords::of(database(), u"SELECT 1"_s, 1).steps.contains(u"When it was executed, it found 1 row."_s));
    EXPECT_THROW(words(u"SELECT nothing FROM nowhere"_s), dao::DaoException);
}
