#include <jet/format/JoinText.h>
#include <jet/format/LongValues.h>
#include <jet/format/Properties.h>
#include <jet/format/QueryText.h>
#include <jet/format/Row.h>
#include <jet/format/RowEncoder.h>
#include <jet/format/SqlNames.h>

#include <gtest/gtest.h>
#include <numeric>

using namespace Qt::StringLiterals;

namespace jet::format {
namespace {

Bytes bytesOf(const QByteArray &bytes)
{
    return {reinterpret_cast<const uchar *>(bytes.constData()), size_t(bytes.size())};
}

ColumnDefinition column(int number, ColumnType type, int place, bool fixed, int size = 0)
{
    ColumnDefinition column;
    column.number = number;
    column.type = type;
    column.fixed = fixed;
    (fixed ? column.fixedOffset : column.variableSlot) = place;
    column.size = size;
    return column;
}

// Long, Text, Text, Boolean
TableDefinition smallTable()
{
    TableDefinition table;
    table.variableColumns = 2;
    table.columns = {column(0, ColumnType::Long, 0, true, 4), column(1, ColumnType::Text, 0, false),
                     column(2, ColumnType::Text, 1, false), column(3, ColumnType::Boolean, 4, true)};
    return table;
}

TEST(JetRowTest, NullMaskTellsNullFromEmptyText)
{
    // 4 columns; 7; "ab" and ""; end of values, offsets from last to first, their count; mask: all but the third
    const QByteArray row = QByteArray::fromHex("0400"
                                               "07000000"
                                               "6162"
                                               "0800"
                                               "0800"
                                               "0600"
                                               "0200"
                                               "0b");
    Row parsed;
    parsed.parse(bytesOf(row), smallTable(), true);
    EXPECT_EQ(u32At(parsed.bytes(0), 0), 7U);
    EXPECT_EQ(parsed.bytes(1).size(), 2U);
    EXPECT_TRUE(parsed.isNull(2));
    EXPECT_TRUE(parsed.bit(3));

    QByteArray emptyText = row;
    emptyText[emptyText.size() - 1] = 0x07;
    parsed.parse(bytesOf(emptyText), smallTable(), true);
    EXPECT_FALSE(parsed.isNull(2));
    EXPECT_TRUE(parsed.bytes(2).empty());
    EXPECT_FALSE(parsed.bit(3));
}

TEST(JetRowTest, AColumnAddedLaterIsNullInOlderRows)
{
    TableDefinition table = smallTable();
    table.columns.append(column(9, ColumnType::Long, 4, true, 4));
    Row parsed;
    parsed.parse(bytesOf(QByteArray::fromHex("0400"
                                             "07000000"
                                             "6162"
                                             "0800"
                                             "0800"
                                             "0600"
                                             "0200"
                                             "0b")),
                 table, true);
    EXPECT_TRUE(parsed.isNull(4));
}

TEST(JetRowTest, EveryShortenedOrTwistedRowIsFoundOutOrReadInside)
{
    const QByteArray row = QByteArray::fromHex("0400"
                                               "07000000"
                                               "6162"
                                               "0800"
                                               "0800"
                                               "0600"
                                               "0200"
                                               "0f");
    Row parsed;
    for (qsizetype length = 0; length < 9; ++length)
        EXPECT_THROW(parsed.parse(bytesOf(row.left(length)), smallTable(), true), Damage) << length;
    for (const bool jet4 : {true, false}) {
        for (qsizetype at = 0; at < row.size(); ++at) {
            for (int value = 0; value < 256; value += 5) {
                QByteArray twisted = row;
                twisted[at] = char(value);
                try {
                    parsed.parse(bytesOf(twisted), smallTable(), jet4);
                } catch (const Damage &) {
                    continue;
                }
                for (qsizetype i = 0; i < 3; ++i) { // the sanitizer watches the reading
                    const Bytes value8 = parsed.bytes(i);
                    EXPECT_LE(std::accumulate(value8.begin(), value8.end(), 0), 255 * int(row.size()));
                }
            }
        }
    }
}

TEST(JetRowTest, OldRowsBeyond256BytesUseTheJumpTable)
{
    // 4 columns, 7, 300 times "x", "yz": offsets 5, 305, 307 in one byte each; from the second offset on 256 is added
    QByteArray row = QByteArray::fromHex("04"
                                         "07000000") +
                     QByteArray(300, 'x') + "yz";
    row += QByteArray::fromHex("33"
                               "31"
                               "05"
                               "01"
                               "02"
                               "07");
    Row parsed;
    parsed.parse(bytesOf(row), smallTable(), false);
    EXPECT_EQ(parsed.bytes(1).size(), 300U);
    EXPECT_EQ(parsed.bytes(2).size(), 2U);
    EXPECT_EQ(parsed.bytes(2)[0], 'y');
}

TEST(JetTextTest, PlainCompressedAndCodePage)
{
    const TextCodec jet4(true, 1252);
    const TextCodec jet3(false, 1252);
    const TextCodec cyrillic(false, 1251);
    const auto decode = [](const TextCodec &codec, const char *hex) {
        QString text;
        EXPECT_TRUE(codec.decode(bytesOf(QByteArray::fromHex(hex)), text)) << hex;
        return text;
    };
    EXPECT_EQ(decode(jet4, "4100 a903 3dd8 20de"), u"AΩ😠");
    EXPECT_EQ(decode(jet4, "fffe 6162 00 a903 00 63"), u"abΩc");
    EXPECT_EQ(decode(jet3, "80 e9 9f"), u"€éŸ");
    EXPECT_EQ(decode(cyrillic, "cce8f0"), u"Мир");
    QString text;
    EXPECT_FALSE(jet4.decode(bytesOf(QByteArray::fromHex("410042")), text));
    EXPECT_FALSE(jet4.decode(bytesOf(QByteArray::fromHex("fffe410041")), text));
    EXPECT_THROW(jet4.name({}), Damage);
    EXPECT_THROW(jet4.name(bytesOf(QByteArray(200, 'a'))), Damage);
}

TEST(JetValuesOfRowsTest, DecimalsAndReplicationIds)
{
    const auto decimal = [](const char *hex, int scale) {
        return decimalText(bytesOf(QByteArray::fromHex(hex)), scale);
    };
    EXPECT_EQ(decimal("00 00000000 00000000 00000000 39300000", 2), "123.45");
    EXPECT_EQ(decimal("80 00000000 00000000 00000000 05000000", 3), "-0.005");
    EXPECT_EQ(decimal("00 00000000 00000000 01000000 00000000", 0), "4294967296");
    EXPECT_EQ(decimal("00 ffffffff ffffffff ffffffff ffffffff", 0), "340282366920938463463374607431768211455");
    EXPECT_EQ(guidText(bytesOf(QByteArray::fromHex("00112233445566778899aabbccddeeff"))),
              u"{33221100-5544-7766-8899-AABBCCDDEEFF}");
}

// A file in memory: pages of long values.
class MemoryPages : public PageSource
{
public:
    wire::FileFacts facts() const override { return {4, 1252, 4096, quint32(pages.size())}; }
    bool read(quint32 page, uchar *buffer) override
    {
        memcpy(buffer, pages.at(page).constData(), 4096);
        return true;
    }
    /// A page with one row at its end.
    void add(const QByteArray &row)
    {
        QByteArray page(4096, '\0');
        page[0] = 1;
        page.replace(4, 4, "LVAL");
        page[12] = 1;
        const int start = 4096 - int(row.size());
        page[14] = char(start & 0xFF);
        page[15] = char(start >> 8);
        page.replace(start, row.size(), row);
        pages.append(page);
    }
    QList<QByteArray> pages{QByteArray(4096, '\0')};
};

TEST(JetLongValuesTest, InTheRowOnAPageAndInAChain)
{
    MemoryPages file;
    file.add("elsewhere");
    file.add(QByteArray::fromHex("00030000") + "first ");
    file.add(QByteArray::fromHex("00000000") + "second");
    Pages pages(file);
    LongValues values(pages);
    const auto read = [&](const char *hex) {
        const QByteArray field = QByteArray::fromHex(hex);
        const Bytes value = values.read(bytesOf(field));
        return QByteArray(reinterpret_cast<const char *>(value.data()), qsizetype(value.size()));
    };
    EXPECT_EQ(read("03000080 00000000 00000000 616263"), "abc");
    EXPECT_EQ(read("09000040 00010000 00000000"), "elsewhere");
    EXPECT_EQ(read("0c000000 00020000 00000000"), "first second");
    EXPECT_EQ(read("00000000 00000000 00000000"), "");
    EXPECT_THROW(read("0a000040 00010000 00000000"), Damage); // longer than the row
    EXPECT_THROW(read("0d000000 00020000 00000000"), Damage); // longer than the chain
    EXPECT_THROW(read("0c000000 00090000 00000000"), Damage); // beyond the end
    EXPECT_THROW(read("ffffff3f 00020000 00000000"), Damage); // longer than the file
    EXPECT_THROW(read("04000080 00000000 00000000 616263"), Damage);
}

TEST(JetLongValuesTest, ARingComesToAnEndAndSoDoValuesThatShareBytes)
{
    MemoryPages file;
    file.add(QByteArray::fromHex("00010000") + "x"); // goes on with itself
    Pages pages(file);
    LongValues values(pages);
    const QByteArray field = QByteArray::fromHex("002000000001000000000000");
    EXPECT_EQ(values.read(bytesOf(field)).size(), 8192U);
    EXPECT_THROW(values.read(bytesOf(field)), Damage);
}

TEST(JetPropertiesTest, ARecordOfNoLengthEndsTheReading)
{
    const TextCodec text(false, 1252);
    QByteArray block = "KKD" +
                       QByteArray::fromHex("00"
                                           "0d000000 8000 0500") +
                       "Title"; // the one name
    block += QByteArray::fromHex("17000000 0000 06000000 0000"
                                 "0b00 00 0a 0000 0300") +
             "abc";
    Properties whole;
    EXPECT_TRUE(whole.parse(bytesOf(block), false, text));
    EXPECT_EQ(whole.text({}, u"title"_s), u"abc");
    for (qsizetype at = 4; at < block.size(); ++at) {
        QByteArray zeroed = block;
        zeroed[at] = '\0';
        Properties properties;
        properties.parse(bytesOf(zeroed), false, text);
    }
    Properties cut;
    EXPECT_FALSE(cut.parse(bytesOf(block.left(block.size() - 1)), false, text));
    EXPECT_FALSE(cut.parse(bytesOf("KKD" + QByteArray(7, '\0')), false, text));
}

QueryRow queryRow(int attribute, int flag, const QString &expression, const QString &name1 = {},
                  const QString &name2 = {})
{
    return {attribute, flag, expression, name1, name2, {}};
}

TEST(JetQueriesTest, FormsThatTheSampleFilesDoNotShow)
{
    EXPECT_EQ(queryText({queryRow(1, 3, {}, u"log"_s), queryRow(6, 0x8000, u"Now()"_s, {}, u"when"_s),
                         queryRow(6, 0x8000, u"'x'"_s, {}, u"what kind"_s)}),
              u"INSERT INTO log (when, [what kind])\nVALUES (Now(), 'x');");
    EXPECT_EQ(queryText({queryRow(1, 1, {}), queryRow(3, 1 | 4 | 16 | 32, {}, u"5"_s),
                         queryRow(5, 0, u"SELECT a FROM b;"_s, {}, u"%$##@_Alias"_s), queryRow(11, 0, u"a"_s, u"D"_s)}),
              u"SELECT TOP 5 PERCENT *\nFROM (SELECT a FROM b) AS [%$##@_Alias]\nORDER BY a DESC\n"
              "WITH OWNERACCESS OPTION;");
    EXPECT_EQ(queryText({queryRow(1, 5, {}), queryRow(5, 0, {}, u"order"_s), queryRow(8, 0, u"x=1"_s)}),
              u"DELETE FROM [order]\nWHERE x=1;");
    EXPECT_EQ(queryText({queryRow(1, 1, {}), queryRow(4, 0, {}, u"c:\\it's.mdb"_s), queryRow(5, 0, {}, u"t"_s),
                         queryRow(6, 0, u"a"_s)}),
              u"SELECT a\nFROM t IN 'c:\\it''s.mdb';");
    EXPECT_EQ(queryText({queryRow(1, 1, {}), queryRow(6, 0, u"Date()"_s, u"Today"_s)}), u"SELECT Date() AS Today;");
    EXPECT_THROW(queryText({}), Damage);
    EXPECT_THROW(queryText({queryRow(1, 77, {})}), Damage);
    EXPECT_THROW(queryText({queryRow(1, 1, {}), queryRow(5, 0, {}, u"t"_s)}), Damage);
    EXPECT_THROW(joinText({{u"a"_s, {}, {}}}, {{u"a"_s, u"b"_s, u"a.x=b.x"_s, 1}}), Damage);
}

TEST(JetQueriesTest, NamesThatNeedBrackets)
{
    EXPECT_EQ(sqlName(u"report#"_s), u"[report#]");
    EXPECT_EQ(sqlName(u"19 MB"_s), u"[19 MB]");
    EXPECT_EQ(sqlName(u"Umsätze"_s), u"Umsätze");
    EXPECT_EQ(sqlName(u"Select"_s), u"[Select]");
    EXPECT_EQ(sqlPath(u"order.my field"_s), u"[order].[my field]");
    EXPECT_EQ(sqlPath(u"[a b].[c]"_s), u"[a b].[c]");
}

} // namespace
} // namespace jet::format
