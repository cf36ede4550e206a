#include "DateInterval.h"

#include "Call.h"

#include <dao/values/Errors.h>
#include <dao/values/OleDate.h>
#include <QHash>

namespace dao::functions {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 kSecondsPerDay = 86400;

// Rounds down, also for days before 1899, whose numbers are negative.
qint64 floorDivide(qint64 a, qint64 b)
{
    return a / b - (a % b != 0 && (a < 0) != (b < 0) ? 1 : 0);
}

qint64 totalSeconds(double date)
{
    return dayOf(date) * kSecondsPerDay + secondsOf(date);
}

double checked(std::optional<double> date)
{
    if (!date || !isValidDate(*date))
        throw FunctionFault{error::InvalidProcedureCall};
    return *date;
}

// The day is limited to the last day of the month: 31 January plus one month is 28 or 29 February.
double addMonths(double date, qint64 months)
{
    const DateParts parts = datePartsOf(date);
    const qint64 month = qint64(parts.year) * 12 + parts.month - 1 + months;
    const qint64 year = floorDivide(month, 12);
    if (year < 100 || year > 9999)
        throw FunctionFault{error::InvalidProcedureCall};
    const int monthOfYear = int(month - year * 12) + 1;
    const int day = std::min(parts.day, daysInMonth(int(year), monthOfYear));
    return dateFrom(dayOf(checked(dateSerial(int(year), monthOfYear, day))), secondsOf(date));
}

// Integer arithmetic on seconds: sums of day fractions would lose seconds by rounding.
double addSeconds(double date, qint64 seconds)
{
    const qint64 total = totalSeconds(date) + seconds;
    const qint64 day = floorDivide(total, kSecondsPerDay);
    if (day < -657434 || day > 2958465)
        throw FunctionFault{error::InvalidProcedureCall};
    return checked(dateFrom(int(day), int(total - day * kSecondsPerDay)));
}

// Day 1 of the calendar (31 December 1899) is a Sunday.
// The number of the week since day 1, for weeks that start on firstDay.
qint64 weekIndex(qint64 day, int firstDay)
{
    return floorDivide(day - firstDay, 7);
}

// Also called for year 99, before the first valid year: its last week can extend into year 100.
qint64 firstOfYear(int year)
{
    constexpr int kFirstYear = 100;
    constexpr int kDaysOfYear99 = 365;
    if (year < kFirstYear)
        return dayOf(checked(dateSerial(kFirstYear, 1, 1))) - kDaysOfYear99;
    return dayOf(checked(dateSerial(year, 1, 1)));
}

// The first day of week 1 of a year.
qint64 firstWeekOf(int year, const WeekRule &rule)
{
    const qint64 january1 = firstOfYear(year);
    const qint64 begin = weekIndex(january1, rule.firstDay) * 7 + rule.firstDay;
    const qint64 daysInYear = 7 - (january1 - begin);
    const bool counts = rule.firstWeek == 1 || (rule.firstWeek == 2 ? daysInYear >= 4 : daysInYear == 7);
    return counts ? begin : begin + 7;
}

// The last days of a year can belong to week 1 of the next year, the first ones to the last week of the previous one.
int weekOfYear(double date, const WeekRule &rule)
{
    const qint64 day = dayOf(date);
    const int year = datePartsOf(date).year;
    if (rule.firstWeek != 1 && year < 9999 && day >= firstWeekOf(year + 1, rule))
        return 1;
    qint64 begin = firstWeekOf(year, rule);
    if (day < begin)
        begin = firstWeekOf(year - 1, rule);
    return int((day - begin) / 7 + 1);
}

} // namespace

