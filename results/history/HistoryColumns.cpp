#include "HistoryColumns.h"

#include <brannock/ReportColumns.h>
#include <QDateTime>
#include <QLocale>
#include <tarnwick/Format.h>

namespace results {

using namespace Qt::StringLiterals;
using brannock::HistoryEntry;
using brannock::ReportEntry;
using brannock::TubeLoc;
using tarnwick::ColumnAlign;
using tarnwick::format;
using tarnwick::JDateTime;

namespace {

constexpr int kLowestLeg = -1;

QString located(QStringView form, const TubeLoc &where)
{
    return where.isValid() ? format(form, where.landmark, double(where.offset)) : QString();
}

QString extentText(const HistoryEntry &entry)
{
    if (entry.to.isValid())
        return located(u"TO %-3S %+.2f", entry.to);
    const bool hasTests = !entry.beginTest.isEmpty() || !entry.endTest.isEmpty();
    return hasTests ? format(u"%-3S %-3S", entry.beginTest, entry.endTest) : QString();
}

QString setExtent(HistoryEntry &entry, const QString &text)
{
    constexpr QStringView kTo = u"TO ";
    const QString typed = text.simplified();
    if (typed.startsWith(kTo, Qt::CaseInsensitive)) {
        const brannock::TubeLoc to = brannock::parseLocation(typed.sliced(kTo.size()));
        if (!to.isValid())
            return u"\"%1\" has no landmark before the offset."_s.arg(text);
        entry.to = to;
        return {};
    }
    if (typed.count(u' ') > 1)
        return u"\"%1\" is neither two tests, such as TEH TEC, nor a location, such as TO 02H +1.50."_s.arg(text);
    entry.to = {};
    entry.beginTest = typed.section(u' ', 0, 0);
    entry.endTest = typed.section(u' ', 1, 1);
    return {};
}

QString legText(const HistoryEntry &entry)
{
    return historyLegs().value(entry.leg - kLowestLeg, QString::number(entry.leg));
}

QString setLeg(HistoryEntry &entry, const QString &text)
{
    const auto leg = int(historyLegs().indexOf(text.trimmed().toUpper()));
    if (leg < 0)
        return u"\"%1\" is none of %2."_s.arg(text, historyLegs().join(u", "_s));
    entry.leg = leg + kLowestLeg;
    return {};
}

QString setDate(HistoryEntry &entry, const QString &text)
{
    const std::optional<JDateTime> date = text.trimmed().isEmpty() ? JDateTime() : JDateTime::parse(text.trimmed());
    if (!date)
        return u"\"%1\" is not a date."_s.arg(text);
    entry.entryTime = *date;
    return {};
}

QVariant dateValue(const HistoryEntry &entry)
{
    return entry.entryTime.isNull() ? QVariant() : QVariant(QDateTime::fromSecsSinceEpoch(entry.entryTime.seconds()));
}

/// A field that report entries have, too: it is typed and checked as in the report editor. kForm: of a number, which is
/// shown if it is not 0. kOf, kInReport: return the field of an entry.
template <auto kOf, auto kInReport, const char16_t *kField, const char16_t *kForm>
struct SharedField
{
    using Type = std::remove_cvref_t<decltype(kOf(std::declval<HistoryEntry &>()))>;
    static constexpr bool kIsNumber = std::is_arithmetic_v<Type>;

