#include "TestHost.h"

#include <plans/BoxFill.h>
#include <plans/ListFill.h>
#include <plans/PatternFill.h>
#include <plans/PcntFill.h>
#include <plans/QueryFill.h>

using namespace Qt::StringLiterals;

namespace plans {

namespace {

/// One entry of each kind, nothing at its default.
void fillLegend(MapLegend &legend)
{
    for (const MapFillType *type : MapFillType::all()) {
        auto fill = type->create();
        fill->symbol = u'µ';
        fill->colour = 0x00A0B0C0;
        fill->label = u"Größe "_s + type->name;
        fill->tubes = {3, 1, 2};
        fill->fillCount = 17;
        fill->allSections = true;
        legend.addEntry(std::move(fill), true);
    }
    static_cast<PcntFill &>(legend.entry(0)).parameters = {33, 44, {1, 2}, false, false, 4000000000U};
    auto &query = static_cast<QueryFill &>(legend.entry(1)).parameters.query;
    query.name = u"queries\\worn.qry"_s;
    query.sql = u"SELECT row, col FROM report"_s;
    static_cast<ListFill &>(legend.entry(2)).parameters = {
        u"a.lst"_s, {{1, 2, 3, 0, u'x', 9}, {2, 3, 4, 0, u'y', 8}}, u"notes"_s};
    static_cast<BoxFill &>(legend.entry(3)).parameters.radius = 2.75;
    static_cast<PatternFill &>(legend.entry(4)).parameters = {{1, 1}, 5, 6, true, true, 7, 8};
    legend.setShown(4, false);
}

QByteArray written(MapLegend &legend)
{
    tarnwick::JFile file = tarnwick::JFile::forWriting(u"test.map"_s);
    legend.serialize(file);
    return file.bytes();
}

void read(MapLegend &legend, const QByteArray &bytes)
{
    tarnwick::JFile file = tarnwick::JFile::fromBytes(bytes, u"test.map"_s);
    legend.serialize(file);
}

/// An entry of an older version, written by hand.
QByteArray patternEntry(int version)
{
    tarnwick::JFile file = tarnwick::JFile::forWriting(u"old.map"_s);
    file.count(1, 1);
    qint32 number = version;
    file.serialize(number);
    QString key = u"PATTERN"_s;
    file.serialize(key);
    PatternFill fill;
    fill.tubes = {0, 2};
    fill.fillCount = 9;
    fill.allSections = true;
    fill.serialize(file, version);
    return file.bytes();
}

} // namespace

TEST(LegendFile, EveryKindComesBackAsItWas)
{
    TestHost host(2, 3);
    fillLegend(host.entries);
    TestHost other(2, 3);
    read(other.entries, written(host.entries));
    ASSERT_EQ(other.entries.count(), 5);
    for (int i = 0; i < 5; ++i)
        EXPECT_TRUE(other.entries.entry(i).isSameAs(host.entries.entry(i))) << i;
    EXPECT_EQ(other.picture(), host.picture());
}

TEST(LegendFile, OlderEntriesLeaveTheNewerFieldsAtTheirDefaults)
{
    TestHost host(1, 3);
    read(host.entries, patternEntry(4));
    EXPECT_EQ(host.entries.entry(0).fillCount, 9);
    EXPECT_TRUE(host.entries.entry(0).allSections);
    read(host.entries, patternEntry(3));
    EXPECT_EQ(host.entries.entry(0).fillCount, 9);
    EXPECT_FALSE(host.entries.entry(0).allSections);
    read(host.entries, patternEntry(2));
    EXPECT_EQ(host.entries.entry(0).fillCount, 0);
    EXPECT_EQ(host.entries.entry(0).tubes, (QList<qint32>{0, 2}));
    EXPECT_THROW(read(host.entries, patternEntry(5)), tarnwick::JFileError);
}

TEST(LegendFile, AnEntryWithoutASymbolGetsOne)
{
    TestHost host(1, 3);
    auto fill = std::make_unique<PatternFill>();
    fill->tubes = {1};
    fill->symbol = 0;
    host.entries.addEntry(std::move(fill), false);
    TestHost other(1, 3);
    read(other.entries, written(host.entries));
    EXPECT_EQ(other.picture(), u".A."_s);
    EXPECT_EQ(other.entries.entry(0).paintedCount, 1);
}

TEST(LegendFile, OldMapsKeepPercentagesAndQueries)
{
    tarnwick::JFile file = tarnwick::JFile::forWriting(u"old.map"_s);
    file.count(3, 1);
    const auto common = [&file](QString key) {
        qint32 version = 1;
        qint32 shown = 1;
        char16_t symbol = u'K';
        quint32 colour = 7;
        QString label = u"old"_s;
        QList<qint32> tubes{1, 99};
        QString unused = u"unused"_s;
        file.serialize(version);
        file.serialize(key);
        file.serialize(shown);
        file.serialize(symbol);
        file.serialize(colour);
        file.serialize(label);
        file.serialize(tubes);
        file.serialize(unused);
    };
    common(u"RAND FILL"_s);
    qint32 percent = 35;
    file.serialize(percent);
    common(u"QUERY"_s);
    file.version(1);
    for (QString text : {u"a"_s, u"SELECT 1"_s, u"c"_s})
        file.serialize(text);
    common(u"QUERY"_s);
    file.version(2);
    query::QueryDocument document;
    document.name = u"queries\\b.qry"_s;
    document.serialize(file);
    QList<qint32> record{1, 2, 3};
    file.count(1, 12);
    for (qint32 &value : record)
        file.serialize(value);

    TestHost host(1, 3);
    tarnwick::JFile in = tarnwick::JFile::fromBytes(file.bytes(), u"old.map"_s);
    host.entries.readOldFormat(in);
    EXPECT_EQ(in.bytesLeft(), 0);
    ASSERT_EQ(host.entries.count(), 3);
    EXPECT_EQ(static_cast<PcntFill &>(host.entries.entry(0)).parameters.percent, 35);
    EXPECT_EQ(host.entries.entry(0).tubes, QList<qint32>{1});
    EXPECT_EQ(static_cast<QueryFill &>(host.entries.entry(1)).parameters.oldText, u"SELECT 1"_s);
    EXPECT_EQ(static_cast<QueryFill &>(host.entries.entry(2)).parameters.query.name, u"queries\\b.qry"_s);
}

TEST(LegendFile, KindsWithoutAnOldFormatRefuseByName)
{
    TestHost host;
    BoxFill box;
    tarnwick::JFile file = tarnwick::JFile::fromBytes({}, u"old.map"_s);
    try {
        box.readOldFormat(file);
        FAIL();
    } catch (const tarnwick::JFileError &error) {
        EXPECT_TRUE(error.reason().startsWith(u"BoxFill::readOldFormat not implemented"_s));
    }
}

TEST(LegendFile, UnknownKindIsNamedAndTheLegendStaysAsItWas)
{
    TestHost host(2, 3);
    host.entries.addEntry(fixed({0, 1}), true);
    TestHost other(2, 3);
    fillLegend(other.entries);
    other.entries.entry(3).typeKey = u"SPIRAL"_s;
    try {
        read(host.entries, written(other.entries));
        FAIL();
    } catch (const tarnwick::JFileError &error) {
        EXPECT_TRUE(error.reason().contains(u"\"SPIRAL\""_s)) << error.what();
    }
    EXPECT_EQ(host.entries.count(), 1);
    EXPECT_EQ(host.picture(), u"AA...."_s);
}

TEST(LegendFile, CutShortAtAnyByteIsRefusedAndChangesNothing)
{
    TestHost host(2, 3);
    fillLegend(host.entries);
    const QByteArray whole = written(host.entries);
    TestHost other(2, 3);
    other.entries.addEntry(fixed({5}), true);
    for (qsizetype length = 0; length < whole.size(); ++length) {
        EXPECT_THROW(read(other.entries, whole.left(length)), tarnwick::JFileError) << length;
        ASSERT_EQ(other.entries.count(), 1);
    }
    EXPECT_EQ(other.picture(), u".....A"_s);
}

/// Flipped bits may make another legend or an error, but never more memory than the file can fill, and no crash.
TEST(LegendFile, DamagedBytesNeverBreakTheReader)
{
    TestHost host(2, 3);
    fillLegend(host.entries);
    const QByteArray whole = written(host.entries);
    for (qsizetype place = 0; place < whole.size(); ++place) {
        for (const char value : {char(0xFF), char(0x7F), char(0x80)}) {
            QByteArray damaged = whole;
            damaged[place] = value;
            TestHost other(2, 3);
            try {
                read(other.entries, damaged);
                other.entries.updateAll(other);
                EXPECT_EQ(other.entries.dropInvalidTubes(), 0);
            } catch (const tarnwick::JFileError &) {
                EXPECT_EQ(other.entries.count(), 0);
            }
        }
    }
}

} // namespace plans
