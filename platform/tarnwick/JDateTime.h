#pragma once
#include <ctime>
#include <optional>
#include <QString>
#include <QStringView>

namespace tarnwick {

/// A point in time as whole seconds of the standard library's local-time calendar, which may be null.
class JDateTime
{
public:
    JDateTime() = default; ///< null
    static JDateTime now();
    static JDateTime fromSeconds(qint64 secondsSinceEpoch);
    /// By mktime, daylight saving left to the library. month and day count from 1. Parts out of range carry over as
    /// mktime does.
    static JDateTime fromLocal(int year, int month, int day, int hour = 0, int minute = 0, int second = 0);
    /// What mktime gives for a broken-down time whose every part is -1: the value of a date that could not be
    /// converted.
    static JDateTime invalidDate();
    /// A typed date, time, or both: the user's locale, always also mm/dd/yyyy [hh:mm[:ss] [AM|PM]] and ISO (yyyy-mm-dd,
    /// with blank or T before the time). Empty optional when it is none of these or a part is out of range.
    static std::optional<JDateTime> parse(QStringView text);
    /// Days since 1899-12-30, the fraction the time of day (OLE automation; before 1899 the fraction still counts
    /// forward).
    static JDateTime fromOleDate(double days);

    bool isNull() const { return !m_seconds.has_value(); }
    qint64 seconds() const { return m_seconds.value_or(0); }
    std::tm local() const; ///< all zero when null
    double toOleDate() const;
    /// By strftime's rules in the C locale; empty when null.
    QString toString(QStringView strftimeFormat) const;
    /// The common form "mm/dd/yyyy hh:mm:ss".
    QString toString() const;
    QString toIso() const; ///< yyyy-mm-ddThh:mm:ss

    auto operator<=>(const JDateTime &) const = default;

private:
    std::optional<qint64> m_seconds;
};

} // namespace tarnwick
