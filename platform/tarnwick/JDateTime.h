#pragma once
#include <ctime>
#include <optional>
#include <QString>
#include <QStringView>

namespace tarnwick {

/// A point in time in whole seconds, by the standard library's local-time calendar. May be null.
class JDateTime
{
public:
    JDateTime() = default; ///< null
    static JDateTime now();
    static JDateTime fromSeconds(qint64 secondsSinceEpoch);
    /// Converts by mktime; the library determines daylight saving time. month and day count from 1. Values out of range
    /// carry over as in mktime.
    static JDateTime fromLocal(int year, int month, int day, int hour = 0, int minute = 0, int second = 0);
    /// The value that represents a date that could not be converted: mktime of a structure whose members are all -1.
    static JDateTime invalidDate();
    /// Parses a typed date, time, or both, in the user's locale, and always also mm/dd/yyyy [hh:mm[:ss] [AM|PM]] and
    /// ISO (yyyy-mm-dd, then a blank or T before the time). Empty optional if the text has none of these forms or a
    /// part is out of range.
    static std::optional<JDateTime> parse(QStringView text);
    /// Converts an OLE automation date: days since 1899-12-30; the fraction is the time of day and counts forward even
    /// before 1899.
    static JDateTime fromOleDate(double days);

    bool isNull() const { return !m_seconds.has_value(); }
    qint64 seconds() const { return m_seconds.value_or(0); }
    std::tm local() const; ///< all zero if null
    double toOleDate() const;
    /// Formats by strftime's rules in the C locale; empty if null.
    QString toString(QStringView strftimeFormat) const;
    /// Standard format "mm/dd/yyyy hh:mm:ss".
    QString toString() const;
    QString toIso() const; ///< yyyy-mm-ddThh:mm:ss

    auto operator<=>(const JDateTime &) const = default;

private:
    std::optional<qint64> m_seconds;
};

} // namespace tarnwick
