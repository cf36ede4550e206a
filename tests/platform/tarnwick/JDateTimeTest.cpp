#include <support/Printers.h>
#include <tarnwick/JDateTime.h>

#include <gtest/gtest.h>
#include <limits>
#include <QLocale>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace {

class LocaleGuard
{
public:
    explicit LocaleGuard(const QLocale &locale) { QLocale::setDefault(locale); }
    ~LocaleGuard() { QLocale::setDefault(QLocale::system()); }
};

QString parsed(const QString &text)
{
    const auto time = JDateTime::parse(text);
    return time ? time->toIso() : u"-"_s;
}

} // namespace

TEST(JDateTimeTest, NullIsNoTime)
{
    EXPECT_TRUE(JDateTime().isNull());
    EXPECT_EQ(JDateTime().toString(), QString());
    EXPECT_EQ(JDateTime().toIso(), QString());
    EXPECT_NE(JDateTime(), JDateTime::fromSeconds(0));
    EXPECT_FALSE(JDateTime::fromSeconds(-1).isNull());
}

TEST(JDateTimeTest, CarriesPartsOverAndSurvivesAnyYear)
{
    EXPECT_EQ(JDateTime::fromLocal(2021, 2, 29, 24, 60, 60).toIso(), u"2021-03-02T01:01:00"_s);
    EXPECT_EQ(JDateTime::fromLocal(1850, 7, 4, 12).toIso(), u"1850-07-04T12:00:00"_s);
    for (const int extreme : {std::numeric_limits<int>::min(), std::numeric_limits<int>::max()})
        JDateTime::fromLocal(extreme, extreme, extreme, extreme, extreme, extreme).toString();
    JDateTime::fromSeconds(std::numeric_limits<qint64>::max()).toIso();
    EXPECT_FALSE(JDateTime::invalidDate().isNull());
}

TEST(JDateTimeTest, ConvertsToAutomationDatesAndBack)
{
    EXPECT_EQ(JDateTime::fromLocal(1899, 12, 30).toOleDate(), 0.0);
    EXPECT_EQ(JDateTime::fromLocal(1900, 1, 1, 6).toOleDate(), 2.25);
    // Before the first day the fraction still counts forward: -1.25 is the day before, six o'clock.
    EXPECT_EQ(JDateTime::fromOleDate(-1.25).toIso(), u"1899-12-29T06:00:00"_s);
    EXPECT_EQ(JDateTime::fromLocal(1899, 12, 29, 6).toOleDate(), -1.25);
    EXPECT_EQ(JDateTime::fromOleDate(37504.999999).toIso(), u"2002-09-06T00:00:00"_s); // rounds to the next day
    for (const JDateTime &time :
         {JDateTime::fromLocal(2002, 9, 5, 14, 3, 9), JDateTime::fromLocal(1856, 2, 29, 23, 59, 59),
          JDateTime::fromLocal(9999, 12, 31, 23, 59, 59), JDateTime::fromLocal(100, 1, 1)})
        EXPECT_EQ(JDateTime::fromOleDate(time.toOleDate()), time) << time.toIso().toStdString();
    for (const double wrong : {1e300, -1e300, std::numeric_limits<double>::quiet_NaN(), 2958466.0, -657435.0})
        EXPECT_EQ(JDateTime::fromOleDate(wrong), JDateTime::invalidDate());
}

TEST(JDateTimeTest, FormatsByTheLibrarysRulesInPlainEnglish)
{
    const JDateTime time = JDateTime::fromLocal(2002, 9, 5, 14, 3, 9);
    EXPECT_EQ(time.toString(), u"09/05/2002 14:03:09"_s);
    EXPECT_EQ(time.toString(u"%X %I:%M %p %a %d %B %y"), u"14:03:09 02:03 PM Thu 05 September 02"_s);
    EXPECT_EQ(time.toString(u"%#m/%-d/%Ey é %% %q %"), u"9/5/02 é % %q %"_s);
    EXPECT_EQ(time.toString(u"%9999999Y %#"), u"%9999999Y %#"_s);
}

