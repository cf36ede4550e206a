#include <gtest/gtest.h>
#include <plans/storage/TubeGroups.h>
#include <plans/storage/TubeListFile.h>
#include <support/Printers.h>
#include <support/SampleSteamGen.h>

using namespace Qt::StringLiterals;

namespace plans {

namespace {

ellery::SteamGen withLabels()
{
    ellery::SteamGen component = sample::block(4, 5);
    component.labels[int(ellery::Axis::Row)] = {u"A"_s, u"B"_s, u""_s, u"D"_s};
    return component;
}

ellery::SteamGen withSections()
{
    ellery::SteamGen component;
    component.setTubes({{{0, 1, 1}, 0, 0, false}, {{0, 1, 2}, 1, 0, false}, {{1, 1, 2}, 2, 0, false}});
    component.labels[int(ellery::Axis::Sec)] = {u"W"_s, u"E"_s};
    return component;
}

/// "entry sec row col tube" of each line; "#" before a comment.
QString parsed(const ellery::SteamGen &component, const QByteArray &content, bool hasNumbers)
{
    const TubeListFile file(content, component, hasNumbers);
    QStringList lines;
    for (const ListFillLine &line : file.lines())
        lines.append(u"%1%2 %3 %4 %5 %6"_s.arg(line.isComment ? u"#"_s : QString())
                         .arg(line.entryNum)
                         .arg(line.sec)
                         .arg(line.row)
                         .arg(line.col)
                         .arg(line.tube));
    return u"%1 | %2"_s.arg(file.errorCount()).arg(lines.join(u", "_s));
}

} // namespace

TEST(TubeListTest, LinesAreParsedWithAndWithoutNumbersSectionsAndLabels)
{
    struct
    {
        ellery::SteamGen component;
        bool hasNumbers;
        const char *content;
        const char16_t *expected;
    } const cases[] = {
        {sample::block(4, 5), false, "1 2\n9 9\n 3\t4 5 6\n0 0", u"1 | 0 0 1 2 7, 1 0 9 9 -1, 1 0 3 4 19, 2 0 0 0 0"},
        {sample::block(4, 5), true, "7 1 2\r\nx 0 0\n# a\n!\n\n",
         u"1 | 7 0 1 2 7, 0 0 0 0 0, #0 0 -1 -1 -1, #0 0 -1 "
         u"-1 -1, 0 0 -1 -1 -1"},
        {sample::block(4, 5), true, "1 2\n", u"1 | 1 0 2 -1 -1"}, // the first word is the number
        {withLabels(), false,
         "b 2\n2 2\nD\x07"
         "4\n",
         u"1 | 0 0 1 2 7, 1 0 -1 2 -1, 1 0 3 4 19"},
        {withSections(), true, "5 e 1 2 3 4\n6 W 1 2\n7 1 1 2\n", u"1 | 5 1 1 2 2, 6 0 1 2 1, 7 -1 1 2 -1"},
    };
    for (const auto &test : cases)
        EXPECT_EQ(parsed(test.component, test.content, test.hasNumbers), QString::fromUtf16(test.expected));
    EXPECT_TRUE(TubeListFile::hasEntryNumbers(u"a/B.LST"_s, false));
    EXPECT_FALSE(TubeListFile::hasEntryNumbers(u"a.lst.txt"_s, false));
    EXPECT_TRUE(TubeListFile::hasEntryNumbers(u"a.txt"_s, true));
}

TEST(TubeListTest, LongLinesAreCutBetweenWords)
{
    const ellery::SteamGen component = sample::block(30, 30);
    for (const int length : {999, 1000, 100'000}) {
        // The column is the last word: "12" at the end of the line, cut to "1" where the line is too long by one.
        const QByteArray line = "3" + QByteArray(length - 3, ' ') + "12\n";
        const TubeListFile file(line + "4 5\n", component, false);
        EXPECT_EQ(file.lines().size(), 2);
        EXPECT_EQ(file.errorCount(), length > 999 ? 1 : 0);
        EXPECT_EQ(file.cutCount(), length > 999 ? 1 : 0);
        EXPECT_EQ(file.tubes().last().address(), (ellery::TubeAddress{0, 4, 5}));
    }
    const TubeListFile note("! " + QByteArray(5000, 'x') + "\n! y", component, false);
    EXPECT_EQ(note.notes(), QString(5000, u'x') + u"\ny\n") << "nothing of a note is lost";
    EXPECT_TRUE(note.isLastLineOpen());
    EXPECT_EQ(note.remarks().size(), 1);
}

TEST(TubeListTest, ReadingAndWritingGivesTheSameBytes)
{
    const auto time = tarnwick::JDateTime::fromLocal(2024, 5, 6, 7, 8, 9);
    for (const ellery::SteamGen &component : {sample::block(4, 5), withLabels(), withSections()}) {
        TubeList list;
        list.description = u"first\n\nthird,\twith \u00e4\n"_s;
        for (int i = 0; i < component.numTube(); ++i) {
            const ellery::TubeAddress &address = component[i].address;
            if (!component.tubeLabel(ellery::Axis::Row, address.row).isEmpty())
                list.entries.append({i * 70'000, address.row, address.col, address.sec, {}});
        }
        const QString text = tubeListText(list, u"tube_lists\\a.lst"_s, time, component);
        const TubeListFile file(text.toUtf8(), component, true);
        EXPECT_EQ(file.errorCount(), 0);
        EXPECT_EQ(file.tubes(), list.entries);
        EXPECT_EQ(file.notes(), u"first\n\nthird, with \u00e4\n") << "a tab of a description becomes a blank";
        list.entries = file.tubes();
        list.description = file.notes();
        EXPECT_EQ(tubeListText(list, u"tube_lists\\a.lst"_s, time, component), text);
    }
    const QString text =
        tubeListText({u"x"_s, {{3, 1, 2, 1, {}}, {4, 9, 2, 0, {}}}, {}}, u"x.lst"_s, time, withSections());
    EXPECT_EQ(text, u"# File x.lst\n# Date 05/06/2024 07:08:09\n# ENTRY  SEC  ROW  COL\n      3    E    1    2\n"
                    u"      4    W    9    2\n"_s);
    const ellery::SteamGen labels = withLabels();
    const QString unlabelled = tubeListText({u"x"_s, {{3, 2, 2, 0, {}}}, {}}, u"x.lst"_s, time, labels);
    EXPECT_EQ(TubeListFile(unlabelled.toUtf8(), labels, true).errorCount(), 1) << "never taken for another tube";
}

TEST(TubeListTest, PastedAddressesAndSetsOfTubes)
{
    const AddressText plain = parseAddresses(u"ROW\tCOL\n1\t2\n\nR2 C3\r\n3,4\n0 1 1\n99 1\n"_s, sample::block(4, 5));
    EXPECT_EQ(plain.tubes, (QList<ellery::TubeAddress>{{0, 1, 2}, {0, 2, 3}, {0, 3, 4}, {0, 1, 1}}));
    tarnwick::RecordingPrompts prompts;
    plain.report(prompts, 3);
    EXPECT_EQ(prompts.entries().last().text, u"Added 3 tubes; 1 were there already. 2 lines were not understood:\n"
                                             u"\tline 1: ROW COL\n\tline 7: 99 1\n");
    const AddressText labels = parseAddresses(u"d\t2\n2\t2"_s, withLabels());
    EXPECT_EQ(labels.tubes, (QList<ellery::TubeAddress>{{0, 3, 2}}));
    const AddressText sections = parseAddresses(u"E 1 2\n1 1\n1 2\n"_s, withSections());
    EXPECT_EQ(sections.tubes, (QList<ellery::TubeAddress>{{1, 1, 2}, {0, 1, 1}}));
    EXPECT_EQ(sections.notUnderstood.size(), 1) << "row and column of two sections";

    const QList<ellery::TubeAddress> own{{0, 1, 1}, {0, 2, 2}};
    EXPECT_EQ(missingFrom(own, {{0, 5, 5}, {0, 2, 2}, {0, 3, 3}, {0, 5, 5}}),
              (QList<ellery::TubeAddress>{{0, 5, 5}, {0, 3, 3}}));
    QList<ListFillTube> entries{{0, 1, 1, 0, {}}, {1, 2, 2, 0, {}}, {2, 1, 1, 0, {}}};
    EXPECT_EQ(removeTubes(entries, TubeGroup({{0, 1, 1}}), false), 1);
    EXPECT_EQ(removeTubes(entries, TubeGroup({{0, 1, 1}}), true), 2);
}

} // namespace plans
