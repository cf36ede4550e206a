#include "Inspection.h"

#include <algorithm>

using namespace Qt::StringLiterals;
using brannock::ReportEntry;
using tarnwick::JDateTime;

namespace demo {

namespace {

// A tube has one or more entries each of the primary and the secondary analyst, and some of the resolution.
constexpr double kEntriesPerTube = 2.3;
constexpr double kBobbinShare = 0.85;
constexpr double kRotatingSample = 0.2;
constexpr int kLeastTubesInCal = 150;
constexpr int kMostTubesInCal = 250;
// The conversion accepts cal numbers up to 999.
constexpr int kMostCals = 900;
constexpr int kFirstDay = 13;
constexpr int kLastDay = 28;

constexpr int kPrimaries = 5;
constexpr int kSecondaries = 4;
constexpr int kResolutions = 3;

/// Scatter in inches of the position at which an indication is reported.
constexpr double kOffsetScatter = 0.04;

// The present outage is in progress: shares of the tubes finished by the bobbin probe, and of follow-ups finished by
// the rotating probe.
constexpr double kBobbinDone = 0.95;
constexpr double kQuestionsDone = 0.6;

// Number of indications per thousand that each analyst reports.
constexpr int kPrimaryFinds = 970;
constexpr int kSecondaryFinds = 950;

double rounded(double value)
{
    return double(qRound64(value * 100)) / 100;
}

/// Returns true if the probe can detect the flaw.
bool sees(const Flaw &flaw, bool rotating, const QString &place)
{
    return rotating ? flaw.landmark == place && flaw.kind != FlawKind::Noise && flaw.kind != FlawKind::BuffMark : true;
}

QString codeOf(const Flaw &flaw, bool rotating, const QString &tubesheet)
{
    switch (flaw.kind) {
    case FlawKind::Dent:
        return u"DNT"_s;
    case FlawKind::BarWear:
        return u"WAR"_s;
    case FlawKind::SupportWear:
        return u"PCT"_s;
    case FlawKind::Crack:
        // The bobbin probe only detects that there is something.
        if (!rotating)
            return flaw.landmark == tubesheet ? u"DTI"_s : u"DSI"_s;
        if (flaw.circumferential)
            return flaw.several ? u"MCI"_s : u"SCI"_s;
        return flaw.several ? u"MAI"_s : u"SAI"_s;
    case FlawKind::Volumetric:
        return u"VOL"_s;
    case FlawKind::Bulge:
        return u"BLG"_s;
    case FlawKind::BuffMark:
        return u"MBM"_s;
    case FlawKind::LoosePart:
        return u"PLP"_s;
    case FlawKind::Noise:
        break;
    }
    return u"INR"_s;
}

bool needsRotatingProbe(const Flaw &flaw, int outage)
{
    constexpr double kLargeDent = 5;
    return flaw.isThere(outage) && (flaw.kind == FlawKind::Crack || flaw.kind == FlawKind::Volumetric ||
                                    (flaw.kind == FlawKind::Dent && flaw.volts >= kLargeDent));
}

} // namespace

QString operCode(Oper oper)
{
    return oper == Oper::Primary ? u"PRI"_s : oper == Oper::Secondary ? u"SEC"_s : u"RES"_s;
}

QString operWord(Oper oper)
{
    return oper == Oper::Primary ? u"primary"_s : oper == Oper::Secondary ? u"secondary"_s : u"resolution"_s;
}

/// The work of one outage as units: the bobbin's tubes, then the rotating probe's locations. If more entries are
/// requested than one inspection gives, rotating probes continue from support to support.
class Inspection::Units
{
public:
    Units(const Inspection &inspection, int outage, bool endless)
        : m_inspection(inspection)
        , m_outage(outage)
        , m_endless(endless)
        , m_bobbinEnd(inspection.m_tubes.size())
        , m_specialEnd(m_bobbinEnd)
        , m_sample(int(double(m_bobbinEnd) * kRotatingSample))
    {
        if (outage == inspection.m_options.outages - 1) {
            m_bobbinEnd = std::max<qsizetype>(1, qsizetype(double(m_bobbinEnd) * kBobbinDone));
            m_specialEnd = qsizetype(double(m_specialEnd) * kQuestionsDone);
        }
    }

