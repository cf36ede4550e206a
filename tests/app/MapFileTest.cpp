#include "AppFixture.h"

#include <app/logic/ProjectSession.h>

#include <plans/PatternFill.h>
#include <plans/PcntFill.h>
#include <support/Damage.h>
#include <support/TemporaryFolder.h>
#include <tarnwick/FileWriter.h>

using namespace Qt::StringLiterals;
using Kind = tarnwick::RecordingPrompts::Entry::Kind;

namespace app {

using map::MapFile;
using map::MapHeader;

namespace {

constexpr int kTubes = 6;

void put(tarnwick::JFile &file, QString text)
{
    file.serialize(text);
}

void put(tarnwick::JFile &file, qint32 number)
{
    file.serialize(number);
}

void putHeader(tarnwick::JFile &file, int version)
{
    put(file, version);
    if (version >= 2)
        put(file, u"block name"_s);
    put(file, u"Upper [MAP NAME]"_s);
    put(file, u"Lower"_s);
    if (version < 2)
        return;
    put(file, u"Arial"_s);
    put(file, u"Courier New"_s);
    put(file, 18);
    put(file, 2'000'000'000);
    put(file, u"A. One"_s);
    put(file, u"B. Two"_s);
    put(file, u"Arial"_s);
    put(file, 6);
}

/// A random fill as each version of the map file stores it, with one index that no tube has.
void putEntry(tarnwick::JFile &file, int mapVersion, const QString &key)
{
    plans::PcntFill fill;
    fill.typeKey = key;
    fill.label = u"a sample"_s;
    fill.tubes = {1, 99, 3, -1};
    fill.parameters.percent = 35;
    put(file, mapVersion >= 3 ? 4 : 1);
    put(file, key);
    if (mapVersion >= 3) {
        fill.serialize(file, 4);
        return;
    }
    fill.MapFill::serialize(file, 1);
    put(file, u"not used"_s);
    put(file, 35);
}

/// A map file written by hand.
QByteArray mapOf(int version, int headerVersion = 2, const QString &key = u"RAND FILL"_s, int entries = 1)
{
    tarnwick::JFile file = tarnwick::JFile::forWriting({});
    file.header(u"MapFile"_s, 1);
    put(file, version);
    put(file, u"MODEL"_s);
    if (version == 2 || version == 3)
        put(file, u"old name"_s);
    if (version >= 4) {
        putHeader(file, headerVersion);
        put(file, 1);
        for (const auto *text : {u"S1", u"Site", u"1", u"SGA", u"Generator", u"MODEL", u"R12"})
            put(file, QString::fromUtf16(text));
    }
    if (version >= 5)
        put(file, u"what it is for"_s);
    put(file, entries);
    putEntry(file, version, key);
    return file.bytes();
}

MapFile read(const QByteArray &bytes)
{
    tarnwick::JFile file = tarnwick::JFile::fromBytes(bytes, u"test.map"_s);
    MapFile map;
    map.description = u"before"_s;
    map.read(file, kTubes);
    EXPECT_EQ(file.bytesLeft(), 0);
    return map;
}

} // namespace

TEST(MapFileTest, EveryVersionIsReadAndOlderOnesResetWhatTheyLack)
{
    for (int version = 1; version <= 5; ++version) {
        const MapFile map = read(mapOf(version));
        EXPECT_EQ(map.modelName, u"MODEL"_s) << version;
        EXPECT_EQ(map.header.name, version >= 4   ? u"block name"_s
                                   : version >= 2 ? u"old name"_s
                                                  : QString())
            << version;
        EXPECT_EQ(map.header.upperText, version >= 4 ? u"Upper [MAP NAME]"_s : QString()) << version;
        EXPECT_EQ(map.header.upperFont, version >= 4 ? u"Arial"_s : u"Times New Roman"_s) << version;
        EXPECT_EQ(map.outage, version >= 4 ? u"R12"_s : QString()) << version;
        EXPECT_EQ(map.description, version >= 5 ? u"what it is for"_s : QString()) << version;
        ASSERT_EQ(map.entries.size(), 1U) << version;
        EXPECT_EQ(map.entries[0]->tubes, (QList<qint32>{1, 3})) << version;
        EXPECT_EQ(static_cast<const plans::PcntFill &>(*map.entries[0]).parameters.percent, 35) << version;
    }
    EXPECT_THROW(read(mapOf(6)), tarnwick::JFileError);
    EXPECT_THROW(read(mapOf(0)), tarnwick::JFileError);
}

TEST(MapFileTest, HeaderBlocksOfVersionOneHoldTheTemplateTextsAlone)
{
    const MapFile old = read(mapOf(4, 1));
    EXPECT_EQ(old.header.lowerText, u"Lower"_s);
    EXPECT_TRUE(old.header.name.isEmpty() && old.header.preparedBy.isEmpty());
    EXPECT_EQ(old.header.footerFont, u"Times New Roman"_s);
    const MapFile map = read(mapOf(4, 2));
    EXPECT_EQ(map.header.upperSize, 18);
    EXPECT_EQ(map.header.lowerSize, MapHeader::kMostSize) << "a wild size is brought into range";
    EXPECT_EQ(map.header.preparedBy, u"A. One"_s);
    EXPECT_EQ(map.header.checkedBy, u"B. Two"_s);
    EXPECT_EQ(map.header.footerSize, 6);
}

TEST(MapFileTest, WritesVersionFiveWithTheDocumentedLayout)
{
    MapFile map = read(mapOf(5));
    map.header.lowerSize = 9;
    tarnwick::JFile file = tarnwick::JFile::forWriting({});
    map.write(file);
    const MapFile again = read(file.bytes());
    EXPECT_EQ(again.header, map.header);
    EXPECT_EQ(static_cast<const fenwright::SiteInfo &>(again), static_cast<const fenwright::SiteInfo &>(map));
    EXPECT_EQ(again.description, map.description);
    EXPECT_TRUE(again.entries[0]->isSameAs(*map.entries[0]));
    // Magic, identifier, header version, map version.
    EXPECT_EQ(file.bytes().left(23).toHex(), "78563412"
                                             "07000000"
                                             "4d617046696c65"
                                             "01000000"
                                             "05000000");
}

TEST(MapFileTest, CutShortOrDamagedAnywhereItNeverBreaksTheReader)
{
    for (int version = 1; version <= 5; ++version) {
        support::expectEveryTruncationThrows<tarnwick::JFileError>(mapOf(version), read);
        support::expectDamageIsSurvived<tarnwick::JFileError>(mapOf(version), [](const QByteArray &bytes) {
            tarnwick::JFile file = tarnwick::JFile::fromBytes(bytes, {});
            MapFile().read(file, kTubes);
        });
    }
}

namespace {

class MapDocumentTest : public AppTest
{
protected:
    MapDocumentTest()
    {
        EXPECT_TRUE(session.openProject(projectFolder()));
        said.clear();
    }

