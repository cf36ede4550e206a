#include <db/StoredQueries.h>
#include <query/CellText.h>
#include <query/QueryExecution.h>
#include <query/QueryMacros.h>
#include <query/ResultExport.h>
#include <query/TubeColumns.h>
#include <support/DatabaseFixture.h>
#include <tarnwick/FileWriter.h>

using namespace Qt::StringLiterals;
using dao::DataType;
using dao::Value;
using query::Execution;
using query::ParameterEntry;
using query::QueryResult;
using Kind = tarnwick::RecordingPrompts::Entry::Kind;

namespace {

/// Answers the parameter dialog from a table of values, or refuses.
class ScriptedParameters : public query::ParameterPrompt
{
public:
    bool confirm(const QString &queryName, QList<ParameterEntry> &entries, query::QueryContext &) override
    {
        ++shown;
        lastQuery = queryName;
        offered = entries;
        tarnwick::RecordingPrompts prompts;
        for (ParameterEntry &entry : entries)
            if (typed.contains(entry.name))
                entry.setText(typed.value(entry.name), prompts);
        return accept;
    }

    QMap<QString, QString> typed;
    bool accept = true;
    int shown = 0;
    QString lastQuery;
    QList<ParameterEntry> offered;
};

class QueryResultTest : public support::DatabaseTest
{
protected:
    QueryResultTest()
        : result(session, context)
    {
        context.roots = {folder.path(u"palomine"_s), folder.path()};
        context.prompt = &parameters;
        for (int i = 1; i <= 4; ++i)
            execute(u"INSERT INTO tubes (sec, row, col, x, y, is_periph, is_marked) VALUES (0, %1, %2, %3, 0, %4, 0)"_s
                        .arg(i)
                        .arg(10 * i)
                        .arg(i * 0.5)
                        .arg(i == 2 ? -1 : 0));
    }

    QStringList column(int index)
    {
        QStringList cells;
        for (qint64 row = 0; row < result.rowCount(); ++row)
            cells.append(result.cellText(row, index));
        return cells;
    }

    Execution run(const QString &sql, const QString &name = {})
    {
        return query::executeStatement(session, context, name, sql, result);
    }

