#include <support/Printers.h>
#include <tarnwick/Format.h>
#include <tarnwick/JFormatSpec.h>

#include <cstdio>
#include <gtest/gtest.h>
#include <limits>
#include <random>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace {

template <typename T>
QString byLibrary(const char *spec, T number)
{
    char text[512];
    std::snprintf(text, sizeof text, spec, number);
    return QString::fromLatin1(text);
}

} // namespace

TEST(FormatTest, FillsTheProgramsMessages)
{
    EXPECT_EQ(format(u"%S\n\n[%d] %S", u"Could not."_s, 3022, u"Engine text"_s), u"Could not.\n\n[3022] Engine text"_s);
    EXPECT_EQ(format(u"reports\\%05d_%S.rep", 1, u"PRI"_s), u"reports\\00001_PRI.rep"_s);
    EXPECT_EQ(format(u"\tentry=%3d row=%3d col=%3d sec=%3d\n", 7, 12, 101, 0),
              u"\tentry=  7 row= 12 col=101 sec=  0\n"_s);
    EXPECT_EQ(format(u"Random %d%% Fill", 20), u"Random 20% Fill"_s);
    EXPECT_EQ(format(u"%3d%%|", 5), u"  5%|"_s);
    EXPECT_EQ(format(u"TO %-3S %+.2f", u"C1"_s, 1.5), u"TO C1  +1.50"_s);
    EXPECT_EQ(format(u"|%*S|%*S|", 3, u"12"_s, -4, u"7"_s), u"| 12|7   |"_s);
    EXPECT_EQ(format(u"%4S \n", u"ROW"_s), u" ROW \n"_s);
    EXPECT_EQ(format(u"Query File - %S%c", u"a.qry"_s, QChar(u'*')), u"Query File - a.qry*"_s);
    EXPECT_EQ(format(u"Query File - %S%c|%C|", u"a.qry"_s, QChar(), QChar()), u"Query File - a.qry| |"_s);
    EXPECT_EQ(format(u"Unicode 0x%04X", char16_t(0x2126)), u"Unicode 0x2126"_s);
}

TEST(FormatTest, GroupsThousandsWithCommas)
{
    EXPECT_EQ(format(u"%D %D %D %D", 0, 999, 1000, 16000), u"0 999 1,000 16,000"_s);
    EXPECT_EQ(format(u"%D", -1234567), u"-1,234,567"_s);
    EXPECT_EQ(format(u"Tube Count  : %6D|%-7D|%3D", 3456, 1000, 12345), u"Tube Count  :  3,456|1,000  |12,345"_s);
    EXPECT_EQ(format(u"%D", std::numeric_limits<qint64>::min()), u"-9,223,372,036,854,775,808"_s);
}

TEST(FormatTest, CountsAndCutsCharactersNotUnits)
{
    const QString clef = u"\U0001D11E\U0001D11Eabc"_s;
    EXPECT_EQ(format(u"%7S|", clef), u"  "_s + clef + u"|"_s);
    EXPECT_EQ(format(u"%.1S|%.3S|%.0S|", clef, clef, clef), u"\U0001D11E|\U0001D11E\U0001D11Ea||"_s);
    EXPECT_EQ(format(u"%-6.*S|", 2, u"abcdef"_s), u"ab    |"_s);
}