Interval intervalOf(const QString &code)
{
    static const QHash<QString, Interval> codes = {
        {u"yyyy"_s, Interval::Year},   {u"q"_s, Interval::Quarter}, {u"m"_s, Interval::Month},
        {u"y"_s, Interval::DayOfYear}, {u"d"_s, Interval::Day},     {u"w"_s, Interval::Weekday},
        {u"ww"_s, Interval::Week},     {u"h"_s, Interval::Hour},    {u"n"_s, Interval::Minute},
        {u"s"_s, Interval::Second},
    };
    const auto found = codes.constFind(code.toLower());
    if (found == codes.constEnd())
        throw FunctionFault{error::InvalidProcedureCall};
    return *found;
}

WeekRule::WeekRule(int day, int week)
    : firstDay(day == 0 ? 1 : day)
    , firstWeek(week == 0 ? 1 : week)
{
    if (firstDay < 1 || firstDay > 7 || firstWeek < 1 || firstWeek > 3)
        throw FunctionFault{error::InvalidProcedureCall};
}

// "y", "d" and "w" all add days.
double dateAdd(Interval interval, int count, double date)
{
    switch (interval) {
    case Interval::Year:
        return addMonths(date, qint64(count) * 12);
    case Interval::Quarter:
        return addMonths(date, qint64(count) * 3);
    case Interval::Month:
        return addMonths(date, count);
    case Interval::DayOfYear:
    case Interval::Day:
    case Interval::Weekday:
        return addSeconds(date, count * kSecondsPerDay);
    case Interval::Week:
        return addSeconds(date, count * kSecondsPerDay * 7);
    case Interval::Hour:
        return addSeconds(date, qint64(count) * 3600);
    case Interval::Minute:
        return addSeconds(date, qint64(count) * 60);
    case Interval::Second:
        break;
    }
    return addSeconds(date, count);
}

// Counts the boundaries between the two dates, not the elapsed time: 31 December to 1 January is one year. "w" counts
// whole weeks from the first date, "ww" counts the starts of weeks.
qint64 dateDiff(Interval interval, double from, double to, const WeekRule &rule)
{
    const DateParts a = datePartsOf(from);
    const DateParts b = datePartsOf(to);
    const qint64 days = qint64(dayOf(to)) - dayOf(from);
    const qint64 months = (b.year - a.year) * qint64(12) + b.month - a.month;
    const auto clockUnits = [&](qint64 unit) {
        return floorDivide(totalSeconds(to), unit) - floorDivide(totalSeconds(from), unit);
    };
    switch (interval) {
    case Interval::Year:
        return b.year - a.year;
    case Interval::Quarter:
        return (b.year - a.year) * qint64(4) + (b.month - 1) / 3 - (a.month - 1) / 3;
    case Interval::Month:
        return months;
    case Interval::DayOfYear:
    case Interval::Day:
        return days;
    case Interval::Weekday:
        return days / 7;
    case Interval::Week:
        return weekIndex(dayOf(to), rule.firstDay) - weekIndex(dayOf(from), rule.firstDay);
    case Interval::Hour:
        return clockUnits(3600);
    case Interval::Minute:
        return clockUnits(60);
    case Interval::Second:
        break;
    }
    return clockUnits(1);
}

int weekdayOf(double date, const WeekRule &rule)
{
    return (datePartsOf(date).weekday - rule.firstDay + 7) % 7 + 1;
}

int datePart(Interval interval, double date, const WeekRule &rule)
{
    const DateParts parts = datePartsOf(date);
    switch (interval) {
    case Interval::Year:
        return parts.year;
    case Interval::Quarter:
        return (parts.month - 1) / 3 + 1;
    case Interval::Month:
        return parts.month;
    case Interval::DayOfYear:
        return parts.dayOfYear;
    case Interval::Day:
        return parts.day;
    case Interval::Weekday:
        return weekdayOf(date, rule);
    case Interval::Week:
        return weekOfYear(date, rule);
    case Interval::Hour:
        return parts.hour;
    case Interval::Minute:
        return parts.minute;
    case Interval::Second:
        break;
    }
    return parts.second;
}

} // namespace dao::functions
