#include "EntryProblems.h"

#include "ReportFields.h"

using namespace Qt::StringLiterals;

namespace brannock {

using Kind = EntryProblem::Kind;

namespace {

/// Finds the texts that are longer than their fields in table 'report'.
class LongTexts
{
public:
    LongTexts(const ReportEntry &entry, QList<EntryProblem> &problems)
        : m_entry(entry)
        , m_problems(problems)
    {
    }
    void stored(StoredWhen when) { m_isStored = isStored(m_entry, when); }
    void field(QStringView name, const QString &value)
    {
        constexpr qsizetype kUsual = 50;
        constexpr qsizetype kLongest = 255;
        const qsizetype most = name == u"file_name" || name == u"plan" ? kLongest : kUsual;
        if (m_isStored && value.size() > most && name != u"comment")
            m_problems.append({Kind::TextTooLong, name.toString(),
                               u"The text has %1 characters; %2 are possible."_s.arg(value.size()).arg(most)});
    }
    template <typename T, typename... Range>
    void field(QStringView, const T &, Range...)
    {
    }
    template <typename T, typename... Range>
    void sparse(QStringView, const T &, Range...)
    {
    }

private:
    const ReportEntry &m_entry;
    QList<EntryProblem> &m_problems;
    bool m_isStored = true;
};

} // namespace

QString problemName(EntryProblem::Kind kind)
{
    switch (kind) {
    case Kind::UnknownTube:
        return u"unknown tube"_s;
    case Kind::UnknownLandmark:
        return u"unknown landmark"_s;
    case Kind::UnknownCode:
        return u"unknown code"_s;
    case Kind::MissingValue:
        return u"missing value"_s;
    case Kind::MissingCal:
        return u"missing cal information"_s;
    case Kind::MissingAnalyst:
        return u"missing analyst"_s;
    case Kind::OutOfRange:
        return u"out of range"_s;
    case Kind::TextTooLong:
        return u"text too long"_s;
    }
    return {};
}

QList<EntryProblem> EntryCheck::problems(const ReportEntry &entry) const
{
    QList<EntryProblem> problems;
    if (!entry.isResult())
        return problems;
    const int tube = m_steamGen.findTube(entry.address());
    if (m_steamGen.numTube() > 0 && tube < 0)
        problems.append({Kind::UnknownTube, u"row"_s,
                         u"The component has no tube %1."_s.arg(m_steamGen.tubeName(entry.address()))});
    const std::pair<const char16_t *, const QString &> cal[] = {{u"site_code", entry.site.siteCode},
                                                                {u"comp", entry.site.compCode},
                                                                {u"oper_type", entry.operType},
                                                                {u"outage", entry.outage}};
    for (const auto &[field, value] : cal) {
        if (value.isEmpty())
            problems.append({Kind::MissingCal, QString::fromUtf16(field), u"It is required to identify the cal."_s});
    }
    if (entry.calNumber <= 0)
        problems.append({Kind::MissingCal, u"cal_num"_s, u"The cal number is not above 0."_s});
    // Report files hold these as unsigned, the table as signed 16-bit numbers.
    constexpr int kMost = 0x7FFF;
    for (const auto &[field, value] : {std::pair(u"cal_num"_s, entry.calNumber), std::pair(u"id"_s, entry.id)}) {
        if (value > kMost)
            problems.append({Kind::OutOfRange, field, u"%1 is above %2."_s.arg(value).arg(kMost)});
    }
    constexpr int kMostPercent = 100;
    if (isStored(entry, StoredWhen::Measured) && entry.meas.percent > kMostPercent)
        problems.append({Kind::OutOfRange, u"pcnt"_s, u"%1 is above %2."_s.arg(entry.meas.percent).arg(kMostPercent)});
    if (entry.fileNumber < 0)
        problems.append({Kind::OutOfRange, u"file_num"_s, u"%1 is below 0."_s.arg(entry.fileNumber)});
    if (entry.analystId.isEmpty())
        problems.append({Kind::MissingAnalyst, u"analyst_id"_s, u"The analyst is missing."_s});
    if (entry.operatorId.isEmpty())
        problems.append({Kind::MissingAnalyst, u"oper_id"_s, u"The operator is missing."_s});
    LongTexts texts(entry, problems);
    visitReportFields(entry, texts);
    checkCode(problems, entry);
    checkLocation(problems, entry, tube, entry.location, u"loc_land");
    checkLocation(problems, entry, tube, entry.from, u"from_land");
    checkLocation(problems, entry, tube, entry.to, u"to_land");
    if (m_isFilledLater) {
        problems.removeIf([](const EntryProblem &problem) {
            return problem.kind == Kind::MissingCal || problem.kind == Kind::MissingAnalyst;
        });
    }
    return problems;
}

void EntryCheck::checkCode(QList<EntryProblem> &problems, const ReportEntry &entry) const
{
    if (entry.defect.isEmpty() || !m_defects.find(entry.defect)) {
        problems.append({Kind::UnknownCode, u"defect"_s,
                         entry.defect.isEmpty() ? u"The code is missing."_s
                                                : u"The project's list of codes has no \"%1\"."_s.arg(entry.defect)});
        return;
    }
    const auto require = [&](DefectList::Field required, bool isPresent, const QString &field, const QString &name) {
        if (m_defects.isRequiredField(entry.defect, required) && !isPresent)
            problems.append({Kind::MissingValue, field, u"%1 requires %2."_s.arg(entry.defect, name)});
    };
    require(DefectList::Location, entry.location.isValid(), u"loc_land"_s, u"a location"_s);
    require(DefectList::Volts, entry.meas.isValid(), u"volts"_s, u"a measurement of volts"_s);
    require(DefectList::Phase, entry.meas.isValid(), u"phase"_s, u"a phase"_s);
    require(DefectList::Percent, entry.meas.percent > 0, u"pcnt"_s, u"a depth in per cent"_s);
}

void EntryCheck::checkLocation(QList<EntryProblem> &problems, const ReportEntry &entry, int tube,
                               const TubeLoc &location, QStringView field) const
{
    if (entry.isNdd())
        return;
    if (!location.isValid()) {
        if (location.offset != 0)
            problems.append({Kind::UnknownLandmark, field.toString(),
                             u"The offset %1 has no landmark and would not be stored."_s.arg(location.offset)});
        return;
    }
    const ellery::LandmarkSet *set = tube < 0 ? nullptr : m_steamGen.getLandmarkSet(tube);
    if (set && set->numLand() > 0 && set->find(location.landmark) < 0)
        problems.append(
            {Kind::UnknownLandmark, field.toString(), u"The tube has no landmark \"%1\"."_s.arg(location.landmark)});
}

} // namespace brannock
