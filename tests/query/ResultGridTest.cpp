#include <dao/Workspace.h>
#include <query/MarkedCells.h>
#include <query/QueryExecution.h>
#include <query/ResultGrid.h>
#include <support/DatabaseFixture.h>

using namespace Qt::StringLiterals;
using query::MarkedCells;
using query::ResultGrid;
using query::TableMode;

namespace {

struct CountingListener : query::ChangeListener
{
    bool beginChange() override
    {
        ++begun;
        return allows;
    }
    void endChange(const QString &, int rows) override { changed += rows; }
    void changeFailed() override { ++failed; }

    bool allows = true;
    int begun = 0;
    int changed = 0;
    int failed = 0;
};

class ResultGridTest : public support::DatabaseTest
{
protected:
    ResultGridTest()
        : result(session, context)
        , grid(result, TableMode::Edit, prompts)
    {
        execute(u"CREATE TABLE t (id COUNTER PRIMARY KEY, n LONG, c CURRENCY, x SINGLE, b BIT, m MEMO)"_s);
        for (const char16_t *values : {u"1, 2000000000000.5, 0.1, TRUE, 'a'", u"2, 0.0001, 0.2, FALSE, 'b'",
                                       u"NULL, NULL, NULL, TRUE, NULL", u"3, -1, 0.3, FALSE, 'c'"})
            execute(u"INSERT INTO t (n, c, x, b, m) VALUES (%1)"_s.arg(QString::fromUtf16(values)));
        result.setChangeListener(&listener);
    }
    void run(const QString &sql) { query::executeStatement(session, context, {}, sql, result); }
    QString figures(const std::vector<MarkedCells::Block> &blocks)
    {
        MarkedCells marked(result, blocks, [](int row) { return row; });
        while (!marked.isDone())
            marked.readOn(1);
        return marked.text();
    }

    query::QueryContext context;
    CountingListener listener;
    query::QueryResult result;
    ResultGrid grid;
};

TEST_F(ResultGridTest, TellsWhyACellOrRowCannotBeChanged)
{
    run(u"SELECT id, n + 1 AS more, n FROM t ORDER BY id"_s);
    EXPECT_EQ(grid.whyNotEditable(0, 0), u"The numbers of this column are given by the database.");
    EXPECT_EQ(grid.whyNotEditable(0, 1), u"The values of this column are calculated.");
    EXPECT_EQ(grid.whyNotEditable(0, 2), u"");
    EXPECT_EQ(grid.whyNotDeletable(0) + grid.whyNotInsertable(), u"");
    EXPECT_NE(grid.whyNotEditable(4, 0) + grid.text(4, 0), u"");

    const ResultGrid onlyRead(result, TableMode::Read, prompts);
    EXPECT_TRUE(onlyRead.whyNotEditable(0, 2).startsWith(u"The rows are only shown here."));
    EXPECT_EQ(onlyRead.whyNotDeletable(0), onlyRead.whyNotInsertable());
    run(u"SELECT DISTINCT n FROM t"_s);
    EXPECT_EQ(grid.whyNotEditable(0, 0), u"The query shows each different row once (DISTINCT).");

    run(u"SELECT m FROM t ORDER BY id"_s);
    EXPECT_TRUE(result.setCell(0, 0, QString(40'000, u'x')));
    EXPECT_EQ(grid.whyNotEditable(0, 0), u"The text is too long to be edited in a cell.");
    const query::QueryResult::ReadPause pause(result);
    EXPECT_EQ(grid.whyNotEditable(1, 0), u"A query is running.");
    EXPECT_EQ(grid.text(1, 0), u"") << "not shown before";
}

TEST_F(ResultGridTest, EditsWhatTheUserSawAndTellsItsListener)
{
    run(u"SELECT b, c, x, n FROM t ORDER BY id"_s);
    EXPECT_EQ(grid.column(0).choices, (QStringList{u"T"_s, u"F"_s}));
    EXPECT_TRUE(grid.setText(0, 0, u"F"_s) && grid.setText(1, 0, u"T"_s));
    EXPECT_EQ(grid.editText(1, 1), u"0.0001") << "in full, whatever the format";
    EXPECT_EQ(rows(u"SELECT b FROM t ORDER BY id"_s).join(u','), u"0,-1,-1,0");
    EXPECT_FALSE(grid.setText(0, 3, u"many"_s));
    EXPECT_EQ(prompts.lastStatus(), u"\"many\" was not stored in column N.");
    EXPECT_EQ(listener.begun, 3);
    EXPECT_EQ(listener.changed, 2);
    EXPECT_EQ(listener.failed, 1);

    grid.beginEdit(3);
    execute(u"UPDATE t SET x = 7 WHERE n = 3"_s);
    EXPECT_FALSE(grid.setText(3, 3, u"30"_s));
    EXPECT_TRUE(prompts.texts(tarnwick::RecordingPrompts::Entry::Kind::Error).last().contains(u"[3197]"));
    EXPECT_EQ(grid.text(3, 2) + grid.text(3, 3), u"7.003");
    EXPECT_TRUE(grid.setText(3, 3, u"30"_s)) << "the user has seen the record now";
    EXPECT_EQ(prompts.lastStatus(), u"") << "of the text that was refused before";

    listener.allows = false;
    EXPECT_FALSE(grid.deleteRow(0));
    listener.allows = true;
    EXPECT_TRUE(grid.insertRow(0) && grid.setText(0, 3, u"5"_s));
    EXPECT_EQ(grid.rowCount(), 5);
    execute(u"DELETE FROM t WHERE n IN (1, 2)"_s);
    prompts.clear();
    grid.asOneChange([&] { // rows 1 and 2 are gone: one box, and the rest stays
        for (int row = 2; row > 0; --row)
            grid.deleteRow(row);
    });
    EXPECT_EQ(prompts.entries().size(), 1);
    EXPECT_EQ(grid.rowCount(), 4);
    EXPECT_EQ(grid.text(1, 0), u"#Deleted");
    EXPECT_FALSE(grid.value(1, 0).isValid());
}

TEST_F(ResultGridTest, AddsUpMarkedCells)
{
    run(u"SELECT n, c, x, m FROM t ORDER BY id"_s);
    EXPECT_EQ(figures({{0, 0, 3, 0}}), u"Count 3   Sum 6   Mean 2   Min 1   Max 3");
    EXPECT_EQ(figures({{0, 1, 3, 1}}),
              u"Count 3   Sum 1999999999999.5001   Mean 666666666666.5   Min -1   Max 2000000000000.5");
    EXPECT_EQ(figures({{0, 2, 1, 2}, {3, 2, 3, 2}}), u"Count 3   Sum 0.6   Mean 0.2   Min 0.1   Max 0.3");
    EXPECT_EQ(figures({{0, 3, 3, 3}}), u"Count 3");
    EXPECT_EQ(figures({{1, 1, 1, 1}}), u"");
    run(u"SELECT a.n FROM t AS a, t AS b, t AS c, t AS d, t AS e"_s);
    EXPECT_EQ(figures({{0, 0, int(result.rowCount()) - 1, 0}}), u"Count 768   Sum 1536   Mean 2   Min 1   Max 3");
}

} // namespace
