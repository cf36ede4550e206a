#include "Flaws.h"

#include "Bundle.h"
#include "Random.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace demo {

namespace {

constexpr int kInlet = 1;

// Number of affected tubes per thousand. Wear at bars increases with the row, up to the second number in the longest
// bends.
constexpr int kPluggedBefore = 7;
constexpr int kDents = 60;
constexpr int kBarWearLow = 30;
constexpr int kBarWearHigh = 130;
constexpr int kSupportWear = 8;
constexpr int kSupportWearOnceThrough = 55;
constexpr int kCracks = 6;
constexpr int kVolumetric = 7;
constexpr int kBulges = 8;
constexpr int kBuffMarks = 14;
constexpr int kLooseParts = 2;
constexpr int kNoise = 10;

double wearVolts(Random &random, int depth)
{
    return 0.2 + depth * 0.045 + random.hundredths(0, 0.3);
}

} // namespace

int Flaw::resolvedDepth(int outage) const
{
    if (depth == 0)
        return 0;
    // Sum of two uniform draws: standard deviation 1.6 per cent; small differences are more frequent than large ones.
    Random random = Random::of(scatter, quint64(outage), 0);
    return std::clamp(depthAt(outage) + random.between(-2, 2) + random.between(-1, 1), 1, 99);
}

bool Condition::isPlugged(int outage) const
{
    // Once a tube is out of service it stays so; later readings do not count.
    const auto isReason = [outage](const Flaw &flaw) {
        for (int before = flaw.since; before < outage; ++before) {
            if (flaw.kind == FlawKind::Crack || flaw.resolvedDepth(before) >= kPluggingLimit)
                return true;
        }
        return false;
    };
    return pluggedBefore || std::any_of(flaws.begin(), flaws.end(), isReason);
}

Flaws::Flaws(const ellery::SteamGen &gen, const DemoOptions &options)
    : m_gen(gen)
    , m_seed(options.seed)
    , m_outages(options.outages)
    , m_onceThrough(options.kind == Kind::OnceThrough)
    , m_rows(std::max(1, gen.maxNumber(ellery::Axis::Row)))
    , m_firstBarRow(m_onceThrough ? m_rows + 1 : firstRowWithBars(gen))
{
    for (const ellery::Landmark &landmark : gen.landmarkSets.last().landmarks) {
        if (landmark.type == u"SUPPORT")
            m_supports.append(landmark.name);
        else if (landmark.type == u"AVB")
            m_bars.append(landmark.name);
        else if (landmark.type == u"TUBESHEET" && landmark.leg == kInlet)
            m_tubesheet = landmark.name;
    }
}

Condition Flaws::of(int tube) const
{
    constexpr quint64 kAspect = 1;
    constexpr quint64 kScatterAspect = 100; // plus one for each flaw of the tube
    Random random = Random::of(m_seed, quint64(tube), kAspect);
    const int row = m_gen[tube].address.row;
    Condition condition;
    condition.pluggedBefore = random.permille(kPluggedBefore);
    const auto add = [&](FlawKind kind, const QString &landmark) -> Flaw & {
        Flaw flaw;
        flaw.kind = kind;
        flaw.landmark = landmark;
        flaw.scatter = Random::of(m_seed, quint64(tube), kScatterAspect + quint64(condition.flaws.size())).next();
        condition.flaws.append(flaw);
        return condition.flaws.last();
    };
    const auto anySupport = [&]() { return m_supports[random.between(0, int(m_supports.size()) - 1)]; };
    const auto addWear = [&](FlawKind kind, const QString &landmark) {
        Flaw &wear = add(kind, landmark);
        const bool fast = random.permille(60);
        wear.offset = random.hundredths(-0.35, 0.35);
        wear.since = random.permille(650) ? 0 : random.between(0, m_outages - 1);
        wear.depth = fast ? random.between(15, 34) : random.between(5, 20);
        wear.growth = fast ? random.between(7, 12) : random.between(1, 5);
        wear.volts = wearVolts(random, wear.depth);
        wear.phase = random.between(85, 130);
    };

    for (int share = kDents; random.permille(share); share /= 4) {
        Flaw &dent = add(FlawKind::Dent, anySupport());
        dent.offset = random.hundredths(-0.6, 0.6);
        dent.volts = random.permille(150) ? random.hundredths(10, 24) : random.hundredths(2, 9.5);
        dent.phase = random.between(176, 184);
    }
    if (row >= m_firstBarRow && random.permille(kBarWearLow + (kBarWearHigh - kBarWearLow) * row / m_rows)) {
        const int count = random.permille(650) ? 1 : random.permille(700) ? 2 : 3;
        const int first = random.between(0, int(m_bars.size()) - count);
        for (int i = 0; i < count; ++i)
            addWear(FlawKind::BarWear, m_bars[first + i]);
    }
    if (random.permille(m_onceThrough ? kSupportWearOnceThrough : kSupportWear))
        addWear(FlawKind::SupportWear, anySupport());
    if (random.permille(kCracks)) {
        const bool atTubesheet = random.permille(750);
        Flaw &crack = add(FlawKind::Crack, atTubesheet ? m_tubesheet : anySupport());
        crack.offset = atTubesheet ? random.hundredths(-3, 0.5) : random.hundredths(-0.4, 0.4);
        // Cracks begin late, and their number grows from outage to outage.
        crack.since = std::max(random.between(0, m_outages - 1), random.between(0, m_outages - 1));
        crack.volts = random.hundredths(0.3, 2.4);
        crack.phase = random.between(45, 115);
        crack.circumferential = random.permille(250);
        crack.several = random.permille(150);
    }
    if (random.permille(kVolumetric)) {
        Flaw &pit = add(FlawKind::Volumetric, random.permille(500) ? m_tubesheet : anySupport());
        pit.offset = random.hundredths(0.5, 12);
        pit.since = random.between(0, m_outages - 1);
        pit.depth = random.between(8, 33);
        pit.volts = random.hundredths(0.4, 3.2);
        pit.phase = random.between(60, 125);
    }
    if (random.permille(kBulges)) {
        Flaw &bulge = add(FlawKind::Bulge, m_tubesheet);
        bulge.offset = random.hundredths(-18, 0.3);
        bulge.volts = random.hundredths(4, 32);
        bulge.phase = random.between(176, 184);
    }
    if (random.permille(kBuffMarks)) {
        Flaw &mark = add(FlawKind::BuffMark, anySupport());
        mark.offset = random.hundredths(4, 20);
        mark.length = random.hundredths(0.8, 5);
        mark.volts = random.hundredths(0.5, 4);
        mark.phase = random.between(150, 172);
    }
    if (random.permille(kLooseParts)) {
        Flaw &part = add(FlawKind::LoosePart, m_tubesheet);
        part.offset = random.hundredths(0.1, 1.2);
        part.since = random.between(0, m_outages - 1);
    }
    if (random.permille(kNoise)) {
        Flaw &noise = add(FlawKind::Noise, anySupport());
        noise.offset = random.hundredths(-8, 8);
        noise.volts = random.hundredths(0.2, 0.6);
        noise.phase = random.between(20, 160);
    }
    return condition;
}

} // namespace demo
