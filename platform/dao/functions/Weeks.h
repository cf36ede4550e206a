#pragma once

namespace dao::functions {

/// Weekday of a day (as in dao::dayOf), 1 for the first day of the week. firstDay: 1 Sunday .. 7 Saturday, 0 Sunday.
int weekdayOf(int day, int firstDay);

/// Number of the week in its year. rule: 1 the week of 1 January is the first, 2 the first with four days, 3 the first
/// whole week; 0 as 1.
int weekOfYear(int day, int firstDay, int rule);

} // namespace dao::functions