    static QString text(const HistoryEntry &entry)
    {
        const Type &value = kOf(entry);
        if constexpr (kIsNumber)
            return value == 0 ? QString() : format(QStringView(kForm), value);
        else if constexpr (std::is_same_v<Type, TubeLoc>)
            return located(u"%-3S %+.2f", value);
        else
            return value;
    }
    static QVariant value(const HistoryEntry &entry)
    {
        if constexpr (kIsNumber)
            return kOf(entry) == 0 ? QVariant() : QVariant(double(kOf(entry)));
        else
            return text(entry);
    }
    static QString editText(const HistoryEntry &entry)
    {
        if constexpr (kIsNumber)
            return kOf(entry) == 0 ? QString()
                                   : QString::number(double(kOf(entry)), 'g', QLocale::FloatingPointShortest);
        else
            return text(entry);
    }
    static QString set(HistoryEntry &entry, const QString &typed)
    {
        ReportEntry report;
        kInReport(report) = kOf(entry);
        const QString reason = brannock::reportColumn(kField).set(report, typed);
        if (reason.isEmpty())
            kOf(entry) = kInReport(report);
        return reason;
    }
};

template <auto kOf, auto kInReport, const char16_t *kField, const char16_t *kForm = nullptr>
constexpr HistoryColumn column(const char16_t *title, int width)
{
    using Field = SharedField<kOf, kInReport, kField, kForm>;
    return {.title = title,
            .width = width,
            .align = Field::kIsNumber ? ColumnAlign::Right : ColumnAlign::Left,
            .text = Field::text,
            .value = Field::value,
            .editText = Field::editText,
            .set = Field::set};
}

/// A column with functions of its own; it has texts.
constexpr HistoryColumn column(const char16_t *title, int width, QString (*text)(const HistoryEntry &),
                               QString (*set)(HistoryEntry &, const QString &))
{
    return {.title = title,
            .width = width,
            .align = ColumnAlign::Left,
            .text = text,
            .value = nullptr,
            .editText = text,
            .set = set};
}

constexpr char16_t kDefect[] = u"defect";
constexpr char16_t kVolts[] = u"volts";
constexpr char16_t kPhase[] = u"phase";
constexpr char16_t kPcnt[] = u"pcnt";
constexpr char16_t kChan[] = u"chan";
constexpr char16_t kLocLand[] = u"loc_land";
constexpr char16_t kOutage[] = u"outage";
constexpr char16_t kProbeModel[] = u"probe_model";
constexpr char16_t kProbeSize[] = u"probe_size";
constexpr char16_t kAnalystId[] = u"analyst_id";
constexpr char16_t kOperId[] = u"oper_id";
constexpr char16_t kTwoDecimals[] = u"%.2f";
constexpr char16_t kNoDecimals[] = u"%.0f";
constexpr char16_t kPercentForm[] = u"%3d%%";
constexpr char16_t kWhole[] = u"%d";

#define FIELD(member)                                                                                                  \
    [](auto &entry) -> auto &                                                                                          \
    {                                                                                                                  \
        return entry.member;                                                                                           \
    }
const HistoryColumn kColumns[] = {
    column<FIELD(defect), FIELD(defect), kDefect>(u"CODE", 5),
    column<FIELD(volts), FIELD(meas.volts), kVolts, kTwoDecimals>(u"VOLTS", 7),
    column<FIELD(percent), FIELD(meas.percent), kPcnt, kPercentForm>(u"PCNT", 5),
    column<FIELD(channel), FIELD(channel), kChan>(u"CHAN", 5),
    column<FIELD(location), FIELD(location), kLocLand>(u"LOCATION", 12),
    column(u"EXTENT", 13, extentText, setExtent),
    {.title = u"DATE",
     .width = 10,
     .align = ColumnAlign::Left,
     .text = [](const HistoryEntry &entry) { return format(u"%{%m/%d/%Y}t", entry.entryTime); },
     .value = dateValue,
     .editText = [](const HistoryEntry &entry) { return entry.entryTime.toString(); },
     .set = setDate},
    column<FIELD(outage), FIELD(outage), kOutage>(u"OUTAGE", 7),
    {.title = u"KEEP",
     .width = 5,
     .align = ColumnAlign::Center,
     .text = nullptr,
     .value = nullptr,
     .editText = nullptr,
     .set = nullptr},
    column(u"LEG", 7, legText, setLeg),
    column<FIELD(probeModel), FIELD(probe.model), kProbeModel>(u"PROBE", 8),
    column<FIELD(probeSize), FIELD(probe.size), kProbeSize, kWhole>(u"SIZE", 5),
    column<FIELD(analystId), FIELD(analystId), kAnalystId>(u"ANALYST", 8),
    column<FIELD(operatorId), FIELD(operatorId), kOperId>(u"OPER", 6),
    column<FIELD(phase), FIELD(meas.phase), kPhase, kNoDecimals>(u"PHASE", 6),
};
#undef FIELD

} // namespace

std::span<const HistoryColumn> historyColumns()
{
    return kColumns;
}

const QStringList &historyLegs()
{
    static const QStringList legs{u"NONE"_s, u"OUTLET"_s, u"INLET"_s, u"UBEND"_s};
    return legs;
}

} // namespace results
