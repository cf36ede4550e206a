#include "AppFixture.h"

#include <app/logic/ComponentReload.h>
#include <app/logic/TubeFinder.h>

#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;

namespace app {

namespace {

/// Rows 1 to 12; row r has the columns r to 3 * r.
ellery::SteamGen wedge(int sections = 1)
{
    QList<ellery::Tube> tubes;
    for (int sec = 0; sec < sections; ++sec) {
        for (int row = 1; row <= 12; ++row) {
            for (int col = row; col <= 3 * row; ++col)
                tubes.append({{qint16(sec), qint16(row), qint16(col)}, float(col), float(row), false});
        }
    }
    ellery::SteamGen sg;
    sg.setTubes(tubes);
    return sg;
}

} // namespace

TEST(TubeFinderTest, CompletesRowsThenColumns)
{
    const ellery::SteamGen sg = wedge();
    const TubeFinder finder(sg);
    const QStringList rows{u"ROW 1 COL "_s, u"ROW 10 COL "_s, u"ROW 11 COL "_s, u"ROW 12 COL "_s};
    EXPECT_EQ(finder.completions(u"1", 100), rows);
    EXPECT_EQ(finder.completions(u"row 1", 100), rows);
    EXPECT_EQ(finder.completions(u"R1", 100), rows);
    const QStringList whole{u"ROW 12 COL 30"_s, u"ROW 12 COL 31"_s, u"ROW 12 COL 32"_s, u"ROW 12 COL 33"_s,
                            u"ROW 12 COL 34"_s, u"ROW 12 COL 35"_s, u"ROW 12 COL 36"_s};
    for (const QString &typed :
         {u"12 3"_s, u"ROW 12 COL 3"_s, u"r12 c3"_s, u"R12C3"_s, u"row12col3"_s, u"12,3"_s, u"12-3"_s})
        EXPECT_EQ(finder.completions(typed, 100), whole) << qPrintable(typed);
    EXPECT_EQ(finder.completions(u"12 ", 3), (QStringList{u"ROW 12 COL 12"_s, u"ROW 12 COL 13"_s, u"ROW 12 COL 14"_s}));
    EXPECT_EQ(finder.completions(u"R12C", 100).size(), 25);
    EXPECT_EQ(finder.completions(u"ROW 12 COL ", 100).size(), 25) << "a chosen beginning leads on";
    for (const QString &none : {QString(), u"  "_s, u"12 3 4"_s, u"99 "_s, u"x"_s})
        EXPECT_EQ(finder.completions(none, 100), QStringList()) << qPrintable(none);
    for (const QString &name : whole + QStringList{u"R12C30"_s, u"row12col 30"_s})
        EXPECT_GE(finder.find(name), 0) << qPrintable(name);
}

TEST(TubeFinderTest, TakesThePlantsLabelsAndSections)
{
    ellery::SteamGen sg = wedge(2);
    sg.labels[int(ellery::Axis::Sec)] = {u"HOT"_s, u"COLD"_s};
    const TubeFinder finder(sg);
    EXPECT_EQ(finder.completions(u"h", 9), QStringList{u"SEC HOT ROW "_s});
    EXPECT_EQ(finder.completions(u"cold 2 6", 9), QStringList{u"SEC COLD ROW 2 COL 6"_s});
    EXPECT_EQ(finder.hint(u"2 6"), u"Type its SEC and ROW and COL."_s);
    EXPECT_EQ(finder.hint(u"warm 2 6"), u"There is no SEC warm, only SEC HOT, COLD."_s);
}

TEST(TubeFinderTest, SaysWhyThereIsNoSuchTube)
{
    const ellery::SteamGen sg = wedge();
    const TubeFinder finder(sg);
    EXPECT_EQ(finder.hint(u"99 3"), u"There is no ROW 99, only ROW 1 to 12."_s);
    EXPECT_EQ(finder.hint(u"R4 C13"), u"ROW 4 has COL 4 to 12."_s);
    EXPECT_EQ(finder.hint(u"4"), u"Type its ROW and COL."_s);
    ellery::SteamGen staggered;
    QList<ellery::Tube> tubes;
    for (const int col : {1, 3, 5, 7, 9, 11})
        tubes.append({{0, 1, qint16(col)}, float(col), 1, false});
    staggered.setTubes(tubes);
    EXPECT_EQ(TubeFinder(staggered).hint(u"1 2"), u"ROW 1 has COL 1, 3 ... 11."_s);
    tubes.removeAt(2);
    tubes.append({{0, 1, 30}, 30, 1, false});
    staggered.setTubes(tubes);
    EXPECT_EQ(TubeFinder(staggered).hint(u"1 2"), u"ROW 1 has COL 1 to 30, with gaps."_s);
    const ellery::SteamGen none;
    EXPECT_EQ(TubeFinder(none).hint(u"1 1"), u"There is no ROW 1."_s);
    EXPECT_TRUE(TubeFinder(none).completions(u"1", 9).isEmpty());
}

} // namespace app