    /// Returns false at the end. rotating receives the kind of probe of the unit.
    bool next(Unit &unit, bool &rotating)
    {
        const QList<int> &tubes = m_inspection.m_tubes;
        rotating = m_bobbin >= m_bobbinEnd;
        if (!rotating) {
            unit = {tubes[m_bobbin++], QString()};
            return true;
        }
        if (nextSpecial(unit))
            return true;
        const QStringList &places = m_inspection.m_places;
        if (!m_endless && m_swept >= m_sample)
            return false;
        // A prime stride, so that a sample is not limited to some rows.
        constexpr qint64 kStride = 7919;
        const qint64 pass = m_swept / tubes.size();
        unit = {tubes[int(m_swept * kStride % tubes.size())], places[int(pass % places.size())]};
        ++m_swept;
        return true;
    }

private:
    bool nextSpecial(Unit &unit)
    {
        const QList<int> &tubes = m_inspection.m_tubes;
        while (m_waiting.isEmpty() && m_special < m_specialEnd) {
            const int tube = tubes[m_special++];
            const Condition condition = m_inspection.m_flaws.of(tube);
            for (const Flaw &flaw : condition.flaws) {
                const Unit wanted{tube, flaw.landmark};
                const auto isSame = [&](const Unit &other) { return other.place == wanted.place; };
                if (needsRotatingProbe(flaw, m_outage) && !condition.isPlugged(m_outage) &&
                    std::none_of(m_waiting.begin(), m_waiting.end(), isSame))
                    m_waiting.append(wanted);
            }
        }
        if (m_waiting.isEmpty())
            return false;
        unit = m_waiting.takeFirst();
        return true;
    }