// The C library is the measure for numbers; this process runs with a decimal point.
TEST(FormatTest, PrintsNumbersAsTheCLibraryDoes)
{
    const double numbers[] = {0.0, -0.0, 1.0, -1.5, 0.125, 2.5, 123456789.0, 1e-7, 1e21, 9.995, 1e300, 5e-324};
    for (const char *spec : {"%f", "%.0f", "%.2f", "%8.3f", "%-12.1f|", "%+012.2f", "% .3f", "%e", "%.0e", "%#.0f",
                             "%g", "%.3g", "%G", "%12.4E", "%.15g"}) {
        for (const double number : numbers) {
            EXPECT_EQ(format(QString::fromLatin1(spec), number), byLibrary(spec, number)) << spec;
        }
    }
    for (const char *spec : {"%d", "%5d", "%-5d|", "%05d", "%+d", "% d", "%.3d", "%6.3d", "%06.3d", "%.0d", "%x", "%#x",
                             "%08X", "%#o", "%u"}) {
        for (const int number :
             {0, 1, -1, 42, -12345, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
            EXPECT_EQ(format(QString::fromLatin1(spec), number), byLibrary(spec, number)) << spec;
        }
    }
    EXPECT_EQ(format(u"%06.1f|%f", std::numeric_limits<double>::infinity(), std::nan("")), u"   inf|nan"_s);
    EXPECT_EQ(format(u"%u %x", quint64(-1), qint64(-1)), u"18446744073709551615 ffffffffffffffff"_s);
}

TEST(FormatTest, PrintsDates)
{
    const JDateTime date = JDateTime::fromLocal(2002, 9, 5, 14, 3, 9);
    EXPECT_EQ(format(u"REPAIRS %t", date), u"REPAIRS 09/05/2002 14:03:09"_s);
    EXPECT_EQ(format(u"%{%m/%d/%Y %H:%M}t|", date), u"09/05/2002 14:03|"_s);
    EXPECT_EQ(format(u"[%12{%m/%d/%y}t]", date), u"[    09/05/02]"_s);
    EXPECT_EQ(format(u"[%t][%{%Y}t]", JDateTime(), JDateTime()), u"[][]"_s);
}

TEST(FormatTest, RefusesArgumentsThatDoNotFit)
{
    EXPECT_THROW(format(u"%d"), FormatError);
    EXPECT_THROW(format(u"none", 1), FormatError);
    EXPECT_THROW(format(u"%d", u"text"_s), FormatError);
    EXPECT_THROW(format(u"%S", 1), FormatError);
    EXPECT_THROW(format(u"%f", 1), FormatError);
    EXPECT_THROW(format(u"%d", 1.0), FormatError);
    EXPECT_THROW(format(u"%t", 1), FormatError);
    EXPECT_THROW(format(u"%*d", u"wide"_s, 1), FormatError);
    EXPECT_THROW(format(u"%q", 1), FormatError);
    EXPECT_THROW(format(u"%5", 1), FormatError);
    EXPECT_THROW(format(u"%{%Y t", JDateTime::now()), FormatError);
    EXPECT_THROW(format(u"%99999999999999d", 1), FormatError);
    EXPECT_THROW(format(u"%.*f", std::numeric_limits<qint64>::max(), 1.0), FormatError);
}

TEST(JFormatSpecTest, AppliesDisplayFormats)
{
    EXPECT_EQ(JFormatSpec(u"%3d%%"_s).apply(7), u"  7%"_s);
    EXPECT_EQ(JFormatSpec(u"depth %.1f mm"_s).apply(0.25), u"depth 0.2 mm"_s);
    EXPECT_EQ(JFormatSpec(u"%U"_s).apply(u"ODI"_s), u"ODI"_s);
    const JDateTime date = JDateTime::fromLocal(2020, 1, 2, 3, 4, 5);
    EXPECT_EQ(JFormatSpec(u"%m/%d/%Y %X"_s).apply(date), u"01/02/2020 03:04:05"_s);
    EXPECT_EQ(JFormatSpec(u"%t"_s).apply(date), u"01/02/2020 03:04:05"_s);
    EXPECT_EQ(JFormatSpec(u"%m/%d/%Y"_s).apply(JDateTime()), QString());
}

TEST(JFormatSpecTest, LeavesAFormatThatDoesNotFitAsItStands)
{
    for (const QString &text : {u"T F"_s, u"%S"_s, u"%d %d"_s, u"%"_s, u"%99999999d"_s, u"%*d"_s, QString()})
        EXPECT_EQ(JFormatSpec(text).apply(1), text);
    EXPECT_EQ(JFormatSpec(u"%d"_s).apply(JDateTime::fromLocal(2020, 1, 31)), u"31"_s);
}

TEST(JFormatSpecTest, FindsTheConversionLetter)
{
    EXPECT_EQ(JFormatSpec(u"%-8.2f"_s).conversion(), u'f');
    EXPECT_EQ(JFormatSpec(u"100%% %*U"_s).conversion(), u'U');
    EXPECT_EQ(JFormatSpec(u"%m/%d/%Y"_s).conversion(), u'm');
    EXPECT_EQ(JFormatSpec(u"%{%Y}t"_s).conversion(), u't');
    EXPECT_TRUE(JFormatSpec(u"T F"_s).conversion().isNull());
    EXPECT_TRUE(JFormatSpec(u"%%"_s).conversion().isNull());
    EXPECT_TRUE(JFormatSpec(u"%12"_s).conversion().isNull());
}

// Users type formats: whatever they type, a text comes out.
TEST(JFormatSpecTest, SurvivesAnyText)
{
    std::mt19937 random(20020905);
    const QString alphabet = u"%%%%dDfegSUtXxYmc{}*.-+ #0123456789hl€\U0001D11E\0a"_s;
    const FormatArg values[] = {42,          -1.5e300,    u"ODI \U0001D11E"_s, QChar(u'x'), JDateTime::now(),
                                JDateTime(), quint64(-1), std::nan("")};
    for (int round = 0; round < 20000; ++round) {
        QString text;
        for (auto size = random() % 12; size > 0; --size)
            text += alphabet[qsizetype(random() % size_t(alphabet.size()))];
        const JFormatSpec spec(text);
        for (const FormatArg &value : values) {
            const QString shown = spec.apply(value);
            EXPECT_LT(shown.size(), 20000) << text.toStdString();
        }
    }
}
