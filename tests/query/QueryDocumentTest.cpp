#include <gtest/gtest.h>
#include <query/ArvoOptions.h>
#include <query/QueryDocument.h>
#include <query/QueryHistoryList.h>
#include <query/SQLOptions.h>
#include <support/Damage.h>
#include <support/Marks.h>
#include <support/Printers.h>
#include <support/TemporaryFolder.h>
#include <tarnwick/FileWriter.h>

using namespace Qt::StringLiterals;
using query::QueryDocument;
using tarnwick::JFile;
using tarnwick::JTablePrintArg;

namespace {

QueryDocument sample()
{
    QueryDocument document;
    document.name = u"old name"_s;
    document.sql = u"SELECT row, col\nFROM report\nWHERE defect = 'Ä'"_s;
    document.layout.sections[JTablePrintArg::PageFooter] = {u"Page [CUR_PAGE]\nof [NUM_PAGE]"_s,
                                                            u"Courier New"_s,
                                                            12,
                                                            tarnwick::ColourRef(0x0000FF),
                                                            tarnwick::PrintSection::Align::Center,
                                                            0.1};
    document.layout.margins.top = 1.25;
    document.layout.separators = false;
    return document;
}

class QueryFileTest : public ::testing::Test
{
protected:
    support::TemporaryFolder folder;
    tarnwick::PathRoots roots{folder.path(u"palomine"_s), folder.path()};
};

TEST_F(QueryFileTest, ComesBackUnderItsOwnPath)
{
    QDir(folder.path()).mkdir(u"queries"_s);
    const QString path = folder.path(u"queries/deep.qry"_s);
    query::writeQueryFile(sample(), path);
    EXPECT_TRUE(folder.read(u"queries/deep.qry"_s).startsWith("\x78\x56\x34\x12"));
    QueryDocument read;
    query::readQueryFile(read, path, roots);
    QueryDocument expected = sample();
    expected.name = u"queries\\deep.qry"_s;
    EXPECT_EQ(read, expected);
    EXPECT_TRUE(read.isFile());
    EXPECT_EQ(read.nameInFolder(), u"deep.qry");
}

TEST_F(QueryFileTest, AnyOtherFileIsPlainSql)
{
    QueryDocument document = sample();
    const JTablePrintArg layout = document.layout;
    query::readQueryFile(document, folder.write(u"a.qry"_s, "SELECT *\nFROM report"), roots);
    EXPECT_EQ(document.sql, u"SELECT *\nFROM report");
    EXPECT_EQ(document.layout, layout);
    query::readQueryFile(document, folder.write(u"b.txt"_s, "x\xE4"), roots);
    EXPECT_EQ(document.sql, u"xä");
    query::readQueryFile(document, folder.writeText(u"c.txt"_s, u"xä"_s), roots);
    EXPECT_EQ(document.sql, u"xä");
    query::readQueryFile(document, folder.write(u"d.qry"_s, {}), roots);
    EXPECT_EQ(document.sql, u"");

    query::writeQueryFile(document, folder.path(u"a.qry"_s));
    EXPECT_TRUE(folder.read(u"a.qry"_s).startsWith("\x78\x56\x34\x12"));
}

TEST_F(QueryFileTest, ADamagedFileLeavesTheDocumentAsItIs)
{
    const QString path = folder.path(u"a.qry"_s);
    query::writeQueryFile(sample(), path);
    const QByteArray whole = folder.read(u"a.qry"_s);
    folder.write(u"a.qry"_s, whole.left(whole.size() - 1));
    QueryDocument document = sample();
    EXPECT_THROW(query::readQueryFile(document, path, roots), tarnwick::JFileError);
    EXPECT_THROW(query::readQueryFile(document, folder.path(u"none.qry"_s), roots), tarnwick::FileError);
    EXPECT_EQ(document, sample());
}

TEST(QueryDocumentTest, ADamagedRecordIsReadOrRefused)
{
    JFile file = JFile::forWriting({});
    sample().serialize(file);
    const auto readBack = [](const QByteArray &bytes) {
        JFile from = JFile::fromBytes(bytes, u"record"_s);
        QueryDocument().serialize(from);
    };
    support::expectEveryTruncationThrows<tarnwick::JFileError>(file.bytes(), readBack);
    support::expectDamageIsSurvived<tarnwick::JFileError>(file.bytes(), readBack);
}

TEST(QueryDocumentTest, OnlyTheExtensionMakesAFile)
{
    EXPECT_TRUE(QueryDocument::isFileName(u"queries\\A.QRY"));
    EXPECT_FALSE(QueryDocument::isFileName(u"deep wear"));
    EXPECT_FALSE(QueryDocument::isFileName(u"a.qry#"));
    EXPECT_FALSE(QueryDocument::isFileName(u""));
}

TEST(QueryDocumentTest, OlderRecordsHaveNoLayout)
{
    JFile file = JFile::forWriting({});
    qint32 version = 2;
    QString name = u"n"_s;
    QString sql = u"SELECT 1"_s;
    file.serialize(version);
    file.serialize(name);
    file.serialize(sql);
    QueryDocument document = sample();
    JFile from = JFile::fromBytes(file.bytes(), u"record"_s);
    document.serialize(from);
    EXPECT_EQ(document.sql, sql);
    EXPECT_EQ(document.layout, sample().layout);
    EXPECT_EQ(from.bytesLeft(), 0);
}

class OptionsTest : public ::testing::Test
{
protected:
    /// An option file of any version: what stands before the body is taken from a stored one.
    void writeBody(tarnwick::OptionFile &options, int version, const std::function<void(JFile &)> &body)
    {
        JFile file = JFile::forWriting(options.path().installationPath(roots));
        file.header(u"OptionFile"_s, 1);
        QString title = options.title();
        qint32 fileVersion = version;
        file.serialize(title);
        file.serialize(fileVersion);
        body(file);
        file.commit();
    }

