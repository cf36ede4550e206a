#include "ReportColumns.h"

#include "RowFields.h"

#include <fenwright/CellText.h>
#include <QDateTime>
#include <QRegularExpression>

using namespace Qt::StringLiterals;
using tarnwick::ColumnAlign;
using tarnwick::JDateTime;

namespace brannock {

namespace {

constexpr int kAlways = -1; ///< in place of the decimals: whole numbers, zero included

QString shown(const QString &value, int)
{
    return value;
}
QString shown(int value, int decimals)
{
    return value == 0 && decimals != kAlways ? QString() : QString::number(value);
}
QString shown(double value, int decimals)
{
    return value == 0 ? QString() : QString::number(value, 'f', decimals);
}
QString shown(const JDateTime &value, int)
{
    return value.isNull() ? QString() : value.toIso().replace(u'T', u' ');
}
QString shown(const TubeLoc &value, int)
{
    return locationText(value);
}

QString store(QString &value, const QString &text, IntRange)
{
    value = text;
    return {};
}
QString store(int &value, const QString &text, IntRange range)
{
    bool isNumber = true;
    const int number = text.isEmpty() ? 0 : text.toInt(&isNumber);
    if (!isNumber || number < range.minimum || number > range.maximum)
        return u"\"%1\" is not a whole number from %2 to %3."_s.arg(text).arg(range.minimum).arg(range.maximum);
    value = number;
    return {};
}
template <typename Number>
requires std::is_floating_point_v<Number> QString store(Number &value, const QString &text, IntRange)
{
    bool isNumber = true;
    const double number = text.isEmpty() ? 0 : text.toDouble(&isNumber);
    if (!isNumber || !qIsFinite(Number(number)))
        return u"\"%1\" is not a number."_s.arg(text);
    value = Number(number);
    return {};
}
QString store(JDateTime &value, const QString &text, IntRange)
{
    const std::optional<JDateTime> time = text.isEmpty() ? JDateTime() : fenwright::cellTime(text.toUtf8());
    if (!time)
        return u"\"%1\" is not a date and time, such as 2026-03-15 14:30:00."_s.arg(text);
    value = *time;
    return {};
}
QString store(TubeLoc &value, const QString &text, IntRange)
{
    const int point = value.point;
    if (text == locationText(value))
        return {};
    const TubeLoc location = parseLocation(text);
    if (!text.isEmpty() && !location.isValid())
        return u"\"%1\" has no landmark before the offset."_s.arg(text);
    value = location;
    value.point = value.isValid() ? point : 0;
    return {};
}

QVariant variant(const QString &value)
{
    return value.isEmpty() ? QVariant() : QVariant(value);
}
QVariant variant(const JDateTime &value)
{
    return value.isNull() ? QVariant() : QVariant(QDateTime::fromSecsSinceEpoch(value.seconds()));
}
QVariant variant(const TubeLoc &value)
{
    return variant(locationText(value));
}
template <typename Number>
requires std::is_arithmetic_v<Number> QVariant variant(Number value)
{
    return double(value);
}

/// access: returns a reference to the field of an entry. decimals: see kAlways; other numbers are not shown if zero.
template <auto kAccess, int kDecimals = 0, IntRange kRange = kSigned32>
constexpr ReportColumn column(const char16_t *field, const char16_t *title, int width)
{
    using Field = std::remove_cvref_t<decltype(kAccess(std::declval<ReportEntry &>()))>;
    return {
        .field = field,
        .title = title,
        .width = width,
        .align = std::is_arithmetic_v<Field> ? ColumnAlign::Right : ColumnAlign::Left,
        .value =
            [](const ReportEntry &entry) {
                const auto &value = kAccess(entry);
                return shown(value, kDecimals).isEmpty() ? QVariant() : variant(value);
            },
        .text = [](const ReportEntry &entry) { return shown(kAccess(entry), kDecimals); },
        .set = [](ReportEntry &entry, const QString &text) { return store(kAccess(entry), text.trimmed(), kRange); }};
}

} // namespace

QString locationText(const TubeLoc &location)
{
    if (!location.isValid())
        return {};
    const QString offset = QString::number(double(qAbs(location.offset)), 'f', 2);
    return location.landmark + (location.offset < 0 ? u" -"_s : u" +"_s) + offset;
}

TubeLoc parseLocation(const QString &text)
{
    // A landmark may end in digits ("AV1"), so an offset without a sign needs a blank before it.
    static const QRegularExpression form(u"^(.*?)(?:\\s*([+-]\\s*[0-9]*\\.?[0-9]+)|\\s+([0-9]*\\.?[0-9]+))?$"_s);
    const QRegularExpressionMatch match = form.match(text.trimmed());
    QString offset = match.captured(2).isEmpty() ? match.captured(3) : match.captured(2);
    TubeLoc location;
    location.landmark = match.captured(1).trimmed();
    if (location.isValid())
        location.offset = offset.remove(u' ').toFloat();
    return location;
}

const QList<ReportColumn> &reportColumns()
{
#define FIELD(member)                                                                                                  \
    [](auto &entry) -> auto &                                                                                          \
    {                                                                                                                  \
        return entry.member;                                                                                           \
    }
    static const QList<ReportColumn> columns{
        column<FIELD(sec), kAlways, kSigned16>(u"sec", u"SEC", 4),
        column<FIELD(row), kAlways, kSigned16>(u"row", u"ROW", 5),
        column<FIELD(col), kAlways, kSigned16>(u"col", u"COL", 5),
        column<FIELD(meas.volts), 2>(u"volts", u"VOLTS", 7),
        column<FIELD(meas.phase)>(u"phase", u"DEG", 5),
        column<FIELD(defect)>(u"defect", u"CODE", 5),
        column<FIELD(meas.percent), 0, kSigned16>(u"pcnt", u"PCNT", 5),
        column<FIELD(channel)>(u"chan", u"CHN", 5),
        column<FIELD(location)>(u"loc_land", u"LOCATION", 12),
        column<FIELD(from)>(u"from_land", u"FROM", 12),
        column<FIELD(to)>(u"to_land", u"TO", 12),
        column<FIELD(beginTest)>(u"beg_test", u"BEG", 5),
        column<FIELD(endTest)>(u"end_test", u"END", 5),
        column<FIELD(meas.type)>(u"meas_type", u"MEAS", 5),
        column<FIELD(meas.digVolts)>(u"dig_volts", u"DIG", 6),
        column<FIELD(probe.type)>(u"probe_type", u"PROBE", 8),
        column<FIELD(probe.model)>(u"probe_model", u"MODEL", 8),
        column<FIELD(probe.size), 0, kSigned16>(u"probe_size", u"SIZE", 5),
        column<FIELD(probe.serialNumber)>(u"probe_sn", u"SN", 8),
        column<FIELD(leg), kAlways, kSigned16>(u"leg", u"LEG", 4),
        column<FIELD(calNumber), kAlways, kUnsigned16>(u"cal_num", u"CAL", 6),
        column<FIELD(operType)>(u"oper_type", u"OPER", 5),
        column<FIELD(analystId)>(u"analyst_id", u"ANALYST", 8),
        column<FIELD(operatorId)>(u"oper_id", u"OPERATOR", 8),
        column<FIELD(outage)>(u"outage", u"OUTAGE", 7),
        column<FIELD(site.siteCode)>(u"site_code", u"SITE", 6),
        column<FIELD(site.compCode)>(u"comp", u"COMP", 6),
        column<FIELD(fileNumber)>(u"file_num", u"FILE", 6),
        column<FIELD(id), 0, kUnsigned16>(u"id", u"ID", 6),
        column<FIELD(entryTime)>(u"entry_time", u"TIME", 19),
        column<FIELD(fileName)>(u"file_name", u"FILE NAME", 16),
        column<FIELD(util1)>(u"util1", u"UTIL1", 8),
        column<FIELD(util2)>(u"util2", u"UTIL2", 8),
        column<FIELD(plan)>(u"plan", u"PLAN", 8),
        column<FIELD(comment)>(u"comment", u"COMMENT", 24),
    };
#undef FIELD
    return columns;
}

const ReportColumn &reportColumn(QStringView field)
{
    for (const ReportColumn &column : reportColumns()) {
        if (field == column.field)
            return column;
    }
    qFatal("no report column %s", qPrintable(field.toString()));
}

} // namespace brannock
