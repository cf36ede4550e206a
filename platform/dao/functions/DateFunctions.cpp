#include "Call.h"
#include "DateInterval.h"

#include <dao/values/Errors.h>
#include <dao/values/OleDate.h>
#include <limits>

namespace dao::functions {

namespace {

constexpr double kSecondsPerDay = 86400;

// The generator caches the result of each call of Date, Time and Now for the statement.
void today(Call &call)
{
    call.result(double(dayOf(currentDateTime())));
}

void timeOfDay(Call &call)
{
    call.result(secondsOf(currentDateTime()) / kSecondsPerDay);
}

void now(Call &call)
{
    call.result(currentDateTime());
}

void timer(Call &call)
{
    call.result(double(secondsOf(currentDateTime())));
}

void add(Call &call)
{
    call.result(dateAdd(intervalOf(call.text(0)), call.integer(1), call.date(2)));
}

void difference(Call &call)
{
    const WeekRule rule(call.integer(3, 1), call.integer(4, 1));
    const qint64 boundaries = dateDiff(intervalOf(call.text(0)), call.date(1), call.date(2), rule);
    if (boundaries != qint32(boundaries))
        throw FunctionFault{error::Overflow};
    call.result(boundaries);
}

void partOf(Call &call)
{
    const WeekRule rule(call.integer(2, 1), call.integer(3, 1));
    call.result(datePart(intervalOf(call.text(0)), call.date(1), rule));
}

template <int DateParts::*part>
void member(Call &call)
{
    call.result(datePartsOf(call.date(0)).*part);
}

void weekday(Call &call)
{
    call.result(weekdayOf(call.date(0), WeekRule(call.integer(1, 1), 1)));
}

/// The arguments of DateSerial and TimeSerial are 16-bit integers.
int datePart(const Call &call, int index)
{
    const int part = call.integer(index);
    if (part < std::numeric_limits<qint16>::min() || part > std::numeric_limits<qint16>::max())
        throw FunctionFault{error::Overflow};
    return part;
}

void fromDateParts(Call &call)
{
    const auto date = dateSerial(datePart(call, 0), datePart(call, 1), datePart(call, 2));
    if (!date)
        throw FunctionFault{error::InvalidProcedureCall};
    call.result(*date);
}

void fromTimeParts(Call &call)
{
    const double date = timeSerial(call.integer(0), call.integer(1), call.integer(2));
    if (!isValidDate(date))
        throw FunctionFault{error::InvalidProcedureCall};
    call.result(date);
}

void dateOnly(Call &call)
{
    call.result(double(dayOf(call.date(0))));
}

void timeOnly(Call &call)
{
    call.result(secondsOf(call.date(0)) / kSecondsPerDay);
}

void nameOfMonth(Call &call)
{
    const int month = call.integer(0);
    if (month < 1 || month > 12)
        throw FunctionFault{error::InvalidProcedureCall};
    call.result(monthName(month, call.has(1) && call.condition(1)));
}

// WeekdayName. Arguments: (weekday[, abbreviate[, first day]]). weekday counts from the first day.
void nameOfWeekday(Call &call)
{
    const int place = call.integer(0);
    if (place < 1 || place > 7)
        throw FunctionFault{error::InvalidProcedureCall};
    const WeekRule rule(call.integer(2, 1), 1);
    call.result(weekdayName((place - 1 + rule.firstDay - 1) % 7 + 1, call.has(1) && call.condition(1)));
}

constexpr Entry kEntries[] = {
    {"date", 0, 0, today, 0, false},
    {"time", 0, 0, timeOfDay, 0, false},
    {"now", 0, 0, now, 0, false},
    {"timer", 0, 0, timer, 0, false},
    {"dateadd", 3, 3, add},
    {"datediff", 3, 5, difference},
    {"datepart", 2, 4, partOf},
    {"year", 1, 1, member<&DateParts::year>},
    {"month", 1, 1, member<&DateParts::month>},
    {"day", 1, 1, member<&DateParts::day>},
    {"hour", 1, 1, member<&DateParts::hour>},
    {"minute", 1, 1, member<&DateParts::minute>},
    {"second", 1, 1, member<&DateParts::second>},
    {"weekday", 1, 2, weekday},
    {"dateserial", 3, 3, fromDateParts},
    {"timeserial", 3, 3, fromTimeParts},
    {"datevalue", 1, 1, dateOnly},
    {"timevalue", 1, 1, timeOnly},
    {"monthname", 1, 2, nameOfMonth},
    {"weekdayname", 1, 3, nameOfWeekday},
};

} // namespace

std::span<const Entry> dateFunctions()
{
    return kEntries;
}

} // namespace dao::functions
