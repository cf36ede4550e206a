#include <conversion/FieldCutter.h>
#include <conversion/LocationRules.h>
#include <conversion/MemoryCheck.h>
#include <conversion/TextSource.h>
#include <support/Printers.h>
#include <tarnwick/base/Error.h>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace conversion;

namespace {

QString shown(const brannock::TubeLoc &place)
{
    return place.landmark.isEmpty() ? QString() : u"%1 %2"_s.arg(place.landmark).arg(double(place.offset));
}

// "location|from|to"
QString location(const QString &text)
{
    const LocationText parsed = parseLocation(text);
    return QStringList{shown(parsed.location), shown(parsed.from), shown(parsed.to)}.join(u'|');
}

QStringList linesOf(const QByteArray &content)
{
    const TextSource text(u"a.txt"_s, content);
    QStringList lines;
    for (int i = 0; i < text.lineCount(); ++i)
        lines.append(text.line(i).toString());
    return lines;
}

} // namespace

TEST(LocationRulesTest, OnePlace)
{
    EXPECT_EQ(location(u"TSH +1.25"_s), u"TSH 1.25||"_s);
    EXPECT_EQ(location(u"  TSH   -1.25  "_s), u"TSH -1.25||"_s);
    EXPECT_EQ(location(u"TSH - 1.5 in"_s), u"TSH -1.5||"_s);
    EXPECT_EQ(location(u"TSH+1.25"_s), u"TSH 1.25||"_s);
    EXPECT_EQ(location(u"01H 0.5"_s), u"01H 0.5||"_s);
    EXPECT_EQ(location(u"AV1 +-2"_s), u"AV1 2||"_s);
    EXPECT_EQ(location(u"TSH +1E"_s), u"TSH 1||"_s);
}

TEST(LocationRulesTest, AStretch)
{
    EXPECT_EQ(location(u"TSH +1.0 TEH -2.0"_s), u"|TSH 1|TEH -2"_s);
    EXPECT_EQ(location(u"TSH 1.0 TEH 2.0"_s), u"|TSH 1|TEH 2"_s);
    EXPECT_EQ(location(u"TSH+1.0 TEH-2.0"_s), u"|TSH 1|TEH -2"_s);
    EXPECT_EQ(location(u"TSH +1.0 TO TEH -2.0"_s), u"TSH 1||"_s);
}

TEST(LocationRulesTest, OtherTextsAreTheLandmark)
{
    EXPECT_EQ(location(u"01-02"_s), u"01-02 0||"_s);
    EXPECT_EQ(location(u"01-02 +3"_s), u"01-02 +3 0||"_s);
    EXPECT_EQ(location(u"tsh +1.0"_s), u"tsh +1.0 0||"_s);
    EXPECT_EQ(location(u"TSH"_s), u"TSH 0||"_s);
    EXPECT_EQ(location(u"TSH INF"_s), u"TSH INF 0||"_s);
    EXPECT_EQ(location(u"TSH +1E999"_s), u"TSH +1E999 0||"_s);
    EXPECT_EQ(location(u""_s), u"||"_s);
}

TEST(LocationRulesTest, ExtentsAreTwoWords)
{
    EXPECT_EQ(parseExtent(u"  TEH   TEC x").begin, u"TEH"_s);
    EXPECT_EQ(parseExtent(u"  TEH   TEC x").end, u"TEC"_s);
    EXPECT_EQ(parseExtent(u"TEH").begin, u"TEH"_s);
    EXPECT_EQ(parseExtent(u"TEH").end, QString());
    EXPECT_EQ(parseExtent(u"").begin, QString());
}

TEST(LocationRulesTest, NumbersAreReadAsFarAsTheyGo)
{
    EXPECT_EQ(leadingNumber(u" -1.5e2V"), -150);
    EXPECT_EQ(leadingNumber(u".5."), 0.5);
    for (const QStringView text : {u"", u"-", u".", u"e5", u"abc", u"nan"})
        EXPECT_EQ(leadingNumber(text), 0);
}

