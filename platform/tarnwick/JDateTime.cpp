#include "JDateTime.h"

#include <array>
#include <clocale>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <QDate>
#include <QVarLengthArray>

namespace tarnwick {

using namespace Qt::StringLiterals;

static const QDate kOleZero(1899, 12, 30);
static constexpr int kSecondsPerDay = 86400;

// Without TZ, the C library looks for a changed zone file at each mktime(): four fifths of the time of a conversion.
static void readZoneOnce()
{
    [[maybe_unused]] static const bool isSet = setenv("TZ", ":/etc/localtime", 0) == 0; // 0: keeps what the user set
}

// mktime() returns -1 for an error and for a valid time; on error it does not set the day of the week.
static std::optional<qint64> madeTime(std::tm &parts)
{
    readZoneOnce();
    parts.tm_wday = -1;
    const std::time_t seconds = std::mktime(&parts);
    if (seconds == std::time_t(-1) && parts.tm_wday == -1)
        return std::nullopt;
    return qint64(seconds);
}

JDateTime JDateTime::now()
{
    return fromSeconds(qint64(std::time(nullptr)));
}

JDateTime JDateTime::fromSeconds(qint64 secondsSinceEpoch)
{
    JDateTime time;
    time.m_seconds = secondsSinceEpoch;
    return time;
}

JDateTime JDateTime::fromLocal(int year, int month, int day, int hour, int minute, int second)
{
    // The structure counts years from 1900 and months from 0; the subtraction must not overflow.
    constexpr int least = std::numeric_limits<int>::min();
    std::tm parts{};
    parts.tm_year = int(qMax<qint64>(qint64(year) - 1900, least));
    parts.tm_mon = int(qMax<qint64>(qint64(month) - 1, least));
    parts.tm_mday = day;
    parts.tm_hour = hour;
    parts.tm_min = minute;
    parts.tm_sec = second;
    parts.tm_isdst = -1;
    JDateTime time;
    time.m_seconds = madeTime(parts);
    return time;
}

JDateTime JDateTime::invalidDate()
{
    // Made once: the zone of a process does not change.
    static const JDateTime made = [] {
        std::tm parts{};
        parts.tm_year = parts.tm_mon = parts.tm_mday = parts.tm_hour = parts.tm_min = parts.tm_sec = -1;
        parts.tm_isdst = -1;
        return fromSeconds(madeTime(parts).value_or(-1));
    }();
    return made;
}

JDateTime JDateTime::fromOleDate(double days)
{
    // Years 100 to 9999, the range of automation dates.
    constexpr double kFirst = -657435.0;
    constexpr double kAfterLast = 2958466.0;
    if (!(days > kFirst && days < kAfterLast))
        return invalidDate();
    const double whole = std::trunc(days);
    const int secondOfDay = int(std::lround(std::abs(days - whole) * kSecondsPerDay));
    const QDate date = kOleZero.addDays(qint64(whole) + secondOfDay / kSecondsPerDay);
    const int second = secondOfDay % kSecondsPerDay;
    return fromLocal(date.year(), date.month(), date.day(), second / 3600, second / 60 % 60, second % 60);
}

double JDateTime::toOleDate() const
{
    const std::tm parts = local();
    const QDate date(parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday);
    const auto days = double(kOleZero.daysTo(date));
    const double time = double(parts.tm_hour * 3600 + parts.tm_min * 60 + parts.tm_sec) / kSecondsPerDay;
    return days < 0 ? days - time : days + time;
}

std::tm JDateTime::local() const
{
    std::tm parts{};
    if (!m_seconds)
        return parts;
    const auto seconds = std::time_t(*m_seconds);
    if (!localtime_r(&seconds, &parts))
        parts = {};
    return parts;
}

// The C locale, whatever the language of the program: strftime would use the process's locale.
static locale_t plainLocale()
{
    static const locale_t locale = newlocale(LC_ALL_MASK, "C", locale_t(nullptr));
    return locale;
}

namespace {

using Text = QVarLengthArray<QChar, 64>;

void appendByLibrary(Text &text, const std::tm &parts, QChar flag, char letter)
{
    std::array<char, 8> format{};
    size_t n = 0;
    format[n++] = '%';
    if (!flag.isNull())
        format[n++] = char(flag.unicode());
    format[n] = letter;
    std::array<char, 128> made{};
    const size_t size = strftime_l(made.data(), made.size(), format.data(), &parts, plainLocale());
    for (size_t i = 0; i < size; ++i)
        text.append(QLatin1Char(made[i]));
}

/// The number that a conversion prints with two digits; -1 for the other conversions.
int twoDigits(const std::tm &parts, char letter)
{
    switch (letter) {
    case 'm':
        return parts.tm_mon + 1;
    case 'd':
        return parts.tm_mday;
    case 'H':
        return parts.tm_hour;
    case 'M':
        return parts.tm_min;
    case 'S':
        return parts.tm_sec;
    default:
        return -1;
    }
}

// The usual parts are printed here: with strftime() for each of them, an export of a million rows takes longer.
void appendConversion(Text &text, const std::tm &parts, QChar flag, char letter)
{
    constexpr int kBase = 10;
    const auto digit = [&text](int number) { text.append(QChar(u'0' + number % kBase)); };
    const int year = parts.tm_year + 1900;
    if (const int number = flag.isNull() ? twoDigits(parts, letter) : -1; number >= 0) {
        digit(number / kBase);
        digit(number);
    } else if (letter == 'Y' && year >= 1000 && year <= 9999) {
        for (const int unit : {1000, 100, 10, 1})
            digit(year / unit);
    } else {
        appendByLibrary(text, parts, flag, letter);
    }
}

} // namespace

QString JDateTime::toString(QStringView strftimeFormat) const
{
    constexpr QStringView letters = u"aAbBcCdDeFgGhHIjklmMnprRsStTuUVwWxXyYzZ";
    if (!m_seconds)
        return {};
    const std::tm parts = local();
    Text text;
    const auto append = [&text](QStringView piece) { text.append(piece.data(), piece.size()); };
    const qsizetype size = strftimeFormat.size();
    for (qsizetype i = 0; i < size; ++i) {
        const QChar c = strftimeFormat[i];
        if (c != u'%') {
            text.append(c);
            continue;
        }
        const qsizetype start = i++;
        QChar flag;
        if (i < size && (strftimeFormat[i] == u'#' || strftimeFormat[i] == u'-')) {
            flag = u'-'; // both are spellings of "no leading zeros"
            ++i;
        } else if (i < size && (strftimeFormat[i] == u'E' || strftimeFormat[i] == u'O')) {
            ++i; // alternative forms of a locale, which the C locale does not have
        }
        if (i < size && letters.contains(strftimeFormat[i]))
            appendConversion(text, parts, flag, char(strftimeFormat[i].unicode()));
        else if (i < size && strftimeFormat[i] == u'%')
            text.append(u'%');
        else // not a conversion: copied unchanged
            append(strftimeFormat.sliced(start, qMin(i + 1, size) - start));
    }
    return QString(text.data(), text.size());
}

QString JDateTime::toString() const
{
    return toString(u"%m/%d/%Y %H:%M:%S");
}

QString JDateTime::toIso() const
{
    if (!m_seconds)
        return {};
    const std::tm parts = local();
    return QString::asprintf("%04d-%02d-%02dT%02d:%02d:%02d", parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday,
                             parts.tm_hour, parts.tm_min, parts.tm_sec);
}

} // namespace tarnwick
