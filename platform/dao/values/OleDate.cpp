#include "OleDate.h"

#include <algorithm>
#include <cmath>
#include <QDate>
#include <QDateTime>

using namespace Qt::StringLiterals;

namespace dao {
namespace {

constexpr qint64 kJulianOfDayZero = 2415019; // 1899-12-30
constexpr int kSecondsOfDay = 86400;
constexpr int kFirstDay = -657434; // 1 January 100
constexpr int kLastDay = 2958465;  // 31 December 9999

constexpr const char16_t *kMonthNames[] = {u"January", u"February", u"March",     u"April",   u"May",      u"June",
                                           u"July",    u"August",   u"September", u"October", u"November", u"December"};
constexpr const char16_t *kWeekdayNames[] = {u"Sunday",   u"Monday", u"Tuesday", u"Wednesday",
                                             u"Thursday", u"Friday", u"Saturday"};
constexpr int kAbbreviationLength = 3;

struct Split
{
    int day;
    int seconds;
};

// The fraction counts forward also for negative dates: -1.25 is day -1, 06:00. Rounding can reach the next day.
Split split(double date)
{
    // Values far outside the calendar, infinities and NaN must not overflow the conversion to int.
    constexpr double kFarthest = 10 * kLastDay;
    date = std::isnan(date) ? 0 : std::clamp(date, -kFarthest, kFarthest);
    const double whole = std::trunc(date);
    Split result{int(whole), int(std::lround(std::fabs(date - whole) * kSecondsOfDay))};
    if (result.seconds == kSecondsOfDay) {
        ++result.day;
        result.seconds = 0;
    }
    return result;
}

// Full names, the first three letters, and "sept".
int monthFromName(QStringView word)
{
    for (int i = 0; i < 12; ++i) {
        const QStringView name(kMonthNames[i]);
        if (word.compare(name, Qt::CaseInsensitive) == 0 ||
            word.compare(name.first(kAbbreviationLength), Qt::CaseInsensitive) == 0)
            return i + 1;
    }
    return word.compare(u"sept", Qt::CaseInsensitive) == 0 ? 9 : 0;
}

bool isWeekdayName(QStringView word)
{
    return std::any_of(std::begin(kWeekdayNames), std::end(kWeekdayNames), [word](QStringView name) {
        return word.compare(name, Qt::CaseInsensitive) == 0 ||
               word.compare(name.first(kAbbreviationLength), Qt::CaseInsensitive) == 0;
    });
}

// Two-digit years: 0 to 29 are 2000 to 2029, 30 to 99 are 1930 to 1999.
int fullYear(int year)
{
    if (year >= 0 && year <= 29)
        return year + 2000;
    if (year >= 30 && year <= 99)
        return year + 1900;
    return year;
}

/// Parses a date text from left to right. Each operation consumes what it recognises or sets m_failed.
class DateReader
{
public:
    explicit DateReader(QStringView text)
        : m_text(text.trimmed())
    {
    }

    std::optional<double> read()
    {
        while (!m_failed && m_at < m_text.size()) {
            skipBlanks();
            if (m_at < m_text.size())
                readItem();
        }
        if (m_failed || (!m_haveTime && m_numbers.isEmpty() && m_month == 0))
            return {};
        int day = 0;
        if (!m_numbers.isEmpty() || m_month > 0) {
            const std::optional<int> found = dayFromParts();
            if (!found)
                return {};
            day = *found;
        }
        return dateFrom(day, m_seconds);
    }

private:
    void skipBlanks()
    {
        while (m_at < m_text.size() && (m_text[m_at].isSpace() || m_text[m_at] == u','))
            ++m_at;
    }

    bool atDigit() const { return m_at < m_text.size() && m_text[m_at] >= u'0' && m_text[m_at] <= u'9'; }

    // At most four digits: a longer number is neither a year nor a day.
    int readNumber()
    {
        const qsizetype start = m_at;
        while (atDigit())
            ++m_at;
        m_digits = int(m_at - start);
        if (m_digits == 0 || m_digits > 4)
            m_failed = true;
        return m_text.sliced(start, m_at - start).toInt();
    }

    QStringView readWord()
    {
        const qsizetype start = m_at;
        while (m_at < m_text.size() && m_text[m_at].isLetter())
            ++m_at;
        return m_text.sliced(start, m_at - start);
    }

