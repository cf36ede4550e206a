#pragma once
#include <optional>
#include <QString>

namespace dao {

/// The parts of a date value. Dates are days since 1899-12-30 as in OLE Automation: the whole part is the day, the
/// absolute value of the fraction is the time of day (-1.25 is 1899-12-29 06:00).
struct DateParts
{
    int year = 1899;
    int month = 12;
    int day = 30;
    int hour = 0;
    int minute = 0;
    int second = 0;
    int weekday = 7; ///< Sunday 1 .. Saturday 7
    int dayOfYear = 364;
};

/// The parts of a date, rounded to whole seconds.
DateParts datePartsOf(double date);
/// The day number of a date, and its time of day in seconds.
int dayOf(double date);
int secondsOf(double date);
double dateFrom(int day, int seconds);
/// True from 1 January 100 to 31 December 9999.
bool isValidDate(double date);

/// Years 0 to 29 are 2000 to 2029, 30 to 99 are 1930 to 1999. Months and days outside their range carry over into the
/// next unit. Returns nothing if the result is out of range.
std::optional<double> dateSerial(int year, int month, int day);
double timeSerial(int hour, int minute, int second);
int daysInMonth(int year, int month);

/// Parses a date: m/d/y (day and month are swapped if the month is above 12 and the day is not), y-m-d, names of
/// months, with an optional time of day. A time alone has day 0; without a year the current year is used. Returns
/// nothing if the text is not a date.
std::optional<double> parseDate(QStringView text);

QString monthName(int month, bool abbreviated);
QString weekdayName(int weekday, bool abbreviated);

/// "1/2/2003 7:00:00 AM"; only the date at midnight; only the time on day 0.
QString generalDateText(double date);
QString shortDateText(double date);
QString longTimeText(double date);

/// The current local time, to the second.
double currentDateTime();

} // namespace dao
