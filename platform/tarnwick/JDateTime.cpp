#include "JDateTime.h"

#include <array>
#include <clocale>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <QDate>

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
    std::tm parts{};
    parts.tm_year = parts.tm_mon = parts.tm_mday = parts.tm_hour = parts.tm_min = parts.tm_sec = -1;
    parts.tm_isdst = -1;
    JDateTime time;
    time.m_seconds = madeTime(parts).value_or(-1);
    return time;
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

static QString oneConversion(const std::tm &parts, QChar flag, QChar letter)
{
    std::array<char, 8> format{};
    size_t n = 0;
    format[n++] = '%';
    if (!flag.isNull())
        format[n++] = char(flag.unicode());
    format[n] = char(letter.unicode());
    std::array<char, 128> text{};
    const size_t size = strftime_l(text.data(), text.size(), format.data(), &parts, plainLocale());
    return QString::fromLatin1(text.data(), qsizetype(size));
}

QString JDateTime::toString(QStringView strftimeFormat) const
{
    static const QString letters = u"aAbBcCdDeFgGhHIjklmMnprRsStTuUVwWxXyYzZ"_s;
    if (!m_seconds)
        return {};
    const std::tm parts = local();
    QString text;
    const qsizetype size = strftimeFormat.size();
    for (qsizetype i = 0; i < size; ++i) {
        const QChar c = strftimeFormat[i];
        if (c != u'%') {
            text += c;
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
            text += oneConversion(parts, flag, strftimeFormat[i]);
        else if (i < size && strftimeFormat[i] == u'%')
            text += u'%';
        else // not a conversion: copied unchanged
            text += strftimeFormat.sliced(start, qMin(i + 1, size) - start);
    }
    return text;
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
