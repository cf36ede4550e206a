#include <ctime>
#include <fenwright/CellText.h>
#include <fenwright/Infos.h>
#include <fenwright/JFileTable.h>
#include <fenwright/JsonSettings.h>
#include <fenwright/TableScanner.h>
#include <gmock/gmock.h>
#include <QTemporaryDir>
#include <tarnwick/FileWriter.h>

using namespace Qt::StringLiterals;
using fenwright::JFileTable;
using fenwright::JsonSettings;
using fenwright::TableScanner;
using tarnwick::FileError;

namespace {

/// The error's line and reason, or what was read when there is none.
QString readError(const QByteArray &content, const QStringList &required = {u"row"_s}, int minimumCells = 0)
{
    try {
        JFileTable::parse(content, u"t.txt"_s, required, minimumCells);
    } catch (const FileError &error) {
        return u"%1: %2"_s.arg(error.line()).arg(error.reason());
    }
    return u"no error"_s;
}

TEST(JFileTableTest, ReadsWhatSpreadsheetsWrite)
{
    // Byte order mark, Windows line ends, quoted cells, blanks in the heading, an empty column at the end, short lines.
    const JFileTable table = JFileTable::parse(
        "\xEF\xBB\xBF# made by hand\r\n Row \tName\tNote\t\r\n\r\n7\t\"a \"\"b\"\"\"\t\t\r\n\t\t\t\r\n8\r\n",
        u"t.txt"_s, {u"row"_s});
    ASSERT_EQ(table.rowCount(), 2);
    EXPECT_EQ(table.integer(0, table.column(u"ROW"), 0, 9, -1), 7);
    EXPECT_EQ(table.text(0, table.column(u"name")), u"a \"b\"");
    EXPECT_EQ(table.line(0), 4);
    EXPECT_EQ(table.text(1, table.column(u"note")), QString());
    EXPECT_EQ(table.integer(1, table.column(u"missing"), 0, 9, 5), 5);

    const QByteArray wide = QByteArray("\xFF\xFE", 2) + QByteArray("r\0o\0w\0\n\0"
                                                                   "5\0\n\0",
                                                                   12);
    EXPECT_EQ(JFileTable::parse(wide, u"t.txt"_s, {u"row"_s}).text(0, 0), u"5");
}

TEST(JFileTableTest, WrittenCellsComeBack)
{
    JFileTable table({u"a"_s, u"b"_s});
    const QStringList texts = {u"#1"_s,      u"!note"_s, u"\"quoted\""_s, u"tab\tand\nline\r\\end"_s,
                               u"Größe λ"_s, u"\\t"_s};
    for (const QString &text : texts)
        table.addRow({text, text});
    const JFileTable again = JFileTable::parse(table.toBytes(), u"t.txt"_s, {u"a"_s});
    ASSERT_EQ(again.rowCount(), texts.size());
    for (int i = 0; i < texts.size(); ++i) {
        EXPECT_EQ(again.text(i, 0), texts[i]);
        EXPECT_EQ(again.text(i, 1), texts[i]);
    }
}

TEST(JFileTableTest, SaysWhatIsWrongAndWhere)
{
    EXPECT_EQ(readError(""), u"0: The file has no heading line with column names.");
    EXPECT_EQ(readError("col\n1\n"), u"1: The heading has no column 'row'.");
    EXPECT_EQ(readError("row\tcol\tROW\n"), u"1: The heading names column 'ROW' twice.");
    EXPECT_EQ(readError("row\n1\n1\t2\n"), u"3: The line has 2 cells, the heading only 1 columns.");
    EXPECT_EQ(readError("col\tsec\trow\n1\t2\n"),
              u"2: The line has 2 columns where at least 3 are needed (column 'row' is missing).");
    EXPECT_EQ(readError("row\tcol\n1\n", {u"row"_s}, 2),
              u"2: The line has 1 columns where at least 2 are needed (column 'col' is missing).");
    EXPECT_EQ(readError("row\n1\nG\xF6\n"), u"3: The text is not UTF-8; save it as Unicode text.");
}

TEST(TableScannerTest, AFileOfThePresentVersionIsReadWholeOrNotAtAll)
{
    fenwright::TableWriter writer;
    writer.property(u"name"_s, u"Plan A"_s);
    writer.heading({u"row"_s, u"note"_s});
    for (int row = 1; row <= 12; ++row) {
        writer.cell(row);
        writer.cell(u"größer"_s);
        writer.endRow();
    }
    const QByteArray whole = writer.bytes();
    ASSERT_TRUE(whole.endsWith("\n!rows\t12\n"));
    // A spreadsheet may write it as UTF-16, with line ends of its own.
    const QString text = QString::fromUtf8(whole).replace(u'\n', u"\r\n"_s);
    const QByteArray wide = "\xFF\xFE" + QByteArray(reinterpret_cast<const char *>(text.utf16()), text.size() * 2);
    for (const QByteArray &file : {whole, wide}) {
        EXPECT_TRUE(TableScanner(file, u"t.txt"_s, {}).isCounted());
        EXPECT_EQ(JFileTable::parse(file, u"t.txt"_s, {}).rowCount(), 12);
        for (qsizetype size = 0; size < file.size(); ++size)
            EXPECT_NE(readError(file.first(size)), u"no error") << size;
    }
    const auto changed = [&](const QByteArray &before, const QByteArray &after) {
        return readError(QByteArray(whole).replace(before, after));
    };
    EXPECT_EQ(changed("\n3\t", "\n\n# 3\t"), u"17: The line states 12 rows, but the file has 11. If rows were added or "
                                             u"removed by hand, correct the number.");
    EXPECT_EQ(changed("!rows\t12", "!rows\tmany"), u"16: The line with the number of rows contains no number.");
    EXPECT_EQ(changed("!rows\t12\n", "!rows\t12\n13\tx\n"), u"0: The file does not end with the line that contains its "
                                                            u"number of rows. It is truncated, or lines were added "
                                                            u"behind that line.");
    EXPECT_EQ(changed("version\t2", "version\t3"),
              u"0: The file is of version 3; this program reads versions up to 2.");
    EXPECT_EQ(changed("version\t2", "version\tB"), u"0: Property 'version': 'B' is not a version.");
    EXPECT_EQ(changed("!rows\t12\n", "!rows\t12\t\n \n"), u"no error");

    // A table made by hand may lack the line, which can be asked for, but not the end of its last line.
    EXPECT_FALSE(TableScanner("row\n1\n", u"t.txt"_s, {}).isCounted());
    EXPECT_EQ(readError("row\n1\n!rows\t2\n").left(3), u"3: ");
    EXPECT_EQ(readError("row\n1\n2"), u"3: The last line has no line end, so the file may be truncated. If it is "
                                      u"complete, add a line end.");
}

TEST(TableScannerTest, AHundredThousandColumnsTakeNoTime)
{
    QByteArray heading = "row";
    for (int i = 0; i < 100'000; ++i)
        heading += "\tc" + QByteArray::number(i);
    const std::clock_t start = std::clock();
    const TableScanner table(heading + '\n', u"t.txt"_s, {u"row"_s});
    EXPECT_EQ(table.column(u"C99999"), 100'000);
    // Comparing each name with all others took minutes.
    EXPECT_LT((std::clock() - start) / CLOCKS_PER_SEC, 10);
}

TEST(TableScannerTest, NumbersAreChecked)
{
    TableScanner table("!Name\tPlan A\nn\tx\n+7\t 1.5 \n1e3\tnan\n\t1,5\n99999999999999999999\t1e999\n", u"t.txt"_s,
                       {u"n"_s});
    EXPECT_EQ(table.property(u"name"_s), u"Plan A");
    ASSERT_TRUE(table.next());
    EXPECT_EQ(table.integer(0, 0, 10), 7);
    EXPECT_EQ(table.number(1), 1.5);
    ASSERT_TRUE(table.next());
    EXPECT_THROW(table.integer(0, 0, 10000), FileError);
    EXPECT_THROW(table.number(1), FileError);
    ASSERT_TRUE(table.next());
    EXPECT_EQ(table.integer(0, 0, 10, 3), 3);
    EXPECT_THROW(table.integer(0, 0, 10), FileError);
    EXPECT_THROW(table.number(1), FileError);
    ASSERT_TRUE(table.next());
    EXPECT_THROW(table.number(1), FileError);
    try {
        table.integer(0, 0, 10);
        FAIL();
    } catch (const FileError &error) {
        EXPECT_EQ(error.line(), 6);
        EXPECT_EQ(error.reason(), u"Column 'n': '99999999999999999999' is not a whole number from 0 to 10.");
    }
    EXPECT_FALSE(table.next());
}

TEST(CellTimeTest, FilesMeanTheSameInEveryLocale)
{
    const auto noon = tarnwick::JDateTime::fromLocal(2020, 3, 4, 12);
    for (const char *text :
         {"2020-03-04T12:00:00", "2020-03-04 12:00", "3/4/2020 12:00", "03/04/2020 12:00:00", " 03/04/2020 12:00 "})
        EXPECT_EQ(fenwright::cellTime(text), noon) << text;
    EXPECT_EQ(fenwright::cellTime("2020-02-29"), tarnwick::JDateTime::fromLocal(2020, 2, 29));
    for (const char *text : {"", "2019-02-29", "13/01/2020", "2020-03-04T24:00", "2020-03-04T12",
                             "2020-03-04 12:00:00 x", "04.03.2020", "2020-3-4"})
        EXPECT_FALSE(fenwright::cellTime(text)) << text;
}

TEST(JsonSettingsTest, RefusesOtherKindsTypesAndVersions)
{
    const QTemporaryDir dir;
    const QString path = dir.filePath(u"s.json"_s);
    const auto reason = [&](const QByteArray &content, auto use) {
        tarnwick::writeFileAtomically(path, content);
        try {
            use(JsonSettings::read(path, u"thing"_s, 2));
        } catch (const FileError &error) {
            return u"%1: %2"_s.arg(error.line()).arg(error.reason());
        }
        return u"no error"_s;
    };
    const auto nothing = [](const JsonSettings &) {};
    EXPECT_TRUE(reason("{\n \"format\": \"thing\",\n oops\n}", nothing).startsWith(u"3: The file is not valid JSON"));
    EXPECT_EQ(reason("[1]", nothing), u"0: The file is not of the kind \"thing\".");
    EXPECT_EQ(reason("{\"format\":\"thing\",\"version\":3}", nothing),
              u"0: The file is of version 3; this program reads versions up to 2.");
    const QByteArray good = "{\"format\":\"thing\",\"a\":{\"n\":1.5,\"t\":7}}";
    EXPECT_EQ(reason(good, [](const JsonSettings &s) { s.section(u"a"_s).integer(u"n"_s, 0, 9, 0); }),
              u"0: Setting 'a.n': a whole number from 0 to 9 is needed.");
    EXPECT_EQ(reason(good, [](const JsonSettings &s) { s.section(u"a"_s).text(u"t"_s); }),
              u"0: Setting 'a.t': a text is needed.");
    EXPECT_EQ(reason(good, [](const JsonSettings &s) { s.requiredText(u"name"_s); }),
              u"0: Setting 'name': the setting is missing or empty.");
    EXPECT_EQ(reason(good, [](const JsonSettings &s) { s.list(u"a"_s); }), u"0: Setting 'a': a list is needed.");
    EXPECT_EQ(fenwright::jsonNumber(0.1f), 0.1);
}

TEST(SiteInfoTest, RecordComesBackAndNewerVersionsAreRefused)
{
    fenwright::SiteInfo site{u"S1"_s, u"Site"_s, u"1"_s, u"SGA"_s, u"A"_s, u"M"_s, u"R10"_s};
    tarnwick::JFile out = tarnwick::JFile::forWriting(u"site"_s);
    site.serialize(out);
    fenwright::SiteInfo again;
    tarnwick::JFile in = tarnwick::JFile::fromBytes(out.bytes(), u"site"_s);
    again.serialize(in);
    EXPECT_EQ(again, site);

    QByteArray newer = out.bytes();
    newer[0] = 2;
    tarnwick::JFile refused = tarnwick::JFile::fromBytes(newer, u"site"_s);
    EXPECT_THROW(again.serialize(refused), FileError);
}

} // namespace
