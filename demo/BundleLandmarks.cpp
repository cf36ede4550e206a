#include "Bundle.h"

#include <numbers>

using namespace Qt::StringLiterals;
using ellery::Landmark;
using ellery::LandmarkSet;
using ellery::SteamGen;

namespace demo {

namespace {

constexpr int kOutlet = 0;
constexpr int kInlet = 1;
constexpr int kBend = 2;
constexpr float kTubesheet = 21; // thickness in inches
constexpr int kPlates = 7;
constexpr float kFirstPlate = 48; // above the tubesheet's lower face
constexpr float kPlateSpacing = 50;
constexpr float kStraight = kFirstPlate + kPlateSpacing * (kPlates - 1) + 12; // length of a leg below the bend
constexpr float kTightestBend = 1.9f;                                         // radius of row 1
constexpr float kBarAngles[] = {35, 75, 105, 145};
constexpr int kOnceThroughPlates = 15;
constexpr float kOnceThroughSpacing = 38;

class SetMaker
{
public:
    void add(const QString &type, const QString &name, int leg, float pos, bool forward = true, float angle = 0)
    {
        Landmark landmark;
        landmark.number = int(set.landmarks.size());
        landmark.type = type;
        landmark.name = name;
        landmark.leg = leg;
        landmark.pos = pos;
        landmark.forward = forward;
        landmark.angle = angle;
        set.landmarks.append(landmark);
    }
    LandmarkSet set;
};

QString numbered(int number, QChar letter)
{
    return u"%1%2"_s.arg(number, 2, 10, QLatin1Char('0')).arg(letter);
}

LandmarkSet bendSet(int number, int firstRow, int lastRow, bool bars, float bendGrowth)
{
    const float bend = float(std::numbers::pi) * kTightestBend;
    const float whole = 2 * kStraight + bend;
    SetMaker maker;
    maker.set.number = number;
    maker.set.firstRow = firstRow;
    maker.set.lastRow = lastRow;
    maker.set.bendLengthPerRow = bendGrowth;
    maker.add(u"TUBE END"_s, u"TEH"_s, kInlet, 0);
    maker.add(u"TUBESHEET"_s, u"TSH"_s, kInlet, kTubesheet);
    for (int plate = 1; plate <= kPlates; ++plate)
        maker.add(u"SUPPORT"_s, numbered(plate, u'H'), kInlet, kFirstPlate + kPlateSpacing * float(plate - 1));
    for (int bar = 0; bars && bar < int(std::size(kBarAngles)); ++bar)
        maker.add(u"AVB"_s, u"AV%1"_s.arg(bar + 1), kBend, kStraight + bend * kBarAngles[bar] / 180, true,
                  kBarAngles[bar]);
    // On the outlet leg offsets also count upwards, towards the bend.
    for (int plate = kPlates; plate >= 1; --plate)
        maker.add(u"SUPPORT"_s, numbered(plate, u'C'), kOutlet, whole - kFirstPlate - kPlateSpacing * float(plate - 1),
                  false);
    maker.add(u"TUBESHEET"_s, u"TSC"_s, kOutlet, whole - kTubesheet, false);
    maker.add(u"TUBE END"_s, u"TEC"_s, kOutlet, whole, false);
    return maker.set;
}

LandmarkSet straightSet()
{
    const float length = kOnceThroughSpacing * (kOnceThroughPlates + 1) + 2 * kTubesheet;
    SetMaker maker;
    // Offsets count upwards but the primary water flows down: the upper end is the inlet.
    maker.add(u"TUBE END"_s, u"UTE"_s, kInlet, 0, false);
    maker.add(u"TUBESHEET"_s, u"UTS"_s, kInlet, kTubesheet, false);
    for (int plate = kOnceThroughPlates; plate >= 1; --plate)
        maker.add(u"SUPPORT"_s, numbered(plate, u'S'), -1, length - kTubesheet - kOnceThroughSpacing * float(plate),
                  false);
    maker.add(u"TUBESHEET"_s, u"LTS"_s, kOutlet, length - kTubesheet, false);
    maker.add(u"TUBE END"_s, u"LTE"_s, kOutlet, length, false);
    return maker.set;
}

} // namespace

int firstRowWithBars(const SteamGen &gen)
{
    return std::max(2, gen.maxNumber(ellery::Axis::Row) / 4 + 1);
}

void addLandmarks(SteamGen &gen, Kind kind)
{
    if (kind == Kind::OnceThrough) {
        gen.landmarkSets = {straightSet()};
        return;
    }
    constexpr int kLastRow = 999;
    const float rowHeight = gen.pitch * (gen.triangular ? float(std::numbers::sqrt3 / 2) : 1);
    const float growth = float(std::numbers::pi) * rowHeight;
    const int bars = firstRowWithBars(gen);
    gen.landmarkSets = {bendSet(0, 0, bars - 1, false, growth), bendSet(1, bars, kLastRow, true, growth)};
}

} // namespace demo