    // A number before ":" is an hour, before AM or PM an hour too, otherwise a part of the date.
    void readItem()
    {
        if (atDigit()) {
            const int number = readNumber();
            const int digits = m_digits;
            if (m_at < m_text.size() && m_text[m_at] == u':')
                readTime(number);
            else if (!tryMeridiemHour(number))
                addDateNumber(number, digits);
        } else if (m_text[m_at].isLetter()) {
            readDateWord(readWord());
        } else {
            m_failed = true;
        }
        // One separator may follow a part of the date.
        if (m_at < m_text.size() && (m_text[m_at] == u'/' || m_text[m_at] == u'-')) {
            ++m_at;
            m_failed = m_failed || m_at >= m_text.size() || m_haveTime;
        } else if (m_at < m_text.size() && m_text[m_at] == u'.' && m_lastWasMonth) {
            ++m_at;
        }
    }

    void addDateNumber(int number, int digits)
    {
        if (m_numbers.size() == 3) {
            m_failed = true;
            return;
        }
        m_yearFirst = m_yearFirst || (m_numbers.isEmpty() && digits > 2);
        m_numbers.append(number);
        m_lastWasMonth = false;
    }

    void readDateWord(QStringView word)
    {
        m_lastWasMonth = false;
        if (word.compare(u"T", Qt::CaseInsensitive) == 0 && m_numbers.size() == 3)
            return;
        if (const int month = monthFromName(word)) {
            m_failed = m_failed || m_month > 0;
            m_month = month;
            m_lastWasMonth = true;
        } else if (!isWeekdayName(word) || m_month > 0 || !m_numbers.isEmpty()) {
            m_failed = true;
        }
    }

    // "7 AM": a single number is an hour only if AM or PM follows.
    bool tryMeridiemHour(int number)
    {
        const qsizetype saved = m_at;
        while (m_at < m_text.size() && m_text[m_at] == u' ')
            ++m_at;
        const QStringView word = readWord();
        m_at = saved;
        if (!isMeridiem(word))
            return false;
        finishTime(number, 0, 0);
        return true;
    }

    static bool isMeridiem(QStringView word)
    {
        for (const QStringView known : {u"AM", u"PM", u"A", u"P"}) {
            if (word.compare(known, Qt::CaseInsensitive) == 0)
                return true;
        }
        return false;
    }

    void readTime(int hour)
    {
        ++m_at;
        const int minute = readNumber();
        int second = 0;
        if (m_at < m_text.size() && m_text[m_at] == u':') {
            ++m_at;
            second = readNumber();
        }
        finishTime(hour, minute, second);
    }

    void finishTime(int hour, int minute, int second)
    {
        const qsizetype saved = m_at;
        while (m_at < m_text.size() && m_text[m_at] == u' ')
            ++m_at;
        const QStringView word = readWord();
        if (isMeridiem(word)) {
            const bool afternoon = word[0].toUpper() == u'P';
            m_failed = m_failed || hour > 12 || hour == 0;
            hour = hour % 12 + (afternoon ? 12 : 0);
        } else {
            m_at = saved;
        }
        m_failed = m_failed || m_haveTime || hour > 23 || minute > 59 || second > 59;
        m_haveTime = true;
        if (!m_failed) // numbers of any size are parsed, so the range is checked here
            m_seconds = hour * 3600 + minute * 60 + second;
    }

    std::optional<int> dayFromParts() const
    {
        const int currentYear = QDate::currentDate().year();
        int year = currentYear;
        int month = m_month;
        int day = 1;
        const auto &n = m_numbers;
        if (month > 0) {
            if (n.isEmpty() || n.size() > 2)
                return {};
            if (m_yearFirst) { // 2003 Jan 5
                year = n[0];
                day = n.size() == 2 ? n[1] : 1;
            } else if (n.size() == 2) {
                day = n[0];
                year = fullYear(n[1]);
            } else if (n[0] > 31) {
                year = fullYear(n[0]);
            } else {
                day = n[0];
            }
        } else if (n.size() == 3) {
            year = m_yearFirst ? n[0] : fullYear(n[2]);
            month = m_yearFirst ? n[1] : n[0];
            day = m_yearFirst ? n[2] : n[1];
        } else if (n.size() == 2) {
            month = n[0];
            day = n[1];
        } else {
            return {};
        }
        if (month > 12 && day <= 12)
            std::swap(month, day);
        if (year < 100 || year > 9999 || !QDate::isValid(year, month, day))
            return {};
        return int(QDate(year, month, day).toJulianDay() - kJulianOfDayZero);
    }

