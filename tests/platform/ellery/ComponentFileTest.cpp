#include <ellery/ComponentFile.h>
#include <gmock/gmock.h>
#include <QFile>
#include <QTemporaryDir>
#include <tarnwick/FileWriter.h>

using namespace Qt::StringLiterals;
using ellery::Axis;
using ellery::SteamGen;

namespace {

class ComponentFileTest : public testing::Test
{
protected:
    void SetUp() override
    {
        put(u"component.json"_s, "{\"format\":\"component\",\"name\":\"SGA\",\"landmark_sets\":[{\"number\":0},{"
                                 "\"number\":1,\"first_row\":21}]}");
        put(u"tubes.txt"_s, "y\tx\tcol\trow\tmaker's note\n0.5\t1\t2\t3\tabc\n1.5\t1\t2\t4\t\n");
    }
    void put(const QString &name, const QByteArray &content)
    {
        tarnwick::writeFileAtomically(dir.filePath(name), content);
    }
    /// "file:line: reason" of the failure to read.
    QString error()
    {
        try {
            ellery::readComponent(dir.path());
        } catch (const tarnwick::FileError &e) {
            return u"%1:%2: %3"_s.arg(QString(e.file()).remove(dir.path() + u'/')).arg(e.line()).arg(e.reason());
        }
        return u"no error"_s;
    }
    QTemporaryDir dir;
};

TEST_F(ComponentFileTest, SpreadsheetMinimumIsEnough)
{
    const SteamGen gen = ellery::readComponent(dir.path());
    ASSERT_EQ(gen.numTube(), 2);
    EXPECT_EQ(gen.findTube({0, 4, 2}), 1);
    EXPECT_FLOAT_EQ(gen[1].y, 1.5f);
    EXPECT_EQ(gen.modelName, u"SGA");
    EXPECT_FALSE(gen.hasSections());
    EXPECT_EQ(gen.uncountedTables, QStringList{u"tubes.txt"_s});
}

TEST_F(ComponentFileTest, WhatIsWrittenComesBack)
{
    SteamGen gen;
    gen.name = u"SGB"_s;
    gen.modelName = u"OT \"16\""_s;
    gen.triangular = true;
    gen.pitch = 0.875f;
    gen.axisNames[0] = u"LINE"_s;
    gen.labels[int(Axis::Sec)] = {QString(), u"North\tside"_s, u"#2"_s};
    gen.labels[int(Axis::Leg)] = {u"COLD"_s, u"HOT"_s, u"BEND"_s};
    ellery::Tube tube;
    tube.address = {1, 2, 3};
    tube.x = 0.1f;
    tube.y = -1e-3f;
    tube.periphery = true;
    gen.setTubes({tube});
    gen.stayRods = {{1.5f, -2.5f, 0}};
    ellery::LandmarkSet set;
    set.number = 4;
    set.bendLengthPerRow = 3.1416f;
    ellery::Landmark landmark;
    landmark.type = u"SUPPORT"_s;
    landmark.name = u"01H"_s;
    landmark.leg = -1;
    landmark.pos = 41.3f;
    landmark.firstRow = 3;
    landmark.forward = false;
    set.landmarks = {landmark};
    gen.landmarkSets = {set};

    ellery::writeComponent(gen, dir.path());
    const SteamGen again = ellery::readComponent(dir.path());
    EXPECT_EQ(again.modelName, gen.modelName);
    EXPECT_TRUE(again.triangular);
    EXPECT_EQ(again.pitch, gen.pitch);
    EXPECT_EQ(again.axisNames[0], u"LINE");
    EXPECT_EQ(again.labels[2], gen.labels[2]);
    EXPECT_EQ(again.labels[3], gen.labels[3]);
    EXPECT_EQ(again[0].x, 0.1f);
    EXPECT_EQ(again[0].y, -1e-3f);
    EXPECT_TRUE(again[0].periphery);
    EXPECT_EQ(again.stayRods.size(), 1);
    ASSERT_EQ(again.landmarkSets.size(), 1);
    EXPECT_EQ(again.landmarkSets[0].bendLengthPerRow, 3.1416f);
    const ellery::Landmark &back = again.landmarkSets[0][0];
    EXPECT_EQ(back.pos, 41.3f);
    EXPECT_EQ(back.leg, -1);
    EXPECT_EQ(back.firstRow, 3);
    EXPECT_FALSE(back.forward);

    EXPECT_TRUE(again.uncountedTables.isEmpty());

    for (const QString &name : {u"tubes.txt"_s, u"labels.txt"_s, u"landmarks.txt"_s, u"marks.txt"_s}) {
        const QByteArray whole = tarnwick::readFile(dir.filePath(name));
        for (qsizetype size = whole.size() - 1; size >= 0; --size) {
            ASSERT_TRUE(QFile::resize(dir.filePath(name), size));
            EXPECT_TRUE(error().startsWith(name)) << qPrintable(name) << " cut at " << size;
        }
        put(name, whole);
    }

    gen.stayRods.clear();
    ellery::writeComponent(gen, dir.path());
    EXPECT_FALSE(QFile::exists(dir.filePath(u"marks.txt"_s))) << "marks that are gone must not come back";
}

TEST_F(ComponentFileTest, WrongTubesAreNamedWithTheirLines)
{
    put(u"tubes.txt"_s, "row\tcol\tx\ty\n1\t1\t0\t0\n# note\n1\t2\t0\t0\n1\t1\t5\t5\n");
    EXPECT_EQ(error(), u"tubes.txt:5: The tube of section 0, row 1, column 1 occurs twice, in lines 2 and 5.");
    put(u"tubes.txt"_s, "row\tcol\tx\ty\n1000\t1\t0\t0\n");
    EXPECT_EQ(error(), u"tubes.txt:2: Column 'row': '1000' is not a whole number from 0 to 999.");
    put(u"tubes.txt"_s, "row\tcol\tx\ty\n1\t\t0\t0\n");
    EXPECT_EQ(error(), u"tubes.txt:2: Column 'col': '' is not a whole number from 0 to 999.");
    put(u"tubes.txt"_s, "row\tcol\tx\ty\n1\t1\t1e40\t0\n");
    EXPECT_EQ(error(), u"tubes.txt:2: Column 'x': '1e40' is too large.");
    put(u"tubes.txt"_s, "row\tcol\tx\ty\n");
    EXPECT_EQ(error(), u"tubes.txt:0: The file lists no tubes.");
    QFile::remove(dir.filePath(u"tubes.txt"_s));
    EXPECT_TRUE(error().startsWith(u"tubes.txt:0: "));
}

TEST_F(ComponentFileTest, WrongLabelsAndLandmarksAreNamedWithTheirLines)
{
    put(u"labels.txt"_s, "axis\tnumber\tlabel\nrow\t1\tA\nrow\t2\ta\n");
    EXPECT_EQ(error(), u"labels.txt:3: The row label 'a' occurs twice, in lines 2 and 3.");
    put(u"labels.txt"_s, "axis\tnumber\tlabel\ndepth\t1\tA\n");
    EXPECT_EQ(error(), u"labels.txt:2: Column 'axis': 'depth' is not one of row, col, sec, leg.");
    QFile::remove(dir.filePath(u"labels.txt"_s));
    put(u"landmarks.txt"_s, "set\ttype\tname\tpos\n0\tSUPPORT\t01H\t40\n1\tSUPPORT\t01H\t40\n1\tSUPPORT\t01h\t80\n");
    EXPECT_EQ(error(), u"landmarks.txt:4: Landmark '01h' occurs twice in set 1, in lines 3 and 4.");
    put(u"landmarks.txt"_s, "set\ttype\tname\tpos\n2\tSUPPORT\t01H\t40\n");
    EXPECT_EQ(error(), u"landmarks.txt:2: Column 'set': component.json has no landmark set 2.");
    put(u"landmarks.txt"_s, "type\tname\tpos\tleg\nSUPPORT\t01H\t40\t3\n");
    EXPECT_EQ(error(), u"landmarks.txt:2: Column 'leg': '3' is not a whole number from -1 to 2.");
    QFile::remove(dir.filePath(u"landmarks.txt"_s));
    put(u"component.json"_s, "{\"format\":\"component\",\"name\":\"SGA\",\"pitch\":{\"kind\":\"round\"}}");
    EXPECT_EQ(error(), u"component.json:0: Setting 'pitch.kind': \"square\" or \"triangular\" is needed.");
}

} // namespace
