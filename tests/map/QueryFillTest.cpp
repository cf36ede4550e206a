#include "TestMap.h"

#include <dao/values/DaoException.h>
#include <map/FillCommit.h>
#include <map/LegendCommands.h>
#include <plans/ProjectQueries.h>
#include <plans/QueryFill.h>
#include <support/DatabaseFixture.h>
#include <support/Marks.h>

using namespace Qt::StringLiterals;
using tarnwick::Answer;
using testing::ElementsAre;

namespace map {

namespace {

plans::QueryFill namedFill(const QString &name)
{
    plans::QueryFill fill;
    fill.parameters.query.name = name;
    return fill;
}

} // namespace

TEST(QueryFillTest, TakesEachTubeOnceAndCountsEveryRecord)
{
    TestMap host(2, 3);
    RecordedResult result({u"COL"_s, u"pcnt"_s, u"Row"_s},
                          {{u"3"_s, u"40"_s, u"2"_s}, {u"1"_s, u"50"_s, u"1"_s}, {u"3"_s, u"60"_s, u"2"_s}});
    plans::QueryFill fill;
    EXPECT_EQ(host.runner.takeRecords(fill, result, host.document.component()), Answer::Yes);
    EXPECT_THAT(fill.tubes, ElementsAre(host.tube(2, 3), host.tube(1, 1)));
    EXPECT_EQ(fill.fillCount, 3);
}

TEST(QueryFillTest, NamesTheColumnsThatAreMissing)
{
    TestMap host(2, 3);
    RecordedResult result({u"row"_s}, {{u"1"_s}});
    plans::QueryFill fill;
    EXPECT_EQ(host.runner.takeRecords(fill, result, host.document.component()), Answer::No);
    ASSERT_EQ(host.said.entries().size(), 1);
    EXPECT_EQ(host.said.entries()[0].number, 1090);
    EXPECT_EQ(host.said.entries()[0].text,
              u"Cannot display in map since this query\nis missing the following fields:\n\t'col'\n"_s);

    TestMap sections(2, 3, 2);
    RecordedResult noSection({u"row"_s, u"col"_s}, {{u"1"_s, u"1"_s}});
    EXPECT_EQ(sections.runner.takeRecords(fill, noSection, sections.document.component()), Answer::No);
    EXPECT_TRUE(sections.said.entries().value(0).text.endsWith(u"fields:\n\t'sec'"_s));
}

TEST(QueryFillTest, AsksAboutRecordsWithoutATubeAndHighlightsThem)
{
    TestMap host(2, 3);
    RecordedResult one({u"row"_s, u"col"_s}, {{u"1"_s, u"1"_s}, {u"9"_s, u"1"_s}});
    plans::QueryFill fill = namedFill(u"queries\\sub\\worn.qry"_s);
    host.said.answerWith({Answer::Ok, Answer::Cancel});
    EXPECT_EQ(host.runner.takeRecords(fill, one, host.document.component()), Answer::Ok);
    EXPECT_THAT(fill.tubes, ElementsAre(host.tube(1, 1)));
    ASSERT_EQ(one.colours.size(), 1);
    EXPECT_EQ(one.colours[0], std::pair(1, plans::QueryFill::kInvalidColours));
    EXPECT_EQ(host.said.entries()[0].number, 1091);
    EXPECT_EQ(
        host.said.entries()[0].text,
        u"Query \"sub\\worn.qry\"\nreturned 1 record that is for a tube that does\nnot exist in the current "
        u"component.\n\nChoose \"OK\" to show the valid tubes in the map.\n\nChoose \"Cancel\" to see the invalid "
        u"tubes highlighted\nin the query results."_s);

    RecordedResult two({u"row"_s, u"col"_s}, {{u"x"_s, u""_s}, {u"9"_s, u"1"_s}});
    EXPECT_EQ(host.runner.takeRecords(fill, two, host.document.component()), Answer::Cancel);
    EXPECT_TRUE(host.said.entries()[1].text.contains(u"returned 2 records that are for tubes that do\nnot exist"_s));
    EXPECT_FALSE(host.said.entries()[1].text.contains(u"calculated"_s));

    class HalfFailed : public RecordedResult
    {
    public:
        using RecordedResult::RecordedResult;
        dao::Value value(int row, int column) const override
        {
            return row > 0 && column == 1 ? dao::Value::fromError(11) : RecordedResult::value(row, column);
        }
    };
    HalfFailed failed({u"row"_s, u"col"_s}, {{u"1"_s, u"1"_s}, {u"1"_s, u"1"_s}, {u"9"_s, u"9"_s}});
    host.said.answerWith({Answer::Ok});
    EXPECT_EQ(host.runner.takeRecords(fill, failed, host.document.component()), Answer::Ok);
    EXPECT_TRUE(host.said.entries()[2].text.endsWith(
        u"query results.\n\nIn 2 of these records the address could not be calculated; the first is record 2, field "
        u"'col': 11: Division by zero."_s))
        << qPrintable(host.said.entries()[2].text);
}

TEST(QueryFillTest, KeepsItsTubesWhenTheQueryCannotRun)
{
    TestMap host(2, 3);
    plans::QueryFill fill = namedFill(u"queries\\a.qry"_s);
    fill.tubes = {4};
    host.runner.compute(fill, host.document.component(), host.document.tubes());
    host.source.ready = false;
    RecordedResult result({u"row"_s, u"col"_s}, {{u"1"_s, u"1"_s}});
    host.source.results.insert(u"queries\\a.qry"_s, &result);
    host.runner.compute(fill, host.document.component(), host.document.tubes());
    EXPECT_EQ(fill.tubes, QList<qint32>{4});
    host.source.ready = true;
    host.runner.compute(fill, host.document.component(), host.document.tubes());
    EXPECT_EQ(fill.tubes, QList<qint32>{0});
}

TEST(QueryFillTest, AValueThatFailsWhenItIsReadLeavesTheTubes)
{
    class Failing : public RecordedResult
    {
    public:
        using RecordedResult::RecordedResult;
        dao::Value value(int row, int column) const override
        {
            if (row > 0)
                throw dao::DaoException(11, u"DAO.Field"_s, u"Division by zero."_s);
            return RecordedResult::value(row, column);
        }
    };
    TestMap host(2, 3);
    Failing result({u"row"_s, u"col"_s}, {{u"1"_s, u"1"_s}, {u"1"_s, u"2"_s}});
    plans::QueryFill fill;
    fill.tubes = {4};
    fill.fillCount = 7;
    EXPECT_EQ(host.runner.takeRecords(fill, result, host.document.component()), std::nullopt);
    EXPECT_EQ(fill.tubes, QList<qint32>{4});
    EXPECT_EQ(fill.fillCount, 7);
    ASSERT_EQ(host.said.entries().size(), 1);
    EXPECT_EQ(host.said.entries()[0].number, 1069);
    EXPECT_EQ(host.said.entries()[0].text, u"Could not execute query.\n\n[11] DAO.Field Division by zero."_s);
}

TEST(QueryFillTest, TakesTheSymbolItsQueryHadLast)
{
    TestMap host(2, 3);
    plans::QueryFill fill = namedFill(u"queries\\worn.qry"_s);
    fill.tubes = {0};
    addNewQueryFill(host.document, host.runner, fill);
    EXPECT_EQ(host.entry(0).mark.symbol, ellery::Symbol(u'A'));
    EXPECT_EQ(host.entry(0).label, u"worn.qry"_s);
    EXPECT_EQ(host.document.history().labels(), QStringList{u"Query queries\\worn.qry Fill"_s});

    LegendCommands(host.document, host.runner).setMark(0, markOf(u'W', 0x00FF00));
    fill.parameters.query.name = u"QUERIES\\WORN.QRY"_s;
    addNewQueryFill(host.document, host.runner, fill);
    EXPECT_EQ(host.entry(1).mark.symbol, ellery::Symbol(u'W'));
    EXPECT_EQ(host.entry(1).mark.colour, tarnwick::ColourRef(0x00FF00));
}

using QueryFillOnDatabaseTest = support::DatabaseTest;

TEST_F(QueryFillOnDatabaseTest, NumbersAreNumbersAndTextsAreLabelsWhateverTheDisplayFormat)
{
    TestMap host(3, 4, 2);
    ellery::SteamGen &steamGen = host.record.steamGen;
    steamGen.labels[int(ellery::Axis::Sec)] = QStringList{u"HOT"_s, u"COLD"_s};
    // Labels that look like numbers of other rows.
    steamGen.labels[int(ellery::Axis::Row)] = QStringList{{}, u"3"_s, u"2"_s, u"1"_s};
    execute(u"INSERT INTO tubes (sec, row, col, x, y, is_periph, is_marked) VALUES (1, 3, 4, 0, 0, 0, 0)"_s);
    query::QueryContext context;
    context.formats.rebuild(database());
    for (query::FormatList::Table &table : context.formats.tables)
        for (db::ColumnFormat &field : table.fields)
            field.format = field.type == dao::DataType::Integer ? u"<%02X>"_s : field.format;
    plans::ProjectQueries queries(session, context);
    const QList<qint32> tube{host.tube(1, 3, 4)};
    for (const QString &sql :
         {u"SELECT sec, row, col FROM tubes"_s, u"SELECT 'cold' AS sec, '1' AS row, col FROM tubes"_s,
          u"SELECT Max(tubes.sec) AS sec, CCur(Max(tubes.row)) AS row, Avg(tubes.col) AS col FROM tubes"_s}) {
        const auto records = queries.run(u"q"_s, sql);
        ASSERT_TRUE(records) << sql.toStdString();
        plans::QueryFill fill;
        EXPECT_EQ(host.runner.takeRecords(fill, *records, host.document.component()), Answer::Yes) << sql.toStdString();
        EXPECT_EQ(fill.tubes, tube) << sql.toStdString();
    }
}

} // namespace map