TEST(JDateTimeTest, ReadsTheCommonFormInEveryLocale)
{
    for (const QLocale &locale : {QLocale::c(), QLocale(u"en_US"_s), QLocale(u"de_DE"_s), QLocale(u"ja_JP"_s)}) {
        const LocaleGuard guard(locale);
        EXPECT_EQ(parsed(u"09/25/2002"_s), u"2002-09-25T00:00:00"_s);
        EXPECT_EQ(parsed(u" 09/25/2002  14:03:09 "_s), u"2002-09-25T14:03:09"_s);
        EXPECT_EQ(parsed(u"9/25/2002 2:03 PM"_s), u"2002-09-25T14:03:00"_s);
        EXPECT_EQ(parsed(u"9/25/2002 12:03am"_s), u"2002-09-25T00:03:00"_s);
        EXPECT_EQ(parsed(u"2002-09-05"_s), u"2002-09-05T00:00:00"_s);
        EXPECT_EQ(parsed(u"2002-09-05T14:03:09"_s), u"2002-09-05T14:03:09"_s);
        EXPECT_EQ(parsed(u"2002-09-05 14:03"_s), u"2002-09-05T14:03:00"_s);
        EXPECT_EQ(parsed(u"09/05/2002"_s), u"2002-09-05T00:00:00"_s);
        EXPECT_EQ(parsed(u"14:03"_s), u"1899-12-30T14:03:00"_s);
        EXPECT_EQ(parsed(u"5 Sep 2002"_s), u"2002-09-05T00:00:00"_s);
        EXPECT_EQ(parsed(u"Thu Sep  5 14:03:09 2002"_s), u"2002-09-05T14:03:09"_s);
        EXPECT_EQ(parsed(u"05-SEP-02 14:03"_s), u"2002-09-05T14:03:00"_s);
        const JDateTime time = JDateTime::fromLocal(2031, 12, 31, 23, 59, 58);
        EXPECT_EQ(JDateTime::parse(time.toString()), time);
        EXPECT_EQ(JDateTime::parse(time.toIso()), time);
    }
}

TEST(JDateTimeTest, ReadsTheUsersOwnOrder)
{
    {
        const LocaleGuard guard(QLocale(u"en_GB"_s));
        EXPECT_EQ(parsed(u"05/09/2002"_s), u"2002-09-05T00:00:00"_s);
        EXPECT_EQ(parsed(u"25-9-2002"_s), u"2002-09-25T00:00:00"_s);
        EXPECT_EQ(parsed(u"09/25/2002"_s), u"2002-09-25T00:00:00"_s); // cannot be a British date
    }
    const LocaleGuard guard(QLocale(u"de_DE"_s));
    EXPECT_EQ(parsed(u"5.9.02"_s), u"2002-09-05T00:00:00"_s);
    EXPECT_EQ(parsed(u"31.12.29 8:05"_s), u"2029-12-31T08:05:00"_s);
    EXPECT_EQ(parsed(u"31.12.30"_s), u"1930-12-31T00:00:00"_s);
    EXPECT_EQ(parsed(u"3. März 1999"_s), u"1999-03-03T00:00:00"_s);
}

TEST(JDateTimeTest, RefusesWhatIsNoDate)
{
    const LocaleGuard guard(QLocale(u"en_US"_s));
    for (const QString &text :
         {QString(), u" "_s, u"abc"_s, u"5"_s, u"02/30/2002"_s, u"13/13/2002"_s, u"09/05/2002 25:00"_s,
          u"09/05/2002 14:60"_s, u"09/05/2002 13:00 PM"_s, u"09/05"_s, u"2002-13-01"_s, u"0/0/0"_s, u"1/1/12345"_s,
          u"09/05/2002 x"_s, u"1/2/3/4"_s, u"12 Foo 2002"_s, u"99:99"_s, QString(100000, u'1')})
        EXPECT_EQ(parsed(text), u"-"_s) << text.left(40).toStdString();
}