    query::QueryContext context;
    ScriptedParameters parameters;
    QueryResult result;
};

TEST(CellTextTest, FollowsTheColumnsFormat)
{
    using query::cellText;
    EXPECT_EQ(cellText(Value::null(), u"%d"_s), u"");
    EXPECT_EQ(cellText(Value::fromShort(7), u"%3d"_s), u"  7");
    EXPECT_EQ(cellText(Value::fromByte(7), u"%X"_s), u"7");
    EXPECT_EQ(cellText(Value::fromFloat(1.256F), u"%.2f"_s), u"1.26");
    EXPECT_EQ(cellText(Value::fromText(u"abc"_s), u"<%U>"_s), u"<abc>");
    EXPECT_EQ(cellText(Value::fromCurrencyScaled(12'345'000), u"%U"_s), QLocale().toCurrencyString(1234.5));
    EXPECT_EQ(cellText(Value::fromBoolean(true), u"Yes No"_s), u"Yes");
    EXPECT_EQ(cellText(Value::fromBoolean(false), u"Yes No"_s), u"No");
    EXPECT_EQ(cellText(Value::fromBoolean(true), u"%d"_s), u"-1");
    EXPECT_EQ(
        cellText(Value::fromDate(tarnwick::JDateTime::fromLocal(2020, 2, 3, 4, 5, 6).toOleDate()), u"%m/%d/%Y %X"_s),
        u"02/03/2020 04:05:06");
    EXPECT_EQ(cellText(Value::fromBinary("x"_ba), u"%D"_s), u"");
}

TEST_F(QueryResultTest, RunsAndShowsRowsByTheirFormats)
{
    const Execution done = run(u"SELECT row, x AS place, is_periph FROM tubes ORDER BY row DESC"_s, u"all"_s);
    EXPECT_EQ(done.outcome, Execution::Outcome::Rows);
    EXPECT_GT(result.elapsed(), 0);
    EXPECT_EQ(result.rowCount(), 4);
    EXPECT_EQ(result.column(1).title, u"PLACE");
    EXPECT_EQ(result.column(1).type, DataType::Single);
    EXPECT_EQ(column(0), (QStringList{u"4"_s, u"3"_s, u"2"_s, u"1"_s}));
    EXPECT_EQ(column(1)[0], u"2.00");
    EXPECT_EQ(column(2), (QStringList{u"F"_s, u"F"_s, u"T"_s, u"F"_s}));
    const Execution none = run(u"SELECT row FROM tubes WHERE row > 100"_s);
    EXPECT_EQ(none.outcome, Execution::Outcome::Rows);
    EXPECT_EQ(result.rowCount(), 0);
    EXPECT_EQ(query::executionStatus(none, result).entries, u"0 Entries");
    EXPECT_TRUE(query::executionStatus(none, result).line.startsWith(u"Execute time=0."));
    EXPECT_TRUE(prompts.entries().isEmpty());
}

TEST_F(QueryResultTest, DisplayFormatsAreFoundThroughTheSource)
{
    db::ColumnFormat format(u"ROW"_s, DataType::Integer);
    format.title = u"TUBE ROW"_s;
    format.format = u"R%d"_s;
    db::ColumnFormat otherType(u"x"_s, DataType::Double);
    otherType.format = u"%.5f"_s;
    context.formats.tables = {{u"TUBES"_s, {format, otherType}}};
    run(u"SELECT row AS r, x, row + 1 AS n FROM tubes WHERE row = 1"_s);
    EXPECT_EQ(result.column(0).title, u"TUBE ROW");
    EXPECT_EQ(result.column(0).name, u"r");
    EXPECT_EQ(result.cellText(0, 0), u"R1");
    EXPECT_EQ(result.cellText(0, 1), u"0.50");
    EXPECT_EQ(result.column(2).title, u"N");

    EXPECT_TRUE(context.formats.rebuild(database()));
    EXPECT_FALSE(context.formats.rebuild(database()));
    EXPECT_EQ(context.formats.tables.size(), 12);
    EXPECT_EQ(context.formats.find(u"tubes", u"row", DataType::Integer)->title, u"TUBE ROW");
    EXPECT_EQ(context.formats.find(u"tubes", u"x", DataType::Single)->format, u"%.2f");
    EXPECT_EQ(context.formats.find(u"tubes", u"x", DataType::Double), nullptr);

    context.formats.tables[0].fields[0].width = 0;
    context.formats.tables[0].fields[1].format = u"%f"_s;
    context.formats.store(context.roots);
    query::FormatList read;
    EXPECT_TRUE(read.load(context.roots));
    EXPECT_EQ(read.tables[0].fields[0].width, read.tables[0].fields[0].title.size());
    EXPECT_EQ(read.tables[0].fields[1].format, u"%d");
}

TEST_F(QueryResultTest, ActionsAreCarriedOutAndFailuresShowTheirOwnError)
{
    Execution done = run(u"UPDATE tubes SET x = 9 WHERE row < 3"_s);
    EXPECT_EQ(done.outcome, Execution::Outcome::Changed);
    EXPECT_EQ(done.affected, 2);
    EXPECT_TRUE(query::executionStatus(done, result).line.startsWith(u"Execute time=0."));
    EXPECT_EQ(query::executionStatus(done, result).entries, u"Rows changed: 2.");

    EXPECT_EQ(run(u"UPDATE tubes SET row = 1000"_s).outcome, Execution::Outcome::Failed);
    EXPECT_EQ(run(u"SELECT FROM tubes WHERE"_s).outcome, Execution::Outcome::Failed);
    EXPECT_EQ(run(u"SELECT * FROM nowhere"_s).outcome, Execution::Outcome::Failed);
    const QStringList errors = prompts.texts(Kind::Error);
    ASSERT_EQ(errors.size(), 3);
    EXPECT_TRUE(errors[0].startsWith(u"Could not execute query.\n\n[3317] DAO.QueryDef "));
    EXPECT_TRUE(errors[1].startsWith(u"Could not execute query.\n\n[3"));
    EXPECT_TRUE(errors[2].startsWith(u"Could not execute query.\n\n[3078] DAO."));
    EXPECT_EQ(prompts.entries()[0].number, 1069);

    session.close();
    EXPECT_EQ(run(u"SELECT * FROM tubes"_s).outcome, Execution::Outcome::Failed);
    EXPECT_EQ(prompts.entries().last().number, 1053);
}

TEST_F(QueryResultTest, ParametersComeFromMacrosThenHistoryThenTheUser)
{
    const QString sql = u"SELECT row FROM tubes WHERE row = [LIMIT] OR row = [MAP TUBES] OR row = [other]"_s;
    context.userMacros.set(u"[LIMIT]"_s, u"1"_s);
    context.systemMacros = [] {
        tarnwick::JMacro macros;
        macros.set(u"[LIMIT]"_s, u"3"_s);
        macros.set(u"[MAP TUBES]"_s, u"2"_s);
        return macros;
    };
    parameters.typed = {{u"other"_s, u"4"_s}, {u"MAP TUBES"_s, u"3"_s}};
    EXPECT_EQ(run(sql, u"q"_s).outcome, Execution::Outcome::Rows);
    EXPECT_EQ(column(0), (QStringList{u"1"_s, u"3"_s, u"4"_s}));
    ASSERT_EQ(parameters.offered.size(), 3);
    EXPECT_EQ(parameters.offered[0].sourceText(), u"User Macro");
    EXPECT_EQ(parameters.offered[0].text, u"1");
    EXPECT_EQ(parameters.offered[1].sourceText(), u"Sys Macro");
    EXPECT_EQ(parameters.offered[2].sourceText(), u"SQL Query");
    EXPECT_FALSE(parameters.offered[2].hasValue());
    EXPECT_EQ(context.history.value(u"q", u"other"), u"4"_s);
    EXPECT_EQ(context.history.value(u"q", u"MAP TUBES"), std::nullopt);
    EXPECT_TRUE(folder.has(u"palomine/config/arvo/query_history.opt"_s));

    parameters.typed.clear();
    run(sql, u"Q"_s);
    EXPECT_EQ(parameters.offered[2].text, u"4");
    run(sql, u"another"_s);
    EXPECT_FALSE(parameters.offered[2].hasValue());
}

TEST_F(QueryResultTest, TheQuietFlagAsksOnlyForWhatIsNotKnown)
{
    const QString sql = u"SELECT row FROM tubes WHERE row = [a]"_s;
    context.quiet = true;
    parameters.typed = {{u"a"_s, u"2"_s}};
    run(sql, u"q"_s);
    EXPECT_EQ(parameters.shown, 1);
    run(sql, u"q"_s);
    EXPECT_EQ(parameters.shown, 1);
    EXPECT_EQ(column(0), QStringList{u"2"_s});
    run(u"SELECT row FROM tubes"_s, u"q"_s);
    EXPECT_EQ(parameters.shown, 1);
}

TEST_F(QueryResultTest, RefusedParametersRunNothing)
{
    run(u"SELECT row FROM tubes"_s);
    parameters.accept = false;
    const Execution refused = run(u"SELECT row FROM tubes WHERE row = [a]"_s, u"q"_s);
    EXPECT_EQ(refused.outcome, Execution::Outcome::Cancelled);
    EXPECT_EQ(result.elapsed(), -1);
    EXPECT_EQ(query::executionStatus(refused, result).line, u"Cancelled.");
    EXPECT_EQ(run(u"DELETE FROM tubes WHERE row = [a]"_s, u"q"_s).outcome, Execution::Outcome::Cancelled);
    EXPECT_EQ(scalar(u"SELECT COUNT(*) FROM tubes"_s).integer(), 4);
    EXPECT_TRUE(context.history.entries().isEmpty());

    parameters.accept = true;
    parameters.typed = {{u"a"_s, u"two"_s}};
    EXPECT_EQ(run(u"SELECT row FROM tubes WHERE row = [a]"_s, u"q"_s).outcome, Execution::Outcome::Rows);
    EXPECT_TRUE(context.history.entries().isEmpty()) << "a text that is no value is not remembered";
    parameters.typed = {{u"a"_s, u"2"_s}};
    EXPECT_EQ(run(u"DELETE FROM tubes WHERE row = [a]"_s, u"q"_s).affected, 1);
    context.prompt = nullptr;
    EXPECT_EQ(run(u"SELECT row FROM tubes WHERE row = [unheard] OR col = [cool]"_s).outcome,
              Execution::Outcome::Cancelled);
    EXPECT_EQ(prompts.entries().last().number, 1062);
    EXPECT_TRUE(prompts.texts(Kind::Error)[0].startsWith(
        u"Could not get query parameters.\n\nNo value is known for [unheard], [cool] (perhaps a slip of col)."));
}

TEST_F(QueryResultTest, CellsAreEditedInTheirTypes)
{
    run(u"SELECT row, x, is_marked FROM tubes ORDER BY row"_s);
    EXPECT_EQ(result.whyNotUpdatable(), dao::sql::NotUpdatable::No);
    EXPECT_TRUE(result.setCell(1, 1, u"7.25"_s));
    EXPECT_TRUE(result.setCell(1, 2, u"yes"_s));
    EXPECT_EQ(result.cellText(1, 1), u"7.25");
    EXPECT_EQ(result.cellText(1, 2), u"T");
    EXPECT_FALSE(result.setCell(1, 1, u"wide"_s));
    EXPECT_TRUE(prompts.entries().isEmpty());
    EXPECT_FALSE(result.setCell(1, 0, u"1000"_s));
    ASSERT_EQ(prompts.entries().size(), 1);
    EXPECT_EQ(prompts.entries()[0].number, 1065);
    EXPECT_TRUE(prompts.entries()[0].text.startsWith(u"Could not convert string to value.\n\n[3317] "));
    EXPECT_EQ(rows(u"SELECT row, x FROM tubes WHERE is_marked"_s), QStringList{u"2|7.25"_s});

    run(u"SELECT DISTINCT row FROM tubes"_s);
    EXPECT_FALSE(result.setCell(0, 0, u"5"_s));
    EXPECT_TRUE(prompts.texts(Kind::Error).last().contains(u"[3027]"));
}

TEST_F(QueryResultTest, DeletedRowsGoAndTheOthersStayInOrder)
{
    run(u"SELECT row FROM tubes ORDER BY row"_s);
    const tarnwick::RowColours redOnYellow{tarnwick::ColourRef(0xFF), tarnwick::ColourRef(0xFFFF80)};
    result.setColours(2, redOnYellow);
    result.deleteRow(3);
    result.deleteRow(0);
    EXPECT_EQ(column(0), (QStringList{u"2"_s, u"3"_s}));
    EXPECT_EQ(result.colours(1), redOnYellow);
    EXPECT_EQ(result.colours(0), tarnwick::RowColours());
    EXPECT_EQ(rows(u"SELECT row FROM tubes ORDER BY row"_s), (QStringList{u"2"_s, u"3"_s}));

    execute(u"DELETE FROM tubes WHERE row = 2"_s);
    EXPECT_EQ(result.cellText(0, 0), u"#Deleted");
    result.deleteRow(0);
    EXPECT_EQ(prompts.entries().last().number, 1064);
    EXPECT_EQ(column(0), QStringList{u"3"_s});
}

TEST_F(QueryResultTest, InsertedRowsAreAddedOnceTheyAreComplete)
{
    execute(u"INSERT INTO tube_sets (name) VALUES ('A')"_s);
    run(u"SELECT name, [desc] FROM tube_sets"_s);
    result.insertRow(0);
    EXPECT_EQ(result.rowCount(), 2);
    EXPECT_EQ(result.cellText(0, 0), u"");
    EXPECT_TRUE(result.setCell(0, 1, u"text"_s));
    EXPECT_EQ(scalar(u"SELECT COUNT(*) FROM tube_sets"_s).integer(), 1);
    EXPECT_TRUE(result.setCell(0, 0, u"B"_s));
    EXPECT_EQ(rows(u"SELECT name, [desc] FROM tube_sets ORDER BY name"_s), (QStringList{u"A|-"_s, u"B|text"_s}));
    EXPECT_EQ(column(0), (QStringList{u"B"_s, u"A"_s}));
    EXPECT_TRUE(result.setCell(0, 0, u"C"_s));
    result.deleteRow(1);
    EXPECT_EQ(rows(u"SELECT name FROM tube_sets"_s), QStringList{u"C"_s});
    EXPECT_EQ(column(0), QStringList{u"C"_s});
}

TEST_F(QueryResultTest, ExportsRowsInTheirWidths)
{
    run(u"SELECT row, col, 'longer than its width' AS t FROM tubes WHERE row < 3 ORDER BY row"_s);
    const QString file = folder.path(u"temp/out.txt"_s);
    EXPECT_TRUE(query::exportResult(result, file, prompts));
    EXPECT_EQ(folder.read(u"temp/out.txt"_s), "|  1| 10|longer than its width|\n|  2| 20|longer than its width|\n");
    EXPECT_TRUE(query::exportResult(result, file, prompts, nullptr, {1, [](qint64) { return 1; }})) << "as shown";
    EXPECT_EQ(folder.read(u"temp/out.txt"_s), "|  2| 20|longer than its width|\n");

    run(u"SELECT row, 1 / (row - 2) AS part FROM tubes WHERE row < 3 ORDER BY row"_s);
    EXPECT_EQ(result.cellTip(0, 1) + u'|' + result.cellTip(1, 1), u"|11: Division by zero."_s);
    EXPECT_TRUE(query::exportResult(result, file, prompts));
    EXPECT_TRUE(folder.read(u"temp/out.txt"_s).contains("#Div/0!|\n"));
    EXPECT_EQ(prompts.entries().last().text, u"Warning: 1 cell could not be calculated: 1 by [11] Division by zero."_s);

    const QByteArray before = folder.read(u"temp/out.txt"_s);
    tarnwick::failWritesAfter(10);
    EXPECT_FALSE(query::exportResult(result, file, prompts));
    tarnwick::failWritesAfter(-1);
    EXPECT_EQ(prompts.entries().last().number, 1063);
    EXPECT_EQ(folder.read(u"temp/out.txt"_s), before);
}

TEST_F(QueryResultTest, RowsAreReadWhileOthersAreStillBeingFound)
{
    const QString join = u" FROM tubes a, tubes b, tubes c, tubes d, tubes e"_s; // 4 to the power of 5
    struct Stopped : tarnwick::Progress
    {
        bool cancelled() override { return isStopped; }
        bool isStopped = false;
    } progress;
    int calls = 0;
    // An index that gives the order in part: the first rows come from it, all of them from a sort.
    const QString sorted = u"SELECT a, 40 AS n, c FROM big ORDER BY a, b, c DESC"_s;
    execute(u"CREATE TABLE big (a LONG, b LONG, c LONG)"_s);
    execute(u"CREATE INDEX ab ON big (a, b)"_s);
    execute(u"INSERT INTO big SELECT a.row AS a, b.row AS b, c.row * 16 + d.row * 4 + e.row AS c"_s + join);
    const QStringList selects{sorted, u"SELECT a.row, e.col"_s + join,
                              u"SELECT a.row, e.col"_s + join + u" ORDER BY a.row"_s,
                              u"SELECT DISTINCT a.row, e.col, b.row, c.row, d.row"_s + join};
    for (const QString &select : selects) {
        calls = 0;
        result.setFoundListener([&] {
            ++calls;
            EXPECT_TRUE(result.isPaused() && result.isReadable());
            EXPECT_GE(result.rowCount(), 256);
            EXPECT_LT(result.rowCount(), 1024);
            EXPECT_EQ(result.name(), u"all");
            EXPECT_EQ(result.cellText(255, 0), u"1");
        });
        ASSERT_TRUE(result.run(u"all"_s, select));
        EXPECT_GT(calls, 0);
        EXPECT_EQ(result.rowCount(), 1024);
        EXPECT_EQ(result.cellText(1023, 1), u"40");
        if (select == sorted) {
            EXPECT_EQ(column(2), rows(u"SELECT c FROM big ORDER BY a, b, c DESC"_s));
        }

        result.setFoundListener({});
        ASSERT_TRUE(result.run(u"before"_s, u"SELECT row FROM tubes ORDER BY row"_s));
        const quint64 kept = result.runNumber();
        result.setFoundListener([&] { progress.isStopped = true; });
        EXPECT_THROW(result.run(u"all"_s, select, &progress), tarnwick::Cancelled);
        EXPECT_EQ(result.runNumber(), kept);
        EXPECT_EQ(result.name(), u"before");
        EXPECT_EQ(column(0), (QStringList{u"1"_s, u"2"_s, u"3"_s, u"4"_s}));
        progress.isStopped = false;
        result.setFoundListener({});
    }
}

TEST_F(QueryResultTest, CountsTheDistinctTubesOfAResult)
{
    ellery::SteamGen steamGen;
    QList<ellery::Tube> tubes;
    for (qint16 row = 1; row <= 3; ++row)
        tubes.append({{0, row, qint16(10 * row)}, 0, 0, false});
    steamGen.setTubes(tubes);
    steamGen.labels[int(ellery::Axis::Row)] = QStringList{QString(), u"A"_s, u"B"_s, u"C"_s};
    run(u"SELECT row, col FROM tubes UNION ALL SELECT row, col FROM tubes"_s);
    EXPECT_EQ(query::totalTubes(result, steamGen), 3);
    run(u"SELECT 'B' AS row, col FROM tubes"_s);
    EXPECT_EQ(query::totalTubes(result, steamGen), 1);
    run(u"SELECT col FROM tubes"_s);
    EXPECT_EQ(query::totalTubes(result, steamGen), -1);

    tubes.append({{1, 1, 10}, 0, 0, false});
    steamGen.setTubes(tubes);
    run(u"SELECT row, col FROM tubes"_s);
    EXPECT_EQ(query::totalTubes(result, steamGen), -1);
    run(u"SELECT row, col, tubes.sec + 1 AS sec FROM tubes"_s);
    EXPECT_EQ(query::totalTubes(result, steamGen), 1);
}

TEST_F(QueryResultTest, MacrosDescribeTheQueryAndItsResult)
{
    run(u"SELECT col FROM tubes"_s);
    ellery::SteamGen steamGen;
    context.userMacros.set(u"[MAP NAME]"_s, u"mine"_s);
    context.systemMacros = [] {
        tarnwick::JMacro macros;
        macros.set(u"[MAP NAME]"_s, u"system"_s);
        macros.set(u"[QUERY FILE]"_s, {});
        return macros;
    };
    query::QueryDocument document;
    document.name = u"queries\\wear\\deep.qry"_s;
    document.sql = u"[QUERY NAME] [OTHER]"_s;
    document.layout.sections[0].text =
        u"[QUERY RECORDS] records, [QUERY TOTAL TUBES] tubes, [MAP NAME], [QUERY FILE]"_s;
    const auto macros = query::queryMacros(document, result, context, steamGen);
    const query::QueryDocument expanded = query::expandedDocument(document, macros);
    EXPECT_EQ(expanded.sql, u"deep.qry [OTHER]");
    EXPECT_EQ(expanded.layout.sections[0].text, u"4 records, -1 tubes, mine, queries\\wear\\deep.qry");

    query::SQLOptions options;
    options.margins.left = 2.5;
    options.drawSeparators = false;
    query::applyPrintOptions(document, options);
    EXPECT_EQ(document.layout.margins.left, 2.5);
    EXPECT_FALSE(document.layout.separators);
}

} // namespace
