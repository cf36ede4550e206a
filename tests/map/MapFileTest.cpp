#include "TestMap.h"

#include <map/MapFiles.h>

#include <plans/PatternFill.h>
#include <plans/PcntFill.h>
#include <support/Damage.h>
#include <support/TemporaryFolder.h>
#include <tarnwick/FileWriter.h>
#include <tarnwick/TemporaryName.h>

using namespace Qt::StringLiterals;
using Kind = tarnwick::RecordingPrompts::Entry::Kind;

namespace map {

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

class MapFilesTest : public testing::Test
{
protected:
    MapFilesTest()
    {
        host.record.folder = folder.path();
        host.record.steamGen.modelName = u"OWN"_s;
        host.record.site.siteCode = u"S7"_s;
    }
    bool open(const QByteArray &bytes) { return readMap(host.document, folder.write(u"a.map"_s, bytes), host.said); }
    void setHeaderText(const QString &text)
    {
        host.document.change(u"Header"_s, [&text](MapEdit &edit) {
            MapHeader header;
            header.upperText = text;
            edit.setHeader(header);
        });
    }

    support::TemporaryFolder folder;
    TestMap host{1, 8};
};

} // namespace

TEST_F(MapFilesTest, AFileThatCannotBeReadLeavesTheMapUnchanged)
{
    host.add(fixed({0, 2}));
    setHeaderText(u"mine"_s);
    const MapState before = host.document.state();
    const auto expectRefused = [&](const QByteArray &bytes, const char *what) {
        host.said.clear();
        EXPECT_FALSE(open(bytes)) << what;
        ASSERT_EQ(host.said.entries().size(), 1) << what;
        EXPECT_EQ(host.said.entries()[0].number, 1039);
        EXPECT_TRUE(host.said.entries()[0].text.startsWith(u"Could not read map file.\n\n"_s)) << what;
        EXPECT_TRUE(host.document.state() == before) << what;
        EXPECT_EQ(host.picture(), u"A.A....."_s) << what;
        EXPECT_TRUE(host.document.isModified());
        EXPECT_TRUE(host.document.file().isEmpty());
    };
    const QByteArray whole = mapOf(5);
    expectRefused(whole.left(whole.size() - 1), "cut short");
    expectRefused({}, "empty");
    expectRefused(whole + QByteArray(4, '\0'), "something follows: its count may have been damaged");
    expectRefused(mapOf(5, 2, u"RAND FILL"_s, 500'000'000), "count out of range");
    expectRefused(mapOf(5, 2, u"SPIRAL"_s), "unknown kind");
    EXPECT_TRUE(host.said.entries()[0].text.contains(u"\"SPIRAL\""_s)) << "the entry is named";
    host.said.clear();
    EXPECT_FALSE(readMap(host.document, folder.path(u"none.map"_s), host.said));
    EXPECT_EQ(host.said.entries()[0].number, 1039);
}

TEST_F(MapFilesTest, StoresTheInspectionAndAFailureLeavesTheOldFile)
{
    auto fill = std::make_unique<plans::PatternFill>();
    fill->tubes = {1};
    host.add(std::move(fill));
    setHeaderText(u"first"_s);
    const QString path = folder.path(u"b.map"_s);
    ASSERT_TRUE(storeMap(host.document, path, host.said));
    EXPECT_FALSE(host.document.isModified());
    EXPECT_EQ(host.document.stored().site.siteCode, u"S7"_s);
    const QByteArray before = folder.read(u"b.map"_s);

    host.add(fixed({2}));
    for (const auto &failing :
         {+[](int after) { tarnwick::failWritesAfter(after); }, +[](int) { tarnwick::failSyncs(true); }}) {
        host.said.clear();
        failing(20);
        EXPECT_FALSE(storeMap(host.document, path, host.said));
        tarnwick::failWritesAfter(-1);
        tarnwick::failSyncs(false);
        EXPECT_TRUE(host.said.entries().value(0).text.startsWith(u"Could not store map.\n\n"_s));
        EXPECT_TRUE(host.document.isModified());
        EXPECT_EQ(folder.read(u"b.map"_s), before);
        EXPECT_EQ(folder.names(), QStringList{u"b.map"_s});
    }

    host.document.clear();
    EXPECT_EQ(host.picture(), u"........"_s);
    EXPECT_TRUE(host.document.header().upperText.isEmpty() && host.document.file().isEmpty());
    ASSERT_TRUE(readMap(host.document, path, host.said));
    EXPECT_EQ(host.picture(), u".A......"_s);
    EXPECT_EQ(host.document.header().upperText, u"first"_s);
}

TEST_F(MapFilesTest, HeaderFilesKeepTheTemplateWithoutSignatures)
{
    MapHeader header;
    header.upperText = u"Site [SITE CODE]"_s;
    header.lowerSize = 7;
    header.preparedBy = u"A"_s;
    writeHeaderFile(header, folder.path(u"plant.hdr"_s));
    const MapHeader again = readHeaderFile(folder.path(u"plant.hdr"_s));
    EXPECT_EQ(again.name, u"plant"_s);
    EXPECT_EQ(again.upperText, header.upperText);
    EXPECT_EQ(again.lowerSize, 7);
    EXPECT_TRUE(again.preparedBy.isEmpty());
    const QByteArray whole = folder.read(u"plant.hdr"_s);
    support::expectEveryTruncationThrows<tarnwick::FileError>(
        whole, [this](const QByteArray &bytes) { readHeaderFile(folder.write(u"cut.hdr"_s, bytes)); });
    EXPECT_THROW(readHeaderFile(folder.write(u"long.hdr"_s, whole + "x")), tarnwick::FileError);
}

} // namespace map
