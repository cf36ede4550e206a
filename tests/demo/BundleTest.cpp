#include <demo/Bundle.h>
#include <gmock/gmock.h>
#include <QSet>

using namespace Qt::StringLiterals;
using demo::DemoOptions;
using demo::Kind;
using ellery::Axis;
using ellery::SteamGen;
using ellery::Tube;

namespace {

/// One line a row: number, tubes, first and last column. For people who look at a failure.
std::string rowLengths(const SteamGen &gen)
{
    std::string text;
    for (int row = 1; row <= gen.maxNumber(Axis::Row); ++row) {
        int count = 0, first = 0, last = 0;
        for (const Tube &tube : gen.tubes()) {
            if (tube.address.row != row)
                continue;
            first = count == 0 ? tube.address.col : std::min<int>(first, tube.address.col);
            last = std::max<int>(last, tube.address.col);
            ++count;
        }
        text += u"row %1: %2 tubes, columns %3 to %4\n"_s.arg(row).arg(count).arg(first).arg(last).toStdString();
    }
    return text;
}

/// Tubes closer together than the pitch, and tubes whose mirror image at the middle line is missing.
std::pair<int, int> faults(const SteamGen &gen)
{
    const auto place = [&](float x, float y) {
        return std::pair(qRound(x / gen.pitch * 8), qRound(y / gen.pitch * 8));
    };
    QSet<std::pair<int, int>> places;
    for (const Tube &tube : gen.tubes())
        places.insert(place(tube.x, tube.y));
    int close = int(gen.numTube() - places.size());
    int alone = 0;
    for (const Tube &tube : gen.tubes()) {
        alone += places.contains(place(-tube.x, tube.y)) ? 0 : 1;
        // Offsets below one pitch: half pitches beside, half pitches above.
        for (const auto &[dx, dy] : {std::pair(0.5f, 0.f), std::pair(0.f, 0.5f), std::pair(0.5f, 0.5f)})
            close += places.contains(place(tube.x + dx * gen.pitch, tube.y + dy * gen.pitch)) ? 1 : 0;
    }
    return {close, alone};
}

TEST(BundleTest, DefaultIsAHalfRoundBundleOf46RowsAnd94Columns)
{
    const SteamGen gen = demo::makeBundle(DemoOptions());
    SCOPED_TRACE(rowLengths(gen));
    EXPECT_EQ(gen.maxNumber(Axis::Row), 46);
    EXPECT_EQ(gen.maxNumber(Axis::Col), 94);
    EXPECT_NEAR(gen.numTube(), 3400, 50);
    EXPECT_FALSE(gen.hasSections());
    EXPECT_EQ(faults(gen), std::pair(0, 0));
    EXPECT_GE(gen.stayRods.size(), 16);
    EXPECT_EQ(gen.stayRods.size() % 2, 0);
    // Every column begins at row 1 and grows towards the middle; the edge is a line, not an area.
    int periphery = 0;
    for (int col = 1; col <= 94; ++col)
        EXPECT_GE(gen.findTube(ellery::TubeAddress::of(0, 1, col)), 0) << col;
    for (const Tube &tube : gen.tubes()) {
        EXPECT_GT(tube.y, 0);
        periphery += tube.periphery ? 1 : 0;
    }
    EXPECT_GT(periphery, 90);
    EXPECT_LT(periphery, 220);
    EXPECT_FALSE(gen[gen.findTube({0, 1, 47})].periphery) << "the divider lane is no edge";
    EXPECT_TRUE(gen[gen.findTube({0, 46, 47})].periphery);
}

TEST(BundleTest, AskedNumberOfTubesIsMetInEveryShape)
{
    for (const int tubes : {10, 37, 800, 3388, 16000}) {
        for (const bool triangular : {false, true}) {
            DemoOptions options;
            options.tubes = tubes;
            options.triangular = triangular;
            const SteamGen gen = demo::makeBundle(options);
            SCOPED_TRACE(tubes < 1000 ? rowLengths(gen) : std::string());
            EXPECT_LE(gen.numTube(), tubes);
            EXPECT_GE(gen.numTube(), tubes - 1);
            EXPECT_EQ(faults(gen), std::pair(0, 0)) << tubes << triangular;
            EXPECT_GE(gen.findTube({0, 1, 1}) + gen.findTube({0, 1, 2}), -1) << "numbering begins at 1";
        }
    }
}

TEST(BundleTest, OnceThroughIsRoundAndItsSectionsCountTheirOwnColumns)
{
    for (const int sections : {2, 4, 5}) {
        DemoOptions options;
        options.kind = Kind::OnceThrough;
        options.tubes = 5000;
        options.sections = sections;
        const SteamGen gen = demo::makeBundle(options);
        EXPECT_GE(gen.numTube(), 4999);
        EXPECT_TRUE(gen.triangular);
        EXPECT_EQ(faults(gen), std::pair(0, 0));
        EXPECT_EQ(gen.numSection(), sections + 1);
        EXPECT_EQ(gen.tubeLabel(Axis::Sec, 0), QString());
        EXPECT_EQ(gen.stringToSec(u"b"), 2);
        QHash<int, int> counts;
        float highest = 0, lowest = 0, right = 0;
        for (int i = 0; i < gen.numTube(); ++i) {
            const Tube &tube = gen[i];
            ASSERT_EQ(gen.findTube(tube.address), i) << "addresses are unique";
            ++counts[tube.address.sec];
            highest = std::max(highest, tube.y);
            lowest = std::min(lowest, tube.y);
            right = std::max(right, tube.x);
        }
        for (int section = 1; section <= sections; ++section)
            EXPECT_NEAR(counts[section], gen.numTube() / sections, gen.numTube() / 30);
        EXPECT_NEAR(highest, -lowest, 0.01);
        EXPECT_NEAR(highest, right, 2 * gen.pitch);
    }
}

TEST(BundleTest, LandmarksFollowTheTubeFromEndToEnd)
{
    for (const Kind kind : {Kind::Recirculating, Kind::OnceThrough}) {
        DemoOptions options;
        options.kind = kind;
        options.tubes = 500;
        SteamGen gen = demo::makeBundle(options);
        demo::addLandmarks(gen, kind);
        for (int tube = 0; tube < gen.numTube(); ++tube) {
            const ellery::LandmarkSet *set = gen.getLandmarkSet(tube);
            ASSERT_NE(set, nullptr);
            float before = -1;
            for (const ellery::Landmark &landmark : set->landmarks) {
                const float pos = landmark.posFor(gen[tube], set->bendLengthPerRow);
                ASSERT_GT(pos, before) << landmark.name.toStdString();
                before = pos;
            }
            const bool hasBars = kind == Kind::Recirculating && gen[tube].address.row >= demo::firstRowWithBars(gen);
            ASSERT_EQ(set->find(u"AV1") >= 0, hasBars);
        }
    }
}

} // namespace
