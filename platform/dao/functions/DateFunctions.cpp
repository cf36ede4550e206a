#include "Call.h"
#include "Weeks.h"

#include <dao/values/Decimal.h>
#include <dao/values/OleDate.h>

#include <cmath>

using namespace Qt::StringLiterals;

namespace dao::functions {
namespace {

constexpr int SecondsOfDay = 86400;

enum class Interval { Year, Quarter, Month, DayOfYear, Day, Weekday, Week, Hour, Minute, Second };

struct IntervalName
{
    const char16_t *name;
    Interval interval;
};

constexpr IntervalName intervalNames[] = {
    {u"yyyy", Interval::Year}, {u"q", Interval::Quarter}, {u"m", Interval::Month}, {u"y", Interval::DayOfYear},
    {u"d", Interval::Day},     {u"w", Interval::Weekday}, {u"ww", Interval::Week}, {u"h", Interval::Hour},
    {u"n", Interval::Minute},  {u"s", Interval::Second}};

Interval intervalOf(const Call &call, int index)
{
    const QString text = call.text(index);
    for (const IntervalName &entry : intervalNames) {
        if (text.compare(QStringView(entry.name), Qt::CaseInsensitive) == 0)
            return entry.interval;
    }
    fail(error::InvalidProcedureCall);
}

double dateAt(const Call &call, int index)
{
    const double date = call.real(index);
    if (!isValidDate(date))
        fail(error::InvalidProcedureCall);
    return date;
}

int firstDayAt(const Call &call, int index)
{
    const int first = call.wholeOr(index, 1);
    if (first < 0 || first > 7)
        fail(error::InvalidProcedureCall);
    return first == 0 ? 1 : first;
}

int weekRuleAt(const Call &call, int index)
{
    const int rule = call.wholeOr(index, 1);
    if (rule < 0 || rule > 3)
        fail(error::InvalidProcedureCall);
    return rule;
}

void giveDate(const Call &call, double date)
{
    if (!isValidDate(date))
        fail(error::InvalidProcedureCall);
    call.give(date);
}

double instant(const Call &call, int index)
{
    return double(dayOf(call.real(index))) * SecondsOfDay + secondsOf(call.real(index));
}

double fromInstant(double seconds)
{
    const double day = std::floor(seconds / SecondsOfDay);
    return dateFrom(int(day), int(seconds - day * SecondsOfDay));
}

// A day that the month does not have becomes its last.
double addMonths(double date, qint64 months)
{
    const DateParts parts = datePartsOf(date);
    const qint64 month = qint64(parts.year) * 12 + parts.month - 1 + months;
    const qint64 year = month / 12;
    if (year < 100 || year > 9999)
        fail(error::InvalidProcedureCall);
    const int inYear = int(month % 12) + 1;
    const int day = std::min(parts.day, daysInMonth(int(year), inYear));
    return dateFrom(int(dateSerial(int(year), inYear, day).value_or(0)), secondsOf(date));
}

void dateAdd(const Call &call)
{
    const Interval interval = intervalOf(call, 0);
    const qint64 number = call.whole(1);
    const double date = dateAt(call, 2);
    const double seconds = instant(call, 2);
    switch (interval) {
    case Interval::Year:
        return giveDate(call, addMonths(date, number * 12));
    case Interval::Quarter:
        return giveDate(call, addMonths(date, number * 3));
    case Interval::Month:
        return giveDate(call, addMonths(date, number));
    case Interval::Week:
        return giveDate(call, fromInstant(seconds + double(number) * 7 * SecondsOfDay));
    case Interval::Hour:
        return giveDate(call, fromInstant(seconds + double(number) * 3600));
    case Interval::Minute:
        return giveDate(call, fromInstant(seconds + double(number) * 60));
    case Interval::Second:
        return giveDate(call, fromInstant(seconds + double(number)));
    default:
        return giveDate(call, fromInstant(seconds + double(number) * SecondsOfDay));
    }
}

qint64 floorDivide(qint64 a, qint64 b)
{
    return a >= 0 ? a / b : -((-a + b - 1) / b);
}

void dateDiff(const Call &call)
{
    const Interval interval = intervalOf(call, 0);
    const DateParts a = datePartsOf(dateAt(call, 1));
    const DateParts b = datePartsOf(dateAt(call, 2));
    const qint64 days = qint64(dayOf(call.real(2))) - dayOf(call.real(1));
    const auto units = [&call](qint64 length) {
        return floorDivide(qint64(instant(call, 2)), length) - floorDivide(qint64(instant(call, 1)), length);
    };
    switch (interval) {
    case Interval::Year:
        return call.give(b.year - a.year);
    case Interval::Quarter:
        return call.give((b.year * 4 + (b.month - 1) / 3) - (a.year * 4 + (a.month - 1) / 3));
    case Interval::Month:
        return call.give((b.year * 12 + b.month) - (a.year * 12 + a.month));
    case Interval::Weekday:
        return call.give(days / 7);
    case Interval::Week: {
        // Beginnings of weeks between the two.
        const int first = firstDayAt(call, 3);
        const auto start = [first](double date) { return qint64(dayOf(date)) - weekdayOf(dayOf(date), first) + 1; };
        return call.give((start(call.real(2)) - start(call.real(1))) / 7);
    }
    case Interval::Hour:
        return call.give(units(3600));
    case Interval::Minute:
        return call.give(units(60));
    case Interval::Second:
        return call.give(units(1));
    default:
        return call.give(days);
    }
}

void datePart(const Call &call)
{
    const Interval interval = intervalOf(call, 0);
    const double date = dateAt(call, 1);
    const DateParts parts = datePartsOf(date);
    switch (interval) {
    case Interval::Year:
        return call.give(parts.year);
    case Interval::Quarter:
        return call.give((parts.month - 1) / 3 + 1);
    case Interval::Month:
        return call.give(parts.month);
    case Interval::DayOfYear:
        return call.give(parts.dayOfYear);
    case Interval::Day:
        return call.give(parts.day);
    case Interval::Weekday:
        return call.give(weekdayOf(dayOf(date), firstDayAt(call, 2)));
    case Interval::Week:
        return call.give(weekOfYear(dayOf(date), firstDayAt(call, 2), weekRuleAt(call, 3)));
    case Interval::Hour:
        return call.give(parts.hour);
    case Interval::Minute:
        return call.give(parts.minute);
    case Interval::Second:
        return call.give(parts.second);
    }
}

template <int DateParts::*Part>
void part(const Call &call)
{
    call.give(datePartsOf(dateAt(call, 0)).*Part);
}

void weekday(const Call &call)
{
    call.give(weekdayOf(dayOf(dateAt(call, 0)), firstDayAt(call, 1)));
}

void serial(const Call &call)
{
    const std::optional<double> date = dateSerial(call.whole(0), call.whole(1), call.whole(2));
    if (!date)
        fail(error::InvalidProcedureCall);
    call.give(*date);
}

void clockSerial(const Call &call)
{
    call.give(std::fabs(timeSerial(call.whole(0), call.whole(1), call.whole(2))));
}

void dateValue(const Call &call)
{
    call.give(double(dayOf(dateAt(call, 0))));
}

void timeValue(const Call &call)
{
    call.give(dateFrom(0, secondsOf(dateAt(call, 0))));
}

void nameOfMonth(const Call &call)
{
    const int month = call.whole(0);
    if (month < 1 || month > 12)
        fail(error::InvalidProcedureCall);
    call.give(monthName(month, call.wholeOr(1, 0) != 0));
}

void nameOfWeekday(const Call &call)
{
    const int day = call.whole(0);
    if (day < 1 || day > 7)
        fail(error::InvalidProcedureCall);
    call.give(weekdayName((day + firstDayAt(call, 2) - 2) % 7 + 1, call.wholeOr(1, 0) != 0));
}

void today(const Call &call)
{
    call.give(double(dayOf(currentDateTime())));
}

void timeOfDay(const Call &call)
{
    call.give(dateFrom(0, secondsOf(currentDateTime())));
}

void now(const Call &call)
{
    call.give(currentDateTime());
}

void timer(const Call &call)
{
    call.give(double(secondsOf(currentDateTime())));
}

constexpr Entry entries[] = {
    {"date", 0, today, Entry::Changing},
    {"time", 0, timeOfDay, Entry::Changing},
    {"now", 0, now, Entry::Changing},
    {"timer", 0, timer, Entry::Changing},
    {"dateadd", 3, dateAdd},
    {"datediff", -1, dateDiff},
    {"datepart", -1, datePart},
    {"year", 1, part<&DateParts::year>},
    {"month", 1, part<&DateParts::month>},
    {"day", 1, part<&DateParts::day>},
    {"hour", 1, part<&DateParts::hour>},
    {"minute", 1, part<&DateParts::minute>},
    {"second", 1, part<&DateParts::second>},
    {"weekday", -1, weekday},
    {"dateserial", 3, serial},
    {"timeserial", 3, clockSerial},
    {"datevalue", 1, dateValue},
    {"timevalue", 1, timeValue},
    {"monthname", -1, nameOfMonth},
    {"weekdayname", -1, nameOfWeekday},
};

} // namespace

std::span<const Entry> dateEntries()
{
    return entries;
}

int weekdayOf(int day, int firstDay)
{
    return (datePartsOf(double(day)).weekday - std::max(firstDay, 1) + 7) % 7 + 1;
}

int weekOfYear(int day, int firstDay, int rule)
{
    const auto firstWeek = [firstDay, rule](int year) {
        const int newYear = int(dateSerial(year, 1, 1).value_or(0));
        const int start = newYear - weekdayOf(newYear, firstDay) + 1;
        const int daysInYear = 7 - (newYear - start);
        const bool counts = rule <= 1 || (rule == 2 ? daysInYear >= 4 : daysInYear == 7);
        return counts ? start : start + 7;
    };
    const int year = datePartsOf(double(day)).year;
    const int start = day - weekdayOf(day, firstDay) + 1;
    if (rule <= 1)
        return (start - firstWeek(year)) / 7 + 1;
    if (day < firstWeek(year))
        return (start - firstWeek(year - 1)) / 7 + 1;
    // The last days of a year may belong to the first week of the next.
    if (day >= firstWeek(year + 1))
        return 1;
    return (start - firstWeek(year)) / 7 + 1;
}

} // namespace dao::functions
