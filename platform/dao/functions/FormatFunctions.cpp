#include "Call.h"
#include "FormatPattern.h"
#include "ValueText.h"

#include <dao/values/Decimal.h>
#include <dao/values/Errors.h>
#include <dao/values/OleDate.h>

namespace dao::functions {

using namespace Qt::StringLiterals;

namespace {

// Format. Arguments: (type, value[, format[, first day of week[, first week of year]]]).
constexpr int kType = 0;
constexpr int kValue = 1;
constexpr int kFormat = 2;

// Limits the size of the result: each letter of a pattern can become a whole date.
constexpr qsizetype kLongestPattern = 65535;

// The word for a number in the formats "Yes/No", "True/False" and "On/Off".
QString wordFor(double number, QStringView format)
{
    const auto pick = [number](const QString &yes, const QString &no) { return number != 0 ? yes : no; };
    if (format.compare(u"yes/no", Qt::CaseInsensitive) == 0)
        return pick(u"Yes"_s, u"No"_s);
    if (format.compare(u"true/false", Qt::CaseInsensitive) == 0)
        return pick(u"True"_s, u"False"_s);
    if (format.compare(u"on/off", Qt::CaseInsensitive) == 0)
        return pick(u"On"_s, u"Off"_s);
    return {};
}

// The value as a number for a number or date pattern; text must be a number or a date.
std::optional<double> asNumber(const Call &call)
{
    if (!call.isText(kValue))
        return call.number(kValue);
    return parseNumber(call.text(kValue));
}

std::optional<double> asDate(const Call &call)
{
    std::optional<double> date;
    if (call.isText(kValue))
        date = parseDate(call.text(kValue));
    if (!date)
        date = asNumber(call);
    return date && isValidDate(*date) ? date : std::nullopt;
}

QString formatNull(const QString &format)
{
    const QStringList sections = patternSections(format);
    switch (patternKind(format)) {
    case PatternKind::Number:
        return sections.size() > 3 ? formatNumber(0, sections[3]) : QString();
    case PatternKind::Text:
        return sections.size() > 1 ? formatText({}, format) : QString();
    default:
        return {};
    }
}

void format(Call &call)
{
    const QString pattern = call.has(kFormat) ? call.text(kFormat) : QString();
    if (call.isNull(kValue))
        return call.result(formatNull(pattern));
    if (pattern.size() > kLongestPattern)
        throw FunctionFault{error::InvalidProcedureCall};
    const QString plain = textOf(call, kType, kValue);
    if (pattern.isEmpty())
        return call.result(plain);

    const auto number = asNumber(call);
    if (number && pattern.compare(u"general number", Qt::CaseInsensitive) == 0)
        return call.result(numberTextOf(*number, typeArgument(call, kType)));
    if (const QString word = number ? wordFor(*number, pattern) : QString(); !word.isEmpty())
        return call.result(word);
    if (const QString named = namedNumberPattern(pattern); !named.isEmpty())
        return call.result(number ? formatNumber(*number, named) : plain);

    const QString namedDate = namedDatePattern(pattern);
    const PatternKind kind = namedDate.isEmpty() ? patternKind(pattern) : PatternKind::Date;
    if (kind == PatternKind::Date) {
        const WeekRule rule(call.integer(3, 1), call.integer(4, 1));
        const auto date = asDate(call);
        return call.result(date ? formatDate(*date, namedDate.isEmpty() ? pattern : namedDate, rule) : plain);
    }
    if (kind == PatternKind::Text)
        return call.result(formatText(plain, pattern));
    if (kind == PatternKind::Number || number)
        return call.result(number ? formatNumber(*number, pattern) : plain);
    call.result(plain);
}

// Reads a three-way setting: -1 yes, 0 no, -2 the system's default, passed as systems.
bool setting(const Call &call, int index, bool systems)
{
    const int value = call.integer(index, -2);
    if (value < -2 || value > 0)
        throw FunctionFault{error::InvalidProcedureCall};
    return value == -2 ? systems : value == -1;
}

// FormatNumber and similar. Arguments: (number[, digits[, leading zero[, parentheses[, group]]]]); before and behind
// are written around the digits.
QString withDecimals(const Call &call, const QString &before, const QString &behind, bool parenthesesBySystem)
{
    int digits = call.integer(1, -1);
    if (digits < -1 || digits > 99)
        throw FunctionFault{error::InvalidProcedureCall};
    digits = digits < 0 ? 2 : digits;
    QString body = setting(call, 4, true) ? u"#,##"_s : u"#"_s;
    body += setting(call, 2, true) ? u'0' : u'#';
    if (digits > 0)
        body += u'.' + QString(digits, u'0');
    body = before + body + behind;
    if (setting(call, 3, parenthesesBySystem))
        body += u";("_s + body + u')';
    else if (!before.isEmpty())
        body += u";-"_s + body;
    return formatNumber(call.number(0), body);
}

void formatPlainNumber(Call &call)
{
    call.result(withDecimals(call, {}, {}, false));
}

void formatCurrency(Call &call)
{
    call.result(withDecimals(call, u"$"_s, {}, true));
}

void formatPercent(Call &call)
{
    call.result(withDecimals(call, {}, u"%"_s, false));
}

void formatDateTime(Call &call)
{
    static constexpr QStringView kNames[] = {u"general date", u"long date", u"short date", u"long time", u"short time"};
    const int kind = call.integer(1, 0);
    if (kind < 0 || kind > 4)
        throw FunctionFault{error::InvalidProcedureCall};
    call.result(formatDate(call.date(0), namedDatePattern(kNames[kind]), WeekRule(1, 1)));
}

constexpr Entry kEntries[] = {
    {"format", 2, 5, format, 0},
    {"formatnumber", 1, 5, formatPlainNumber},
    {"formatcurrency", 1, 5, formatCurrency},
    {"formatpercent", 1, 5, formatPercent},
    {"formatdatetime", 1, 2, formatDateTime},
};

} // namespace

std::span<const Entry> formatFunctions()
{
    return kEntries;
}

} // namespace dao::functions