TEST(FieldCutterTest, ColumnsEndWithTheLine)
{
    EXPECT_EQ(cutColumns(u"ab cd ef", 2, 5), u"cd");
    EXPECT_EQ(cutColumns(u"ab cd", 3, 100), u"cd");
    EXPECT_EQ(cutColumns(u"ab cd", -5, 1), u"ab");
    EXPECT_TRUE(cutColumns(u"ab cd", 4, 3).isEmpty());
    EXPECT_TRUE(cutColumns(u"ab cd", 99, 2147483647).isEmpty());
    EXPECT_TRUE(cutColumns(u"ab", -9, -3).isEmpty());
}

TEST(FieldCutterTest, CommaDelimitedValuesMayStandInQuotes)
{
    const auto split = [](QStringView line) {
        QStringList texts;
        for (const DelimitedValue &value : splitCommaDelimited(line))
            texts.append(value.text + u'@' + QString::number(value.start));
        return texts;
    };
    EXPECT_EQ(split(u" 1 , \"a, \"\"b\"\"\" ,, x y,"),
              (QStringList{u"1@0"_s, u"a, \"b\"@4"_s, u"@17"_s, u"x y@18"_s, u"@23"_s}));
    EXPECT_EQ(split(u"1,\"never, closed"), (QStringList{u"1@0"_s, u"never, closed@2"_s}));
    EXPECT_EQ(split(u""), QStringList{u"@0"_s});
}

TEST(TextSourceTest, TakesLinesOfEverySystem)
{
    const QStringList expected{u"a"_s, QString(), u" b"_s};
    EXPECT_EQ(linesOf("a\n\n b\n"), expected);
    EXPECT_EQ(linesOf("a\r\n\r\n b\r\n\x1a"), expected);
    EXPECT_EQ(linesOf("a\r\r b"), expected);
    EXPECT_EQ(linesOf("a\r\n\r b\r\r\n"), expected);
    EXPECT_EQ(linesOf("a\n\n b\r"), expected);
    EXPECT_EQ(linesOf(""), QStringList());
}

TEST(TextSourceTest, RefusesOnlyWhatTheMemoryCannotHold)
{
    EXPECT_EQ(TextSource(u"a.txt"_s, QByteArray(3'000'000, '\n')).lineCount(), 3'000'000);
    EXPECT_NO_THROW(requireMemory(u"a.txt"_s, 1000, u"It"_s));
    EXPECT_THROW(requireMemory(u"a.txt"_s, qint64(1) << 60, u"It"_s), tarnwick::FileError);
    EXPECT_GT(freeMemory().value_or(0), 1'000'000);
}

TEST(TextSourceTest, ReadsUtf8ElseCodePage1252)
{
    EXPECT_EQ(linesOf("\xEF\xBB\xBFn\xC3\xA4h\xE2\x82\xAC"), QStringList{u"näh€"_s});
    EXPECT_EQ(linesOf("n\xE4h\x80 \x93q\x94\x81"), QStringList{u"näh€ “q”\uFFFD"_s});
    EXPECT_EQ(linesOf(QByteArray("\xFF\xFE"
                                 "a\0\n\0"
                                 "b\0",
                                 8)),
              (QStringList{u"a"_s, u"b"_s}));
    EXPECT_EQ(linesOf(QByteArray("a\0\n\0b\0", 6)), (QStringList{u"a"_s, u"b"_s})) << "the mark is missing";
    EXPECT_EQ(linesOf(QByteArray("\0a\0\n\0b", 6)), (QStringList{u"a"_s, u"b"_s}));
    EXPECT_THROW(linesOf(QByteArray("ab\0d", 4)), tarnwick::FileError);
    EXPECT_THROW(linesOf(QByteArray("MZ\0\1\2", 5)), tarnwick::FileError);
}
