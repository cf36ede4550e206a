#pragma once
#include <QString>

namespace dao::functions {

/// The intervals of DateAdd, DateDiff and DatePart.
enum class Interval { Year, Quarter, Month, DayOfYear, Day, Weekday, Week, Hour, Minute, Second };

/// The interval of a code ("yyyy", "q", ...); fault 5 for an unknown code.
Interval intervalOf(const QString &code);

/// How weeks are counted. firstDay: 1 Sunday to 7 Saturday. firstWeek: 1 the week that contains 1 January, 2 the first
/// with four days (ISO 8601), 3 the first full week. 0 means the system setting, here Sunday and the week of 1 January.
struct WeekRule
{
    int firstDay = 1;
    int firstWeek = 1;
    WeekRule(int day, int week);
};

double dateAdd(Interval interval, int count, double date);
qint64 dateDiff(Interval interval, double from, double to, const WeekRule &rule);
int datePart(Interval interval, double date, const WeekRule &rule);
/// The day of the week, 1 to 7, counted from the rule's first day.
int weekdayOf(double date, const WeekRule &rule);

} // namespace dao::functions
