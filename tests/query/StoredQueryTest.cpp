#include <minizip/unzip.h>
#include <QFile>
#include <query/FormatList.h>
#include <query/QueryDocument.h>
#include <query/QueryVersions.h>
#include <query/ResultExport.h>
#include <query/StoredQueryCommands.h>
#include <query/TubeListing.h>
#include <support/DatabaseFixture.h>
#include <support/FullDisk.h>
#include <tarnwick/FileWriter.h>

using namespace Qt::StringLiterals;
using query::Overwrite;
using query::QueryVersions;

namespace {

class StoredQueryTest : public support::DatabaseTest
{
protected:
    QStringList versionsOf(const QString &name)
    {
        QueryVersions versions(session.path());
        versions.read();
        QStringList texts;
        for (const QueryVersions::Version &version : versions.versionsOf(name))
            texts.append(version.sql);
        return texts;
    }
};

/// The content of a part of a spreadsheet file; empty if there is none.
QByteArray partOf(const QString &path, const char *name)
{
    const unzFile archive = unzOpen64(QFile::encodeName(path).constData());
    QByteArray content(1 << 16, Qt::Uninitialized);
    int size = 0;
    if (unzLocateFile(archive, name, 1) == UNZ_OK && unzOpenCurrentFile(archive) == UNZ_OK)
        size = unzReadCurrentFile(archive, content.data(), unsigned(content.size()));
    unzClose(archive);
    return content.first(qMax(0, size));
}

} // namespace

TEST_F(StoredQueryTest, AQueryThatWasStoredOverOrDeletedIsKept)
{
    EXPECT_TRUE(query::storeQuery(session, u"Deep"_s, u"SELECT row FROM tubes"_s, Overwrite::Ask));
    EXPECT_EQ(prompts.entries().last().text, u"Stored ARVO query \"Deep\"."_s);
    EXPECT_EQ(versionsOf(u"Deep"_s), QStringList());

    prompts.answerWith({tarnwick::Answer::No});
    EXPECT_FALSE(query::storeQuery(session, u"deep"_s, u"SELECT col FROM tubes"_s, Overwrite::Ask));
    EXPECT_EQ(database().query(u"Deep"_s).sql, u"SELECT row FROM tubes"_s);

    for (int i = 0; i < 25; ++i)
        EXPECT_TRUE(
            query::storeQuery(session, u"DEEP"_s, u"SELECT row FROM tubes WHERE row > %1"_s.arg(i), Overwrite::Yes));
    EXPECT_EQ(versionsOf(u"Deep"_s).size(), QueryVersions::kMostVersions);
    EXPECT_EQ(versionsOf(u"deep"_s).first(), u"SELECT row FROM tubes WHERE row > 23"_s);

    EXPECT_TRUE(query::deleteQuery(session, u"Deep"_s));
    EXPECT_EQ(prompts.entries().last().text, u"Deleted query \"Deep\" from the database."_s);
    EXPECT_EQ(versionsOf(u"deep"_s).first(), u"SELECT row FROM tubes WHERE row > 24"_s);
    EXPECT_FALSE(query::deleteQuery(session, u"Deep"_s));
    EXPECT_EQ(prompts.entries().last().number, 1075);
    EXPECT_FALSE(query::storeQuery(session, u"views#"_s, u"SELECT 1"_s, Overwrite::Yes));
    EXPECT_EQ(prompts.entries().last().number, 1072);
    EXPECT_FALSE(query::storeQuery(session, u"broken"_s, u"SELEKT 1"_s, Overwrite::Yes));
    EXPECT_EQ(prompts.entries().last().number, 1073);

    // Without a version the text is not replaced.
    query::storeQuery(session, u"kept"_s, u"SELECT 1"_s, Overwrite::Yes);
    tarnwick::failWritesAfter(0);
    EXPECT_FALSE(query::storeQuery(session, u"kept"_s, u"SELECT 2"_s, Overwrite::Yes));
    tarnwick::failWritesAfter(-1);
    EXPECT_EQ(query::fetchQuery(session, u"kept"_s), u"SELECT 1"_s);
}