    support::TemporaryFolder folder;
    tarnwick::PathRoots roots{folder.path(), {}};
};

TEST_F(OptionsTest, SqlOptionsOfEveryVersionAreRead)
{
    query::SQLOptions options(u"query_fill"_s);
    EXPECT_EQ(options.path().text(), u"config\\arvo\\query_fill.opt");
    options.editorLines = 20;
    options.sectionLines.pageFooter = 3;
    options.margins.left = 2;
    options.drawSeparators = false;
    options.queryButtons = QStringList{u"queries\\a.qry"_s, QString()};
    options.addRecentQuery(u"a database query"_s);
    for (int i = 0; i < 12; ++i)
        options.addRecentQuery(u"queries\\%1.qry"_s.arg(i));
    EXPECT_EQ(options.recentQueries.size(), 10);
    EXPECT_EQ(options.recentQueries.first(), u"queries\\11.qry");
    options.store(roots);
    query::SQLOptions read(u"query_fill"_s);
    EXPECT_TRUE(read.load(roots));
    EXPECT_EQ(read.editorLines, 20);
    EXPECT_EQ(read.sectionLines, options.sectionLines);
    EXPECT_EQ(read.margins, options.margins);
    EXPECT_FALSE(read.drawSeparators);
    EXPECT_EQ(read.queryButtons, options.queryButtons);
    EXPECT_EQ(read.recentQueries, options.recentQueries);

    const auto counts = [](JFile &file) {
        for (qint32 count : {10, 100, 20})
            file.serialize(count);
    };
    writeBody(read, 2, [&](JFile &file) {
        counts(file);
        tarnwick::PrintMargins{1, 2, 3, 4}.serialize(file);
        bool separators = false;
        QStringList recent{u"queries\\r.qry"_s};
        QStringList buttons{u"queries\\b.qry"_s};
        file.serialize(separators);
        file.serialize(recent);
        file.serialize(buttons);
    });
    EXPECT_TRUE(read.load(roots));
    EXPECT_EQ(read.editorLines, 10);
    EXPECT_EQ(read.sectionLines, query::SQLOptions::SectionLines());
    EXPECT_EQ(read.margins.bottom, 4);
    EXPECT_EQ(read.recentQueries, QStringList{u"queries\\r.qry"_s});

    writeBody(read, 1, [&](JFile &file) {
        counts(file);
        QString discarded = u"old"_s;
        file.serialize(discarded);
        file.serialize(discarded);
    });
    EXPECT_TRUE(read.load(roots));
    EXPECT_EQ(read.resultLines, 20);
    EXPECT_EQ(read.margins, tarnwick::PrintMargins());
    EXPECT_TRUE(read.drawSeparators);
    EXPECT_TRUE(read.recentQueries.isEmpty());
}

TEST_F(OptionsTest, ArvoOptionsComeBackAndOldOnesTakeTheProjectsFormat)
{
    query::ArvoOptions options;
    EXPECT_EQ(options.map.mapColour, tarnwick::ColourRef(0xD0FFFD));
    EXPECT_EQ(options.databaseFormat, 2002);
    options.databaseFormat = 1997;
    options.page.drawLegendRect = false;
    options.map.tickColour = tarnwick::ColourRef(0x123456);
    options.tubeInfoTabs = {{u"Tab 1"_s, u"SELECT * FROM report WHERE row = [ROW]"_s}};
    options.userMacros.set(u"LIMIT"_s, u"40"_s);
    options.recentDatabases = {u"arvo\\project.mdb"_s};
    options.store(roots);
    query::ArvoOptions read;
    EXPECT_TRUE(read.load(roots));
    EXPECT_EQ(read.databaseFormat, 1997);
    EXPECT_FALSE(read.page.drawLegendRect);
    EXPECT_EQ(read.map.tickColour, tarnwick::ColourRef(0x123456));
    EXPECT_EQ(read.tubeInfoTabs, options.tubeInfoTabs);
    EXPECT_EQ(read.userMacros, options.userMacros);
    EXPECT_EQ(read.recentDatabases, options.recentDatabases);

    writeBody(read, 1, [](JFile &file) {
        tarnwick::PrintMargins{0.5, 0.5, 0.5, 0.5}.serialize(file);
        for (bool flag : {true, true, false})
            file.serializeByte(flag);
        for (qint32 number : {1, 2, 3, 4, 5, -3, 4000, 0, 1})
            file.serialize(number); // colours, tick sizes, no tabs, version of the macros
        for (quint32 nothing : {0, 0, 0})
            file.serialize(nothing);
    });
    read.setProjectFormat(2000);
    EXPECT_TRUE(read.load(roots));
    EXPECT_EQ(read.databaseFormat, 2000);
    read.setProjectFormat(1997);
    EXPECT_EQ(read.databaseFormat, 1997) << "another project was opened";
    EXPECT_EQ(read.map.selectColour, tarnwick::ColourRef(3));
    EXPECT_FALSE(read.page.drawMapRect);
    EXPECT_EQ(read.map.displayTickSize, -3) << "kept as it is stored";
    EXPECT_EQ(read.map.displayTick(), 4) << "painted in a size that can be read";
    EXPECT_EQ(read.map.printTick(), 20);
}

TEST_F(OptionsTest, ProgramsThatRunTogetherKeepEachOthersHistory)
{
    query::QueryHistoryList one;
    query::QueryHistoryList other; // neither has loaded anything, as nothing is there yet
    one.remember(u"a"_s, u"x"_s, u"1"_s);
    one.remember(u"gone"_s, u"x"_s, u"1"_s);
    one.storeChanges(roots);
    other.setMark(u"b"_s, markOf(u'W', 0x00FF00));
    other.storeChanges(roots);
    one.remember(u"A"_s, u"y"_s, u"2"_s);
    one.forget(u"gone"_s);
    one.storeChanges(roots);

    other.remember(u"c"_s, u"z"_s, u"3"_s); // not stored yet
    other.refresh(roots);
    EXPECT_EQ(other.value(u"a", u"y"), u"2"_s);
    EXPECT_EQ(other.value(u"c", u"z"), u"3"_s);
    EXPECT_FALSE(other.find(u"gone"));
    other.storeChanges(roots);
    query::QueryHistoryList read;
    ASSERT_TRUE(read.load(roots));
    EXPECT_EQ(read.entries(), other.entries());
    EXPECT_EQ(read.entries().size(), 3);

    // What could not be stored is stored with what comes next.
    tarnwick::failWritesAfter(0);
    one.remember(u"a"_s, u"x"_s, u"9"_s);
    EXPECT_THROW(one.storeChanges(roots), tarnwick::FileError);
    tarnwick::failWritesAfter(-1);
    one.storeChanges(roots);
    ASSERT_TRUE(read.load(roots));
    EXPECT_EQ(read.value(u"a", u"x"), u"9"_s);
    EXPECT_EQ(read.value(u"c", u"z"), u"3"_s);
}

TEST_F(OptionsTest, HistoryMatchesNamesWithoutCaseAndForgetsInOrder)
{
    query::QueryHistoryList history;
    history.remember(u"a"_s, u"OUTAGE"_s, u"R1"_s);
    history.remember(u"b"_s, u"outage"_s, u"R2"_s);
    history.remember(u"A"_s, u"Outage"_s, u"R3"_s);
    history.remember({}, u"x"_s, u"1"_s);
    history.remember(u"a"_s, {}, u"1"_s);
    history.setMark(u"c"_s, markOf(u'W', 0x00FF00));
    history.setMark({}, markOf(u'X', 1));
    EXPECT_EQ(history.entries().size(), 3);
    EXPECT_EQ(history.value(u"a", u"outage"), u"R3"_s);
    EXPECT_EQ(history.value(u"B", u"OUTAGE"), u"R2"_s);
    EXPECT_EQ(history.value(u"c", u"OUTAGE"), std::nullopt);
    EXPECT_EQ(history.find(u"C")->mark.symbol, ellery::Symbol(u'W'));

    history.store(roots);
    query::QueryHistoryList read;
    EXPECT_TRUE(read.load(roots));
    EXPECT_EQ(read.entries(), history.entries());
    read.forget(u"A"_s);
    ASSERT_EQ(read.entries().size(), 2);
    EXPECT_EQ(read.entries()[0].queryName, u"b");
    read.forgetAll();
    EXPECT_TRUE(read.entries().isEmpty());

    const QByteArray whole = folder.read(u"config/arvo/query_history.opt"_s);
    const QString path = folder.path(u"damaged.opt"_s);
    const auto reread = [&](const QByteArray &bytes) {
        folder.write(u"damaged.opt"_s, bytes);
        query::QueryHistoryList damaged;
        damaged.loadFrom(path);
    };
    support::expectEveryTruncationThrows<tarnwick::FileError>(whole, reread);
    support::expectDamageIsSurvived<tarnwick::FileError>(whole, reread);
}

} // namespace
