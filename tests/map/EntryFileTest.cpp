#include "TestMap.h"

#include <map/MapUpdate.h>
#include <plans/BoxFill.h>
#include <plans/ListFill.h>
#include <plans/PatternFill.h>
#include <plans/PcntFill.h>
#include <plans/QueryFill.h>
#include <support/Damage.h>
#include <support/Marks.h>

using namespace Qt::StringLiterals;

namespace map {

namespace {

constexpr int kTubes = 6;

/// One entry of each kind, nothing at its default.
Entries everyKind()
{
    Entries entries;
    for (const plans::MapFillType *type : plans::MapFillType::all()) {
        std::shared_ptr<plans::MapFill> fill = type->create();
        fill->mark = markOf(u'µ', 0x00A0B0C0);
        fill->label = u"Größe "_s + type->name;
        fill->tubes = {3, 1, 2};
        fill->fillCount = 17;
        fill->allSections = true;
        if (auto *random = dynamic_cast<plans::PcntFill *>(fill.get()))
            random->parameters = {33, 44, {1, 2}, false, false, 4000000000U};
        if (auto *query = dynamic_cast<plans::QueryFill *>(fill.get())) {
            query->parameters.query.name = u"queries\\worn.qry"_s;
            query->parameters.query.sql = u"SELECT row, col FROM report"_s;
        }
        if (auto *list = dynamic_cast<plans::ListFill *>(fill.get()))
            list->parameters = {u"a.lst"_s, {{1, 2, 3, 0, markOf(u'x', 9)}, {2, 3, 4, 0, markOf(u'y', 8)}}, u"notes"_s};
        if (auto *box = dynamic_cast<plans::BoxFill *>(fill.get()))
            box->parameters.radius = 2.75;
        if (auto *pattern = dynamic_cast<plans::PatternFill *>(fill.get())) {
            pattern->parameters = {{1, 1}, 5, 6, true, true, 7, 8};
            pattern->shown = false;
        }
        entries.push_back(fill);
    }
    return entries;
}

QByteArray written(const Entries &entries)
{
    tarnwick::JFile file = tarnwick::JFile::forWriting(u"test.map"_s);
    writeEntries(file, entries);
    return file.bytes();
}

Entries read(const QByteArray &bytes)
{
    tarnwick::JFile file = tarnwick::JFile::fromBytes(bytes, u"test.map"_s);
    return readEntries(file, kTubes);
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
    plans::PatternFill fill;
    fill.tubes = {0, 2};
    fill.fillCount = 9;
    fill.allSections = true;
    fill.serialize(file, version);
    return file.bytes();
}

} // namespace

TEST(EntryFileTest, EveryKindComesBackAsItWas)
{
    const Entries entries = everyKind();
    const Entries again = read(written(entries));
    ASSERT_EQ(again.size(), 5u);
    for (size_t i = 0; i < again.size(); ++i)
        EXPECT_TRUE(isSame(again[i], entries[i])) << i;
}

TEST(EntryFileTest, OlderEntriesLeaveTheNewerFieldsAtTheirDefaults)
{
    const Entries four = read(patternEntry(4));
    EXPECT_EQ(four[0]->fillCount, 9);
    EXPECT_TRUE(four[0]->allSections);
    const Entries three = read(patternEntry(3));
    EXPECT_EQ(three[0]->fillCount, 9);
    EXPECT_FALSE(three[0]->allSections);
    const Entries two = read(patternEntry(2));
    EXPECT_EQ(two[0]->fillCount, 0);
    EXPECT_EQ(two[0]->tubes, (QList<qint32>{0, 2}));
    EXPECT_THROW(read(patternEntry(5)), tarnwick::JFileError);
}

TEST(EntryFileTest, AnEntryWithoutASymbolGetsOneAndLosesTubesThatDoNotExist)
{
    const auto fill = std::make_shared<plans::PatternFill>();
    fill->tubes = {-1, 1, kTubes, 5, 70000};
    fill->mark.symbol = {};
    const Entries again = read(written({fill}));
    EXPECT_EQ(again[0]->mark.symbol, ellery::Symbol(u'A'));
    EXPECT_EQ(again[0]->tubes, (QList<qint32>{1, 5}));
}

TEST(EntryFileTest, OldMapsKeepPercentagesAndQueries)
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

    tarnwick::JFile in = tarnwick::JFile::fromBytes(file.bytes(), u"old.map"_s);
    const Entries entries = readOldEntries(in, kTubes);
    EXPECT_EQ(in.bytesLeft(), 0);
    ASSERT_EQ(entries.size(), 3u);
    EXPECT_EQ(static_cast<const plans::PcntFill &>(*entries[0]).parameters.percent, 35);
    EXPECT_EQ(entries[0]->tubes, QList<qint32>{1});
    EXPECT_EQ(static_cast<const plans::QueryFill &>(*entries[1]).parameters.oldText, u"SELECT 1"_s);
    EXPECT_EQ(static_cast<const plans::QueryFill &>(*entries[2]).parameters.query.name, u"queries\\b.qry"_s);
}

/// Flipped bits may make other entries or an error, but never more memory than the file can fill, and no crash.
TEST(EntryFileTest, CutShortOrDamagedAnywhereItNeverBreaksTheReader)
{
    const QByteArray whole = written(everyKind());
    support::expectEveryTruncationThrows<tarnwick::JFileError>(whole, read);
    support::expectDamageIsSurvived<tarnwick::JFileError>(whole, [](const QByteArray &bytes) {
        TestMap host(2, 3);
        MapFile file;
        file.entries = read(bytes);
        host.document.setContent(file, {}, {});
        MapUpdate(host.document, host.runner).run(nullptr);
    });
}

} // namespace map