    QStringView m_text;
    qsizetype m_at = 0;
    QList<int> m_numbers;
    int m_digits = 0;
    int m_month = 0;
    int m_seconds = 0;
    bool m_haveTime = false;
    bool m_yearFirst = false;
    bool m_lastWasMonth = false;
    bool m_failed = false;
};

} // namespace

int dayOf(double date)
{
    return split(date).day;
}

int secondsOf(double date)
{
    return split(date).seconds;
}

double dateFrom(int day, int seconds)
{
    const double fraction = double(seconds) / kSecondsOfDay;
    return day < 0 ? day - fraction : day + fraction;
}

// Up to the last moment of 31 December 9999; before day 0 the fraction counts away from zero.
bool isValidDate(double date)
{
    return date > kFirstDay - 1.0 && date < kLastDay + 1.0;
}

DateParts datePartsOf(double date)
{
    const Split parts = split(date);
    const QDate day = QDate::fromJulianDay(parts.day + kJulianOfDayZero);
    DateParts result;
    day.getDate(&result.year, &result.month, &result.day);
    result.hour = parts.seconds / 3600;
    result.minute = parts.seconds / 60 % 60;
    result.second = parts.seconds % 60;
    result.weekday = day.dayOfWeek() % 7 + 1;
    result.dayOfYear = day.dayOfYear();
    return result;
}

// Month and day may be outside of their ranges, as in DateSerial: month 13 is January of the next year, day 0 the last
// day of the month before.
std::optional<double> dateSerial(int year, int month, int day)
{
    const qint64 months = qint64(fullYear(year)) * 12 + month - 1;
    const qint64 realYear = months >= 0 ? months / 12 : -1;
    if (realYear < 1 || realYear > 20000)
        return {};
    const qint64 result = QDate(int(realYear), int(months % 12) + 1, 1).toJulianDay() - kJulianOfDayZero + day - 1;
    if (result < kFirstDay || result > kLastDay)
        return {};
    return double(result);
}

double timeSerial(int hour, int minute, int second)
{
    const qint64 seconds = qint64(hour) * 3600 + qint64(minute) * 60 + second;
    // Rounds the day down, so that the time of day is positive. A time less than one day before day 0 keeps only its
    // time of day: TimeSerial(-1, 0, 0) is 23:00 on day 0.
    const qint64 day = seconds / kSecondsOfDay - (seconds % kSecondsOfDay < 0 ? 1 : 0);
    return dateFrom(day == -1 ? 0 : int(day), int(seconds - day * qint64(kSecondsOfDay)));
}

int daysInMonth(int year, int month)
{
    return QDate(year, month, 1).daysInMonth();
}

std::optional<double> parseDate(QStringView text)
{
    return DateReader(text).read();
}

QString monthName(int month, bool abbreviated)
{
    const QString name = QString::fromUtf16(kMonthNames[month - 1]);
    return abbreviated ? name.first(kAbbreviationLength) : name;
}

QString weekdayName(int weekday, bool abbreviated)
{
    const QString name = QString::fromUtf16(kWeekdayNames[weekday - 1]);
    return abbreviated ? name.first(kAbbreviationLength) : name;
}

QString shortDateText(double date)
{
    const DateParts parts = datePartsOf(date);
    return u"%1/%2/%3"_s.arg(parts.month).arg(parts.day).arg(parts.year, 4, 10, QChar(u'0'));
}

QString longTimeText(double date)
{
    const DateParts parts = datePartsOf(date);
    const int hour = parts.hour % 12 == 0 ? 12 : parts.hour % 12;
    return u"%1:%2:%3 %4"_s.arg(hour)
        .arg(parts.minute, 2, 10, QChar(u'0'))
        .arg(parts.second, 2, 10, QChar(u'0'))
        .arg(parts.hour < 12 ? u"AM"_s : u"PM"_s);
}

// Day 0 stands for no date: only the time is shown. Midnight is not shown.
QString generalDateText(double date)
{
    const Split parts = split(date);
    if (parts.day == 0)
        return longTimeText(date);
    return parts.seconds == 0 ? shortDateText(date) : shortDateText(date) + u' ' + longTimeText(date);
}

// Without fractions of a second, as Now returns it.
double currentDateTime()
{
    const QDateTime now = QDateTime::currentDateTime();
    return dateFrom(int(now.date().toJulianDay() - kJulianOfDayZero), now.time().msecsSinceStartOfDay() / 1000);
}

} // namespace dao