    QString stored(const QByteArray &bytes) const { return folder.write(u"a.map"_s, bytes); }
    QString picture()
    {
        QString text;
        for (int i = 0; i < 8; ++i)
            text += session.map().tubes().isOpen(i) ? u"."_s : session.map().tubes().symbol(i).text();
        return text;
    }
    void addFill(const QList<qint32> &tubes)
    {
        auto fill = std::make_unique<plans::PatternFill>();
        fill->tubes = tubes;
        session.map().change(u"Fill"_s, [&fill](map::MapEdit &edit) { edit.addEntry(std::move(fill), true); });
    }
    void setDescription(const QString &text)
    {
        session.map().change(u"Description"_s, [&text](map::MapEdit &edit) { edit.setDescription(text); });
    }
    void hideFirst()
    {
        session.map().change(u"Hide Entry"_s, [](map::MapEdit &edit) { edit.setShown(0, false); });
    }

    support::TemporaryFolder folder;
    ProjectSession session{said};
};

} // namespace

TEST_F(MapDocumentTest, AMapOfAnotherModelIsSaidAndReadAllTheSame)
{
    const QString path = stored(mapOf(5));
    ASSERT_TRUE(session.openMap(path));
    ASSERT_EQ(said.texts(Kind::Error).size(), 1);
    EXPECT_EQ(said.entries()[0].number, 1041);
    EXPECT_EQ(said.texts(Kind::Error)[0], u"Map was created using model 'MODEL.' but the current model is '%1'"_s.arg(
                                              session.project().steamGen.modelName));
    EXPECT_EQ(session.map().count(), 1);
    EXPECT_EQ(session.map().name(), u"a"_s);
    EXPECT_EQ(session.map().stored().site.outage, u"R12"_s);
    EXPECT_FALSE(session.map().storedAt().isNull());
    EXPECT_TRUE(mapInfoText(session.map()).contains(u" for S1 SGA R12\nMap notes : what it is for"_s));
    EXPECT_FALSE(session.map().isModified());
}

TEST_F(MapDocumentTest, AFileThatCannotBeReadLeavesTheMapAsItWas)
{
    addFill({0, 2});
    setHeaderText(session.map(), &MapHeader::upperText, u"mine"_s);
    setDescription(u"too"_s);
    const QByteArray whole = mapOf(5);
    const auto expectRefused = [&](const QByteArray &bytes, const char *what) {
        said.clear();
        EXPECT_FALSE(session.openMap(stored(bytes))) << what;
        ASSERT_EQ(said.entries().size(), 1) << what;
        EXPECT_EQ(said.entries()[0].number, 1039);
        EXPECT_TRUE(said.entries()[0].text.startsWith(u"Could not read map file.\n\n"_s)) << what;
        EXPECT_EQ(picture(), u"A.A....."_s) << what;
        EXPECT_EQ(session.map().header().upperText, u"mine"_s);
        EXPECT_EQ(session.map().description(), u"too"_s);
        EXPECT_TRUE(session.map().isModified());
        EXPECT_TRUE(session.map().file().isEmpty());
    };
    expectRefused(whole.left(whole.size() - 1), "cut short");
    expectRefused({}, "empty");
    expectRefused(whole + QByteArray(4, '\0'), "something follows: its count may have been damaged");
    expectRefused(mapOf(5, 2, u"RAND FILL"_s, 500'000'000), "wild count");
    expectRefused(mapOf(5, 2, u"SPIRAL"_s), "unknown kind");
    EXPECT_TRUE(said.entries()[0].text.contains(u"\"SPIRAL\""_s)) << "the entry is named";
    said.clear();
    EXPECT_FALSE(session.openMap(folder.path(u"none.map"_s)));
    EXPECT_EQ(said.entries()[0].number, 1039);
}

TEST_F(MapDocumentTest, StoresWithTheInspectionItBelongsToAndAFailureLeavesTheOldFile)
{
    addFill({1});
    setDescription(u"first"_s);
    const QString path = folder.path(u"b.map"_s);
    ASSERT_TRUE(session.saveMap(path));
    EXPECT_FALSE(session.map().isModified());
    EXPECT_EQ(session.map().stored().site.siteCode, session.project().site.siteCode);
    EXPECT_EQ(session.map().stored().site.outage, session.project().outageName());
    EXPECT_EQ(session.recentFiles().maps.value(0), session.map().file());
    const QByteArray before = folder.read(u"b.map"_s);

    addFill({2});
    said.clear();
    tarnwick::failWritesAfter(20);
    EXPECT_FALSE(session.saveMap(path));
    tarnwick::failWritesAfter(-1);
    EXPECT_TRUE(said.entries()[0].text.startsWith(u"Could not store map.\n\n"_s));
    EXPECT_TRUE(session.map().isModified());
    EXPECT_EQ(folder.read(u"b.map"_s), before);
    EXPECT_EQ(folder.names(), QStringList{u"b.map"_s});

    session.newMap();
    EXPECT_EQ(picture(), u"........"_s);
    EXPECT_TRUE(session.map().description().isEmpty() && session.map().file().isEmpty());
    ASSERT_TRUE(session.openMap(path));
    EXPECT_EQ(picture(), u".A......"_s);
    EXPECT_EQ(session.map().description(), u"first"_s);
}

TEST_F(MapDocumentTest, AChangeOfTheLegendEmptiesTheSignaturesAndUndoBringsThemBack)
{
    addFill({1});
    session.map().change(u"Set Map Header"_s, [](map::MapEdit &edit) {
        MapHeader header;
        header.preparedBy = u"A"_s;
        header.checkedBy = u"B"_s;
        header.upperText = u"stays"_s;
        edit.setHeader(header);
    });
    hideFirst();
    EXPECT_EQ(session.map().header().checkedBy, u"B"_s) << "what is shown is not what was checked";
    addFill({2});
    EXPECT_TRUE(session.map().header().preparedBy.isEmpty() && session.map().header().checkedBy.isEmpty());
    EXPECT_EQ(session.map().header().upperText, u"stays"_s);
    session.map().undo();
    EXPECT_EQ(session.map().header().preparedBy, u"A"_s);
    session.map().moveTo(1);
    EXPECT_TRUE(session.map().header().upperText.isEmpty());
    session.map().redo();
    EXPECT_EQ(session.map().header().checkedBy, u"B"_s);
}

TEST_F(MapDocumentTest, WhatNoFileHoldsDoesNotMakeTheMapModified)
{
    addFill({1});
    ASSERT_TRUE(session.saveMap(folder.path(u"c.map"_s)));
    selectTubes(session.map(), {3});
    EXPECT_TRUE(session.map().canUndo());
    EXPECT_FALSE(session.map().isModified());
    hideFirst();
    EXPECT_TRUE(session.map().isModified());
    session.map().undo();
    EXPECT_FALSE(session.map().isModified());
    session.map().moveTo(0);
    EXPECT_TRUE(session.map().isModified());
}

TEST_F(MapDocumentTest, HeaderFilesKeepTheTemplateWithoutSignatures)
{
    MapHeader header;
    header.upperText = u"Site [SITE CODE]"_s;
    header.lowerSize = 7;
    header.preparedBy = u"A"_s;
    map::writeHeaderFile(header, folder.path(u"plant.hdr"_s));
    const MapHeader again = map::readHeaderFile(folder.path(u"plant.hdr"_s));
    EXPECT_EQ(again.name, u"plant"_s);
    EXPECT_EQ(again.upperText, header.upperText);
    EXPECT_EQ(again.lowerSize, 7);
    EXPECT_TRUE(again.preparedBy.isEmpty());
    const QByteArray whole = folder.read(u"plant.hdr"_s);
    support::expectEveryTruncationThrows<tarnwick::FileError>(
        whole, [this](const QByteArray &bytes) { map::readHeaderFile(folder.write(u"cut.hdr"_s, bytes)); });
    EXPECT_THROW(map::readHeaderFile(folder.write(u"long.hdr"_s, whole + "x")), tarnwick::FileError);
}

} // namespace app