TEST_F(StoredQueryTest, KindsAndParametersAreListed)
{
    database().createQuery({u"a"_s, u"SELECT row FROM tubes WHERE col = [COLUMN]"_s});
    database().createQuery({u"b"_s, u"TRANSFORM Count(*) SELECT row FROM tubes GROUP BY row PIVOT col"_s});
    database().createQuery({u"c"_s, u"UPDATE tubes SET x = 0"_s});
    database().createQuery({u"d"_s, u"SELECT row FROM gone"_s});
    QStringList lines;
    for (const query::StoredQueryInfo &info : query::storedQueries(database()))
        lines.append(info.name + u':' + info.kind + u':' + info.parameters.join(u',') + u':' + info.error.left(6));
    EXPECT_EQ(lines, (QStringList{u"a:select:[COLUMN] Integer:"_s, u"b:cross table::"_s, u"c:update::"_s,
                                  u"d:select::[3078]"_s}));
}

TEST_F(StoredQueryTest, SpreadsheetsAndCsvKeepValues)
{
    execute(u"INSERT INTO tubes (sec, row, col, x, y, is_periph, is_marked) VALUES (0, 7, 1, 2.5, 0, -1, 0)"_s);
    query::QueryContext context;
    query::QueryResult result(session, context);
    ASSERT_TRUE(result.run({}, u"SELECT row AS n, x AS r, is_periph AS y, #2/3/2020 6:00# AS d, '=1+1, <&' AS t, "
                               "Null AS z, '_x0041_' & Chr(7) AS e, #1/1/1899# AS old FROM tubes"_s));
    EXPECT_EQ(query::exportFormOf(u"a.XLSX"_s), query::ExportForm::Xlsx);
    EXPECT_EQ(query::exportFormOf(u"a.doc"_s), std::nullopt);

    ASSERT_TRUE(query::exportResult(result, folder.path(u"out.csv"_s), prompts));
    EXPECT_EQ(folder.read(u"out.csv"_s), "n,r,y,d,t,z,e,old\r\n7,2.5,True,02/03/2020 06:00:00,\"=1+1, <&\",,_x0041_\a,"
                                         "01/01/1899 00:00:00\r\n");
    ASSERT_TRUE(query::exportResult(result, folder.path(u"out.xlsx"_s), prompts));
    const QByteArray sheet = partOf(folder.path(u"out.xlsx"_s), "xl/worksheets/sheet1.xml");
    for (const char *part :
         {"<c r=\"A2\"><v>7</v></c>", "<c r=\"B2\"><v>2.5</v></c>", "<c r=\"C2\" t=\"b\"><v>1</v></c>",
          "<c r=\"D2\" s=\"2\"><v>43864.25</v></c>", "<c r=\"E2\" t=\"inlineStr\"><is><t>=1+1, &lt;&amp;</t>",
          "_x005F_x0041__x0007_</t>", "01/01/1899 00:00:00</t>"})
        EXPECT_TRUE(sheet.contains(part)) << part << "\n" << sheet.constData();
    EXPECT_FALSE(sheet.contains("r=\"F2\""));
}

