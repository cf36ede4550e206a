#include "FunctionTable.h"

#include <dao/values/Names.h>

#include <QHash>
#include <QStringList>

namespace dao::sql::bound {
namespace {

using enum DataType;
using enum FunctionKind;
using enum ResultRule;

// clang-format off
constexpr FunctionInfo kFunctions[] = {
    // conversion
    {u"CBool", u"a", Fixed, Boolean, Plain, u"CBool(value)", u"The value as True or False."},
    {u"CByte", u"a", Fixed, Byte, Plain, u"CByte(value)", u"The value as a whole number from 0 to 255, rounded half to even."},
    {u"CInt", u"a", Fixed, Integer, Plain, u"CInt(value)", u"The value as a 16-bit whole number, rounded half to even."},
    {u"CLng", u"a", Fixed, Long, Plain, u"CLng(value)", u"The value as a 32-bit whole number, rounded half to even."},
    {u"CCur", u"a", Fixed, Currency, Plain, u"CCur(value)", u"The value rounded to four decimals."},
    {u"CSng", u"a", Fixed, Single, Plain, u"CSng(value)", u"The value as a number of about 7 digits."},
    {u"CDbl", u"a", Fixed, Double, Plain, u"CDbl(value)", u"The value as a number of about 15 digits."},
    {u"CDec", u"a", Fixed, Double, Plain, u"CDec(value)", u"The value as a number."},
    {u"CDate", u"a", Fixed, Date, Plain, u"CDate(value)", u"The value, a number or a date text, as a date."},
    {u"CVDate", u"a", Fixed, Date, Plain, u"CVDate(value)", u"The value, a number or a date text, as a date; Null stays Null."},
    {u"CStr", u"a", Fixed, Text, Typed, u"CStr(value)", u"The value as text."},
    {u"CVar", u"a", FirstAny, Unknown, Plain, u"CVar(value)", u"The value unchanged."},
    {u"Val", u"t", Fixed, Double, Plain, u"Val(text)", u"The number at the beginning of a text; blanks are skipped."},
    {u"Str", u"n", Fixed, Text, Typed, u"Str(number)", u"The number as text, with a blank in the place of a plus sign."},
    {u"Hex", u"n", Fixed, Text, Typed, u"Hex(number)", u"The number in hexadecimal digits."},
    {u"Oct", u"n", Fixed, Text, Typed, u"Oct(number)", u"The number in octal digits."},
    // text
    {u"Left", u"tn", Fixed, Text, Plain, u"Left(text, length)", u"The first characters of a text."},
    {u"Right", u"tn", Fixed, Text, Plain, u"Right(text, length)", u"The last characters of a text."},
    {u"Mid", u"tn?n", Fixed, Text, Plain, u"Mid(text, start[, length])", u"Characters from a place on, counted from 1."},
    {u"Len", u"t", Fixed, Long, Plain, u"Len(text)", u"The number of characters."},
    {u"InStr", u"tt", Fixed, Long, Plain, u"InStr(text, part)", u"The place of a part in a text, 0 when it is not there."},
    {u"InStr", u"ntt?n", Fixed, Long, Plain, u"InStr(start, text, part[, compare])", u"The place of a part in a text, from a start on; compare 0 minds case."},
    {u"InStrRev", u"tt?nn", Fixed, Long, Plain, u"InStrRev(text, part[, start[, compare]])", u"The last place of a part in a text."},
    {u"LCase", u"t", Fixed, Text, Plain, u"LCase(text)", u"The text in lower case."},
    {u"UCase", u"t", Fixed, Text, Plain, u"UCase(text)", u"The text in upper case."},
    {u"Trim", u"t", Fixed, Text, Plain, u"Trim(text)", u"The text without blanks at both ends."},
    {u"LTrim", u"t", Fixed, Text, Plain, u"LTrim(text)", u"The text without leading blanks."},
    {u"RTrim", u"t", Fixed, Text, Plain, u"RTrim(text)", u"The text without trailing blanks."},
    {u"Space", u"n", Fixed, Text, Plain, u"Space(count)", u"A text of blanks."},
    {u"String", u"na", Fixed, Text, Plain, u"String(count, character)", u"A text of one repeated character."},
    {u"StrReverse", u"t", Fixed, Text, Plain, u"StrReverse(text)", u"The text backwards."},
    {u"Replace", u"ttt?nnn", Fixed, Text, Plain, u"Replace(text, find, with[, start[, count[, compare]]])", u"The text from start on, with one part replaced by another."},
    {u"StrComp", u"tt?n", Fixed, Long, Plain, u"StrComp(text, text[, compare])", u"-1, 0 or 1 as the first text stands before, with or after the second."},
    {u"StrConv", u"tn", Fixed, Text, Plain, u"StrConv(text, conversion)", u"1 upper case, 2 lower case, 3 capital initials."},
    {u"Chr", u"n", Fixed, Text, Plain, u"Chr(code)", u"The character of a code of the Western Windows page."},
    {u"ChrW", u"n", Fixed, Text, Plain, u"ChrW(code)", u"The character of a Unicode code."},
    {u"Asc", u"t", Fixed, Long, Plain, u"Asc(text)", u"The Western Windows code of the first character."},
    {u"AscW", u"t", Fixed, Long, Plain, u"AscW(text)", u"The Unicode code of the first character."},
    {u"Format", u"a?tnn", Fixed, Text, Typed, u"Format(value[, format[, firstDayOfWeek[, firstWeekOfYear]]])", u"The value as text in a named or user-made format."},
    {u"FormatNumber", u"n?nnnn", Fixed, Text, Plain, u"FormatNumber(number[, digits[, leadingZero[, parentheses[, group]]]])", u"The number with a fixed count of decimals."},
    {u"FormatCurrency", u"n?nnnn", Fixed, Text, Plain, u"FormatCurrency(number[, digits[, leadingZero[, parentheses[, group]]]])", u"The number as an amount in dollars."},
    {u"FormatPercent", u"n?nnnn", Fixed, Text, Plain, u"FormatPercent(number[, digits[, leadingZero[, parentheses[, group]]]])", u"The number times hundred with a percent sign."},
    {u"FormatDateTime", u"d?n", Fixed, Text, Plain, u"FormatDateTime(date[, kind])", u"0 general, 1 long date, 2 short date, 3 long time, 4 short time."},
    // date and time
    {u"Date", u"", Fixed, DataType::Date, Moment, u"Date()", u"Today."},
    {u"Time", u"", Fixed, DataType::Date, Moment, u"Time()", u"The time of day."},
    {u"Now", u"", Fixed, DataType::Date, Moment, u"Now()", u"The date and time."},
    {u"Timer", u"", Fixed, Single, Moment, u"Timer()", u"Seconds since midnight."},
    {u"DateAdd", u"tnd", Fixed, DataType::Date, Plain, u"DateAdd(interval, number, date)", u"The date moved by a number of intervals: yyyy q m y d w ww h n s."},
    {u"DateDiff", u"tdd?nn", Fixed, Long, Plain, u"DateDiff(interval, date, date[, firstDayOfWeek[, firstWeekOfYear]])", u"The number of interval boundaries between two dates."},
    {u"DatePart", u"td?nn", Fixed, Long, Plain, u"DatePart(interval, date[, firstDayOfWeek[, firstWeekOfYear]])", u"A part of a date as a number."},
    {u"Year", u"d", Fixed, Long, Plain, u"Year(date)", u"The year."},
    {u"Month", u"d", Fixed, Long, Plain, u"Month(date)", u"The month, 1 to 12."},
    {u"Day", u"d", Fixed, Long, Plain, u"Day(date)", u"The day of the month."},
    {u"Hour", u"d", Fixed, Long, Plain, u"Hour(date)", u"The hour, 0 to 23."},
    {u"Minute", u"d", Fixed, Long, Plain, u"Minute(date)", u"The minute."},
    {u"Second", u"d", Fixed, Long, Plain, u"Second(date)", u"The second."},
    {u"Weekday", u"d?n", Fixed, Long, Plain, u"Weekday(date[, firstDayOfWeek])", u"The day of the week, Sunday 1."},
    {u"DateSerial", u"nnn", Fixed, DataType::Date, Plain, u"DateSerial(year, month, day)", u"The date of the parts; parts outside their range carry over."},
    {u"TimeSerial", u"nnn", Fixed, DataType::Date, Plain, u"TimeSerial(hour, minute, second)", u"The time of the parts."},
    {u"DateValue", u"d", Fixed, DataType::Date, Plain, u"DateValue(date)", u"The date without its time of day."},
    {u"TimeValue", u"d", Fixed, DataType::Date, Plain, u"TimeValue(date)", u"The time of day without its date."},
    {u"MonthName", u"n?b", Fixed, Text, Plain, u"MonthName(month[, abbreviate])", u"The name of a month."},
    {u"WeekdayName", u"n?bn", Fixed, Text, Plain, u"WeekdayName(weekday[, abbreviate[, firstDayOfWeek]])", u"The name of a day of the week."},
    // numbers
    {u"Abs", u"n", FirstNumber, Double, Plain, u"Abs(number)", u"The number without its sign."},
    {u"Sgn", u"n", Fixed, Long, Plain, u"Sgn(number)", u"-1, 0 or 1."},
    {u"Sqr", u"n", Fixed, Double, Plain, u"Sqr(number)", u"The square root."},
    {u"Exp", u"n", Fixed, Double, Plain, u"Exp(number)", u"e raised to a power."},
    {u"Log", u"n", Fixed, Double, Plain, u"Log(number)", u"The natural logarithm."},
    {u"Sin", u"n", Fixed, Double, Plain, u"Sin(angle)", u"The sine of an angle in radians."},
    {u"Cos", u"n", Fixed, Double, Plain, u"Cos(angle)", u"The cosine of an angle in radians."},
    {u"Tan", u"n", Fixed, Double, Plain, u"Tan(angle)", u"The tangent of an angle in radians."},
    {u"Atn", u"n", Fixed, Double, Plain, u"Atn(number)", u"The angle in radians of a tangent."},
    {u"Int", u"n", FirstNumber, Double, Plain, u"Int(number)", u"The largest whole number not above the number."},
    {u"Fix", u"n", FirstNumber, Double, Plain, u"Fix(number)", u"The number without its fraction."},
    {u"Round", u"n?n", FirstNumber, Double, Plain, u"Round(number[, digits])", u"The number rounded half to even."},
    {u"Rnd", u"?n", Fixed, Single, Plain, u"Rnd([number])", u"A random number from 0 to below 1; a negative argument begins a new series."},
    // logic
    {u"IIf", u"baa", Common, Unknown, Special, u"IIf(condition, value, otherwise)", u"One of two values."},
    {u"Switch", u"ba*", Common, Unknown, Special, u"Switch(condition, value, ...)", u"The value behind the first condition that holds."},
    {u"Choose", u"na*", Common, Unknown, Special, u"Choose(index, value, ...)", u"The value at that place, counted from 1."},
    {u"IsNull", u"a", Fixed, Boolean, Special, u"IsNull(value)", u"True when there is no value."},
    {u"Nz", u"a?a", Common, Unknown, Special, u"Nz(value[, instead])", u"The value, or another when it is Null."},
    {u"IsNumeric", u"a", Fixed, Boolean, Typed, u"IsNumeric(value)", u"True for a number or a text that reads as one."},
    {u"IsDate", u"a", Fixed, Boolean, Typed, u"IsDate(value)", u"True for a date or a text that reads as one."},
    {u"IsEmpty", u"a", Fixed, Boolean, Typed, u"IsEmpty(value)", u"Always False: a field is Null, not empty."},
    {u"IsError", u"a", Fixed, Boolean, Typed, u"IsError(value)", u"Always False."},
    {u"IsObject", u"a", Fixed, Boolean, Typed, u"IsObject(value)", u"Always False."},
    {u"VarType", u"a", Fixed, Long, Typed, u"VarType(value)", u"The number of the value's kind."},
    {u"TypeName", u"a", Fixed, Text, Typed, u"TypeName(value)", u"The name of the value's kind."},
    {u"Partition", u"nnnn", Fixed, Text, Plain, u"Partition(number, start, stop, interval)", u"The range that holds the number, as text."},
    // money
    {u"FV", u"nnn?nn", Fixed, Double, Plain, u"FV(rate, periods, payment[, present[, due]])", u"The future value of an annuity."},
    {u"PV", u"nnn?nn", Fixed, Double, Plain, u"PV(rate, periods, payment[, future[, due]])", u"The present value of an annuity."},
    {u"Pmt", u"nnn?nn", Fixed, Double, Plain, u"Pmt(rate, periods, present[, future[, due]])", u"The payment of an annuity."},
    {u"IPmt", u"nnnn?nn", Fixed, Double, Plain, u"IPmt(rate, period, periods, present[, future[, due]])", u"The interest part of a payment."},
    {u"PPmt", u"nnnn?nn", Fixed, Double, Plain, u"PPmt(rate, period, periods, present[, future[, due]])", u"The principal part of a payment."},
    {u"NPer", u"nnn?nn", Fixed, Double, Plain, u"NPer(rate, payment, present[, future[, due]])", u"The number of periods of an annuity."},
    {u"Rate", u"nnn?nnn", Fixed, Double, Plain, u"Rate(periods, payment, present[, future[, due[, guess]]])", u"The interest rate of an annuity."},
    {u"SLN", u"nnn", Fixed, Double, Plain, u"SLN(cost, salvage, life)", u"Straight-line depreciation of a period."},
    {u"SYD", u"nnnn", Fixed, Double, Plain, u"SYD(cost, salvage, life, period)", u"Sum-of-years' digits depreciation of a period."},
    {u"DDB", u"nnnn?n", Fixed, Double, Plain, u"DDB(cost, salvage, life, period[, factor])", u"Double-declining depreciation of a period."},
    // over the rows of a group
    {u"Count", u"a", Fixed, Long, Aggregate, u"Count(value) or Count(*)", u"The number of values, or of rows."},
    {u"Sum", u"n", Fixed, Double, Aggregate, u"Sum(number)", u"The sum."},
    {u"Avg", u"n", Fixed, Double, Aggregate, u"Avg(number)", u"The mean."},
    {u"Min", u"a", FirstAny, Unknown, Aggregate, u"Min(value)", u"The smallest value."},
    {u"Max", u"a", FirstAny, Unknown, Aggregate, u"Max(value)", u"The largest value."},
    {u"First", u"a", FirstAny, Unknown, Aggregate, u"First(value)", u"The value of the first row."},
    {u"Last", u"a", FirstAny, Unknown, Aggregate, u"Last(value)", u"The value of the last row."},
    {u"StDev", u"n", Fixed, Double, Aggregate, u"StDev(number)", u"The standard deviation of a sample."},
    {u"StDevP", u"n", Fixed, Double, Aggregate, u"StDevP(number)", u"The standard deviation of a population."},
    {u"Var", u"n", Fixed, Double, Aggregate, u"Var(number)", u"The variance of a sample."},
    {u"VarP", u"n", Fixed, Double, Aggregate, u"VarP(number)", u"The variance of a population."},
    // over the rows of a table or query named by a text
    {u"DLookup", u"tt?t", FirstAny, Unknown, Domain, u"DLookup(expression, source[, condition])", u"The value of one row of a table or query."},
    {u"DFirst", u"tt?t", FirstAny, Unknown, Domain, u"DFirst(expression, source[, condition])", u"The value of the first row."},
    {u"DLast", u"tt?t", FirstAny, Unknown, Domain, u"DLast(expression, source[, condition])", u"The value of the last row."},
    {u"DCount", u"tt?t", Fixed, Long, Domain, u"DCount(expression, source[, condition])", u"The number of values in a table or query."},
    {u"DSum", u"tt?t", Fixed, Double, Domain, u"DSum(expression, source[, condition])", u"The sum over a table or query."},
    {u"DAvg", u"tt?t", Fixed, Double, Domain, u"DAvg(expression, source[, condition])", u"The mean over a table or query."},
    {u"DMin", u"tt?t", FirstAny, Unknown, Domain, u"DMin(expression, source[, condition])", u"The smallest value in a table or query."},
    {u"DMax", u"tt?t", FirstAny, Unknown, Domain, u"DMax(expression, source[, condition])", u"The largest value in a table or query."},
    {u"DStDev", u"tt?t", Fixed, Double, Domain, u"DStDev(expression, source[, condition])", u"The standard deviation of a sample."},
    {u"DStDevP", u"tt?t", Fixed, Double, Domain, u"DStDevP(expression, source[, condition])", u"The standard deviation of a population."},
    {u"DVar", u"tt?t", Fixed, Double, Domain, u"DVar(expression, source[, condition])", u"The variance of a sample."},
    {u"DVarP", u"tt?t", Fixed, Double, Domain, u"DVarP(expression, source[, condition])", u"The variance of a population."},
};
// clang-format on

} // namespace

int FunctionInfo::minArguments() const
{
    int count = 0;
    for (const char16_t *letter = parameters; *letter && *letter != u'?'; ++letter)
        count += *letter != u'*';
    return count;
}

int FunctionInfo::maxArguments() const
{
    int count = 0;
    for (const char16_t *letter = parameters; *letter; ++letter) {
        if (*letter == u'*')
            return -1;
        count += *letter != u'?';
    }
    return count;
}

char16_t FunctionInfo::parameterAt(int index) const
{
    char16_t last = u'a';
    int place = 0;
    for (const char16_t *letter = parameters; *letter; ++letter) {
        if (*letter == u'?')
            continue;
        if (*letter == u'*')
            return last;
        last = *letter;
        if (place++ == index)
            return last;
    }
    return last;
}

std::span<const FunctionInfo> functionTable()
{
    return kFunctions;
}

std::span<const FunctionInfo> functionsNamed(QStringView name)
{
    static const auto hash = [] {
        QHash<NameKey, std::span<const FunctionInfo>> result;
        for (const FunctionInfo &entry : kFunctions) {
            std::span<const FunctionInfo> &overloads = result[{QStringView(entry.name)}];
            overloads = overloads.empty() ? std::span(&entry, 1) : std::span(overloads.data(), overloads.size() + 1);
        }
        return result;
    }();
    return hash.value({name.endsWith(u'$') ? name.chopped(1) : name});
}

QStringList functionNames()
{
    QStringList names;
    for (const FunctionInfo &entry : kFunctions)
        names.append(QString::fromUtf16(entry.name));
    names.removeDuplicates();
    return names;
}

} // namespace dao::sql::bound
