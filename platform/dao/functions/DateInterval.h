#pragma once
#include <QString>

namespace dao::functions {

/// The intervals of DateAdd, DateDiff and DatePart by their codes.
enum class Interval { Year, Quarter, Month, DayOfYear, Day, Weekday, Week, Hour, Minute, Second };

/// Fault 5 for another code.
Interval intervalOf(const QString &code);

/// How weeks are counted: 1 Sunday to 7 Saturday; 1 the week of 1 January, 2 the first with four days, 3 the first full
/// week. 0 is the system's: Sunday, 1 January.
struct WeekRule
{
    int firstDay = 1;
    int firstWeek = 1;
    WeekRule(int day, int week);
};

double dateAdd(Interval interval, int count, double date);
qint64 dateDiff(Interval interval, double from, double to, const WeekRule &rule);
int datePart(Interval interval, double date, const WeekRule &rule);
/// Day of the week counted from the rule's first day, 1 to 7.
int weekdayOf(double date, const WeekRule &rule);

} // namespace dao::functions