// The library that writes spreadsheets notices only some of the failures of its temporary files.
TEST_F(StoredQueryTest, ASpreadsheetIsWholeOrNotThere)
{
    for (int col = 1; col <= 20; ++col)
        execute(u"INSERT INTO tubes (sec, row, col, x, y, is_periph, is_marked) VALUES (0, 7, %1, 2.5, 0, -1, 0)"_s.arg(
            col));
    query::QueryContext context;
    query::QueryResult result(session, context);
    ASSERT_TRUE(result.run({}, u"SELECT a.col AS n, 'text ' & b.col AS m FROM tubes AS a, tubes AS b"_s));
    const QString book = folder.path(u"out.xlsx"_s);
    ASSERT_TRUE(query::exportResult(result, book, prompts));
    const qint64 sheet = partOf(book, "xl/worksheets/sheet1.xml").size();
    folder.write(u"out.xlsx"_s, "old");
    const auto failsWith = [&](qint64 size) {
        const support::FullDisk full(size);
        return !query::exportResult(result, book, prompts);
    };
    for (qint64 size = 0; size < sheet; size += qMax<qint64>(500, size / 20)) {
        EXPECT_TRUE(failsWith(size)) << size << " of " << sheet;
        EXPECT_EQ(prompts.entries().last().number, 1063);
    }
    for (qint64 size = sheet - 600; size < sheet; size += 50)
        EXPECT_TRUE(failsWith(size)) << size << " of " << sheet;
    tarnwick::failWritesAfter(200);
    EXPECT_FALSE(query::exportResult(result, book, prompts));
    tarnwick::failWritesAfter(-1);
    struct StopAt : tarnwick::Progress
    {
        void report(qint64, qint64, const QString &what) override { isReached = isReached || what == stage; }
        bool cancelled() override { return isReached; }
        QString stage;
        bool isReached = false;
    };
    for (const char *stage : {"Exporting", "Packing", "Checking", "Storing"}) {
        StopAt progress;
        progress.stage = QString::fromLatin1(stage);
        EXPECT_FALSE(query::exportResult(result, book, prompts, &progress)) << stage;
        EXPECT_EQ(prompts.lastStatus(), u"Cancelled.") << stage;
    }
    EXPECT_EQ(folder.read(u"out.xlsx"_s), "old");
    EXPECT_FALSE(failsWith(sheet));
}

TEST_F(StoredQueryTest, ABadFormatIsRefusedAndTheOthersAreTaken)
{
    query::FormatList formats;
    formats.rebuild(database());
    const qsizetype tables = formats.tables.size();
    formats.tables[0].fields[0].width = 1'000'000;
    const QString bad = formats.tables[0].name + u'.' + formats.tables[0].fields[0].name;
    const qsizetype fields = formats.tables[0].fields.size();
    formats.storeTo(folder.path(u"formats.opt"_s));
    query::FormatList read;
    read.loadFrom(folder.path(u"formats.opt"_s));
    EXPECT_EQ(read.tables.size(), tables);
    EXPECT_EQ(read.tables[0].fields.size(), fields - 1);
    EXPECT_EQ(read.refused(), QStringList{bad + u": the width 1000000 is out of range"_s});
}

TEST(TubeListing, MacrosOfTheTubeAreExpanded)
{
    ellery::SteamGen steamGen;
    ellery::Tube tube;
    tube.address = {0, 2, 1};
    steamGen.setTubes({tube});
    steamGen.labels[int(ellery::Axis::Row)] = {QString(), QString(), u"B'"_s};
    query::ArvoOptions options;
    options.tubeInfoTabs = {
        {u"Mine"_s, u"SELECT * FROM t WHERE r = [ROW] AND l = [row#] AND s = [SEC] AND x = [ELSE]"_s}};
    const QList<query::TubeListing> listings = query::tubeListings(options, steamGen, tube.address);
    ASSERT_EQ(listings.size(), 2);
    EXPECT_EQ(listings[0].sql,
              u"SELECT *\nFROM report\nWHERE sec=0\nAND row=2\nAND col=1\nORDER BY outage,sec,row,col");
    EXPECT_EQ(listings[1].sql, u"SELECT * FROM t WHERE r = 2 AND l = 'B''' AND s = 0 AND x = [ELSE]");
}

TEST(QueryText, IsUtf8OrCodePage1252)
{
    EXPECT_EQ(query::textOfQuery("d\xC3\xA9"), u"d\u00E9");
    EXPECT_EQ(query::textOfQuery("\xEF\xBB\xBF"
                                 "d"),
              u"d")
        << "a byte order mark is no part of the text";
    EXPECT_EQ(query::textOfQuery(QByteArray("\xFF\xFE"
                                            "d\0\xE9\0",
                                            6)),
              u"d\u00E9");
    EXPECT_EQ(query::textOfQuery("\x80 d\xE9 \x96"), u"\u20AC d\u00E9 \u2013");
}
