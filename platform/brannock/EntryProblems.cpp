#include "EntryProblems.h"

#include "ReportFields.h"

using namespace Qt::StringLiterals;

namespace brannock {

using Kind = EntryProblem::Kind;

/// What a check finds. Texts are made only if they are kept.
class EntryCheck::Findings
{
public:
    /// kept: null if only hasAny() is wanted.
    Findings(QList<EntryProblem> *kept, bool isFilledLater)
        : m_kept(kept)
        , m_isFilledLater(isFilledLater)
    {
    }
    bool hasAny() const { return m_hasAny; }
    /// text: a function that returns the text.
    template <typename Text>
    void add(Kind kind, QStringView field, const Text &text)
    {
        if (m_isFilledLater && (kind == Kind::MissingCal || kind == Kind::MissingAnalyst))
            return;
        m_hasAny = true;
        if (m_kept)
            m_kept->append({kind, field.toString(), text()});
    }

private:
    QList<EntryProblem> *m_kept;
    bool m_isFilledLater;
    bool m_hasAny = false;
};

namespace {

/// Finds the texts that are longer than their fields in table 'report'.
template <typename Findings>
class LongTexts
{
public:
    LongTexts(const ReportEntry &entry, Findings &findings)
        : m_entry(entry)
        , m_findings(findings)
    {
    }
    void stored(StoredWhen when) { m_isStored = isStored(m_entry, when); }
    void field(QStringView name, const QString &value)
    {
        constexpr qsizetype kUsual = 50;
        constexpr qsizetype kLongest = 255;
        if (value.size() <= kUsual || !m_isStored || name == u"comment")
            return;
        const qsizetype most = name == u"file_name" || name == u"plan" ? kLongest : kUsual;
        if (value.size() > most)
            m_findings.add(Kind::TextTooLong, name, [&] {
                return u"The text has %1 characters; %2 are possible."_s.arg(value.size()).arg(most);
            });
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
    Findings &m_findings;
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
    Findings findings(&problems, m_isFilledLater);
    check(entry, findings);
    return problems;
}

bool EntryCheck::hasProblem(const ReportEntry &entry) const
{
    Findings findings(nullptr, m_isFilledLater);
    check(entry, findings);
    return findings.hasAny();
}

void EntryCheck::check(const ReportEntry &entry, Findings &findings) const
{
    if (!entry.isResult())
        return;
    const int tube = m_steamGen.findTube(entry.address());
    if (m_steamGen.numTube() > 0 && tube < 0)
        findings.add(Kind::UnknownTube, u"row",
                     [&] { return u"The component has no tube %1."_s.arg(m_steamGen.tubeName(entry.address())); });
    checkCal(entry, findings);
    LongTexts<Findings> texts(entry, findings);
    visitReportFields(entry, texts);
    checkCode(entry, findings);
    checkLocation(entry, tube, entry.location, u"loc_land", findings);
    checkLocation(entry, tube, entry.from, u"from_land", findings);
    checkLocation(entry, tube, entry.to, u"to_land", findings);
}

void EntryCheck::checkCal(const ReportEntry &entry, Findings &findings) const
{
    const std::pair<QStringView, const QString &> cal[] = {{u"site_code", entry.site.siteCode},
                                                           {u"comp", entry.site.compCode},
                                                           {u"oper_type", entry.operType},
                                                           {u"outage", entry.outage}};
    for (const auto &[field, value] : cal) {
        if (value.isEmpty())
            findings.add(Kind::MissingCal, field, [] { return u"It is required to identify the cal."_s; });
    }
    if (entry.calNumber <= 0)
        findings.add(Kind::MissingCal, u"cal_num", [] { return u"The cal number is not above 0."_s; });
    // Report files hold these as unsigned, the table as signed 16-bit numbers.
    constexpr int kMost = 0x7FFF;
    const auto limit = [&](QStringView field, int value, int most) {
        if (value > most)
            findings.add(Kind::OutOfRange, field, [&] { return u"%1 is above %2."_s.arg(value).arg(most); });
    };
    limit(u"cal_num", entry.calNumber, kMost);
    limit(u"id", entry.id, kMost);
    constexpr int kMostPercent = 100;
    if (isStored(entry, StoredWhen::Measured))
        limit(u"pcnt", entry.meas.percent, kMostPercent);
    if (entry.fileNumber < 0)
        findings.add(Kind::OutOfRange, u"file_num", [&] { return u"%1 is below 0."_s.arg(entry.fileNumber); });
    if (entry.analystId.isEmpty())
        findings.add(Kind::MissingAnalyst, u"analyst_id", [] { return u"The analyst is missing."_s; });
    if (entry.operatorId.isEmpty())
        findings.add(Kind::MissingAnalyst, u"oper_id", [] { return u"The operator is missing."_s; });
}

void EntryCheck::checkCode(const ReportEntry &entry, Findings &findings) const
{
    const DefectList::Code *code = entry.defect.isEmpty() ? nullptr : m_defects.find(entry.defect);
    if (!code) {
        findings.add(Kind::UnknownCode, u"defect", [&] {
            return entry.defect.isEmpty() ? u"The code is missing."_s
                                          : u"The project's list of codes has no \"%1\"."_s.arg(entry.defect);
        });
        return;
    }
    const auto require = [&](DefectList::Field required, bool isPresent, QStringView field, QStringView name) {
        if (!isPresent && code->required.contains(required))
            findings.add(Kind::MissingValue, field, [&] { return u"%1 requires %2."_s.arg(entry.defect, name); });
    };
    require(DefectList::Location, entry.location.isValid(), u"loc_land", u"a location");
    require(DefectList::Volts, entry.meas.isValid(), u"volts", u"a measurement of volts");
    require(DefectList::Phase, entry.meas.isValid(), u"phase", u"a phase");
    require(DefectList::Percent, entry.meas.percent > 0, u"pcnt", u"a depth in per cent");
}

void EntryCheck::checkLocation(const ReportEntry &entry, int tube, const TubeLoc &location, QStringView field,
                               Findings &findings) const
{
    if (entry.isNdd())
        return;
    if (!location.isValid()) {
        if (location.offset != 0)
            findings.add(Kind::UnknownLandmark, field, [&] {
                return u"The offset %1 has no landmark and would not be stored."_s.arg(location.offset);
            });
        return;
    }
    const ellery::LandmarkSet *set = tube < 0 ? nullptr : m_steamGen.getLandmarkSet(tube);
    if (set && set->numLand() > 0 && set->find(location.landmark) < 0)
        findings.add(Kind::UnknownLandmark, field,
                     [&] { return u"The tube has no landmark \"%1\"."_s.arg(location.landmark); });
}

} // namespace brannock