    const Inspection &m_inspection;
    int m_outage;
    bool m_endless;
    qsizetype m_bobbinEnd;
    qsizetype m_specialEnd;
    int m_sample;
    qsizetype m_bobbin = 0;
    qsizetype m_special = 0;
    QList<Unit> m_waiting;
    qint64 m_swept = 0;
};

Inspection::Inspection(const brannock::Project &project, const DemoOptions &options)
    : m_project(project)
    , m_options(options)
    , m_flaws(project.steamGen, options)
{
    const ellery::LandmarkSet &set = project.steamGen.landmarkSets.last();
    m_inletEnd = set.landmarks.first().name;
    m_outletEnd = set.landmarks.last().name;
    for (const ellery::Landmark &landmark : set.landmarks) {
        if (landmark.type == u"TUBESHEET" || landmark.type == u"SUPPORT")
            m_places.append(landmark.name);
    }
    m_tubesheet = m_places.first();

    // Every outage inspects the same tubes, so that their histories can be followed.
    constexpr quint64 kAspect = 2;
    const int count = bobbinTubes();
    std::vector<std::pair<quint64, int>> drawn;
    for (int tube = 0; tube < project.steamGen.numTube(); ++tube)
        drawn.emplace_back(Random::of(options.seed, quint64(tube), kAspect).next(), tube);
    std::nth_element(drawn.begin(), drawn.begin() + count - 1, drawn.end());
    for (int i = 0; i < count; ++i)
        m_tubes.append(drawn[size_t(i)].second);
    std::sort(m_tubes.begin(), m_tubes.end());
}

int Inspection::bobbinTubes() const
{
    const int all = m_project.steamGen.numTube();
    if (m_options.entries == 0)
        return all;
    const double wanted = double(m_options.entries) / m_options.outages / kEntriesPerTube * kBobbinShare;
    return std::clamp(int(std::min(wanted, 1e9)), 1, all);
}

qint64 Inspection::quotaOf(int outage) const
{
    const qint64 share = m_options.entries / m_options.outages;
    return outage == m_options.outages - 1 ? m_options.entries - share * outage : share;
}

void Inspection::run(const std::function<void(const InspectedCal &)> &take, tarnwick::Progress *progress)
{
    m_done = 0;
    for (int outage = 0; outage < m_options.outages; ++outage)
        runOutage(outage, quotaOf(outage), take, progress);
}

void Inspection::runOutage(int outage, qint64 quota, const std::function<void(const InspectedCal &)> &take,
                           tarnwick::Progress *progress)
{
    constexpr quint64 kAspect = 3;
    const bool endless = m_options.entries > 0;
    if (endless && quota == 0)
        return;
    Random random = Random::of(m_options.seed, quint64(outage), kAspect);
    const int leastTubes = std::max<int>(kLeastTubesInCal, int(double(quota) / kEntriesPerTube / kMostCals) + 1);
    const qint64 whole =
        endless ? m_options.entries
                : qint64(double(m_tubes.size()) * m_options.outages * kEntriesPerTube * (1 + kRotatingSample));
    Units units(*this, outage, endless);
    Unit unit;
    bool rotating = false;
    bool more = units.next(unit, rotating);
    qint64 left = quota;
    for (int number = 1; more && (!endless || left > 0); ++number) {
        if (progress) {
            progress->report(m_done, whole, u"Making reports"_s);
            if (progress->cancelled())
                throw tarnwick::Cancelled();
        }
        const bool calRotates = rotating;
        InspectedCal cal = openCal(outage, number, calRotates, random);
        const int size = leastTubes + random.between(0, kMostTubesInCal - kLeastTubesInCal);
        qint64 called = 0;
        for (int rank = 1; more && rotating == calRotates && rank <= size && (!endless || called < left); ++rank) {
            inspect(unit, rank, cal, random);
            called = 0;
            for (const QList<ReportEntry> &results : cal.results)
                called += results.size();
            more = units.next(unit, rotating);
        }
        // The requested number is exact: superfluous entries of the last tube are removed.
        for (int oper = kOpers - 1; oper >= 0 && endless; --oper) {
            QList<ReportEntry> &results = cal.results[size_t(oper)];
            const qint64 extra = std::clamp<qint64>(called - left, 0, results.size());
            results.resize(results.size() - extra);
            called -= extra;
        }
        left -= called;
        m_done += called;
        take(cal);
    }
}

InspectedCal Inspection::openCal(int outage, int number, bool rotating, Random &random) const
{
    InspectedCal cal;
    cal.outage = outage;
    cal.number = number;
    cal.rotating = rotating;
    const QList<fenwright::ProbeInfo> &probes = m_project.probes;
    cal.probe = probes[rotating ? 1 : 0];
    cal.probe.serialNumber = QString::number(104000 + random.between(0, 999));
    const std::tm date = m_project.outages[outage].date.local();
    // The first tubes are on the first day; several acquisition stations work in parallel, on the day shift only.
    const int day = std::min(kFirstDay + (number - 1) / 8, kLastDay);
    cal.start = JDateTime::fromLocal(date.tm_year + 1900, date.tm_mon + 1, day, random.between(6, 17),
                                     random.between(0, 59), random.between(0, 59));
    const auto user = [&](int first, int count) { return m_project.users[first + random.between(0, count - 1)].id; };
    cal.analysts = {user(0, kPrimaries), user(kPrimaries, kSecondaries), user(kPrimaries + kSecondaries, kResolutions)};
    const int operators = kPrimaries + kSecondaries + kResolutions;
    cal.operatorId = user(operators, int(m_project.users.size()) - operators);
    return cal;
}

ReportEntry Inspection::blankEntry(const Unit &unit, int rank, Oper oper, const InspectedCal &cal) const
{
    constexpr int kSecondsPerTube = 20;
    constexpr int kFilesInName = 1000;
    ReportEntry entry;
    entry.outage = m_project.outages[cal.outage].name;
    entry.site = m_project.site;
    entry.site.outage = entry.outage;
    entry.calNumber = cal.number;
    entry.fileNumber = rank % kFilesInName;
    const ellery::TubeAddress &address = m_project.steamGen[unit.tube].address;
    entry.sec = address.sec;
    entry.row = address.row;
    entry.col = address.col;
    entry.defect = u"NDD"_s;
    entry.beginTest = unit.place.isEmpty() ? m_inletEnd : unit.place;
    entry.endTest = unit.place.isEmpty() ? m_outletEnd : unit.place;
    entry.probe = cal.probe;
    entry.operType = operCode(oper);
    entry.analystId = cal.analysts[size_t(oper)];
    entry.operatorId = cal.operatorId;
    // The resolution starts an hour after the analysts.
    entry.entryTime = JDateTime::fromSeconds(cal.start.seconds() + qint64(rank) * kSecondsPerTube + int(oper) * 1200);
    entry.fileName = u"%1HC%2.%3"_s.arg(entry.outage)
                         .arg(cal.number, 5, 10, QLatin1Char('0'))
                         .arg(entry.fileNumber, 3, 10, QLatin1Char('0'));
    entry.plan = cal.rotating ? u"Rotating probe"_s : u"Bobbin full length"_s;
    return entry;
}

ReportEntry Inspection::call(const Flaw &flaw, ReportEntry entry, Oper oper, const InspectedCal &cal,
                             Random &random) const
{
    constexpr double kCountsPerVolt = 36.5;
    // Two readings never agree exactly, not even of one person. The values of the resolution are final.
    const bool final = oper == Oper::Resolution;
    entry.defect = codeOf(flaw, cal.rotating, m_tubesheet);
    entry.location = {flaw.landmark, float(rounded(flaw.offset + random.hundredths(-kOffsetScatter, kOffsetScatter))),
                      0, 0};
    if (flaw.kind == FlawKind::LoosePart)
        return entry;
    if (flaw.length > 0) {
        entry.from = entry.location;
        entry.to = entry.location;
        entry.to.offset = float(rounded(double(entry.from.offset) + flaw.length));
        entry.location.clear();
    }
    const double spread = final ? random.between(98, 102) / 100.0 : random.between(96, 104) / 100.0;
    entry.meas.type = u"Vpp"_s;
    constexpr double kVoltsPerPercent = 0.045;
    const double volts = flaw.volts + kVoltsPerPercent * (flaw.depthAt(cal.outage) - flaw.depth);
    entry.meas.volts = rounded(volts * spread);
    entry.meas.digVolts = int(entry.meas.volts * kCountsPerVolt);
    entry.meas.phase = flaw.phase + (final ? random.between(-1, 1) : random.between(-2, 2));
    entry.channel = cal.rotating                                                  ? u"2"_s
                    : flaw.kind == FlawKind::Dent || flaw.kind == FlawKind::Bulge ? u"1"_s
                                                                                  : u"P1"_s;
    if (flaw.depth > 0)
        entry.meas.percent = final ? flaw.resolvedDepth(cal.outage)
                                   : std::clamp(flaw.depthAt(cal.outage) + random.between(-3, 3), 1, 99);
    if (!final)
        return entry;
    if (flaw.kind == FlawKind::Crack && cal.rotating)
        entry.comment = u"Confirmed, to be plugged"_s;
    else if (entry.meas.percent >= kPluggingLimit)
        entry.comment = u"At the limit, to be plugged"_s;
    else if (flaw.growth > 0 && cal.outage > flaw.since)
        entry.comment =
            u"%1% in %2"_s.arg(flaw.resolvedDepth(cal.outage - 1)).arg(m_project.outages[cal.outage - 1].name);
    return entry;
}

void Inspection::inspect(const Unit &unit, int rank, InspectedCal &cal, Random &random) const
{
    const Condition condition = m_flaws.of(unit.tube);
    if (condition.isPlugged(cal.outage)) {
        for (const Oper oper : {Oper::Primary, Oper::Secondary}) {
            ReportEntry entry = blankEntry(unit, rank, oper, cal);
            entry.defect = u"PLG"_s;
            entry.beginTest.clear();
            entry.endTest.clear();
            cal.results[size_t(oper)].append(entry);
        }
        return;
    }
    QList<const Flaw *> found;
    for (const Oper oper : {Oper::Primary, Oper::Secondary}) {
        QList<ReportEntry> &results = cal.results[size_t(oper)];
        const qsizetype before = results.size();
        for (const Flaw &flaw : condition.flaws) {
            const bool finds = random.permille(oper == Oper::Primary ? kPrimaryFinds : kSecondaryFinds);
            if (!finds || !flaw.isThere(cal.outage) || !sees(flaw, cal.rotating, unit.place))
                continue;
            results.append(call(flaw, blankEntry(unit, rank, oper, cal), oper, cal, random));
            if (!found.contains(&flaw))
                found.append(&flaw);
        }
        if (results.size() == before)
            results.append(blankEntry(unit, rank, oper, cal));
    }
    for (const Flaw *flaw : std::as_const(found)) {
        // The resolution ignores small dents and noise.
        if (flaw->kind != FlawKind::Noise && !(flaw->kind == FlawKind::Dent && flaw->volts < 5))
            cal.results[size_t(Oper::Resolution)].append(
                call(*flaw, blankEntry(unit, rank, Oper::Resolution, cal), Oper::Resolution, cal, random));
    }
}

} // namespace demo
