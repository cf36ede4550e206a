#include "ConversionFixture.h"

#include <conversion/ConversionCheck.h>
#include <tarnwick/base/Progress.h>
#include <tarnwick/FileWriter.h>

using namespace Qt::StringLiterals;
using namespace conversion;
using brannock::Report;
using brannock::ReportEntry;
using tarnwick::Answer;
using tarnwick::RecordingPrompts;
using Type = ReportFieldType;

namespace {

// The layout of most tests: "sec row col rest".
constexpr std::tuple<Type, int, int> kSec{Type::Sec, 0, 0};
constexpr std::tuple<Type, int, int> kRow{Type::Row, 2, 3};
constexpr std::tuple<Type, int, int> kCol{Type::Col, 5, 6};

ConvField field(int type, int part, const QString &keyword, int first, int last)
{
    ConvField made;
    made.type = type;
    made.part = part;
    made.keyword = keyword;
    made.firstColumn = first;
    made.lastColumn = last;
    return made;
}

class StopsAtOnce : public tarnwick::Progress
{
public:
    void report(qint64, qint64, const QString &) override {}
    bool cancelled() override { return true; }
};

} // namespace

TEST_F(ConversionTest, EveryFieldFillsItsPartOfTheEntry)
{
    const QList<std::pair<Type, QString>> values{
        {Type::Sec, u"0"_s},         {Type::Row, u"12"_s},      {Type::Col, u"7"_s},
        {Type::Cal, u"12"_s},        {Type::Volts, u" 1.25"_s}, {Type::Phase, u"93"_s},
        {Type::Code, u"DNT"_s},      {Type::Channel, u"P 1"_s}, {Type::Extent, u"TEH TEC"_s},
        {Type::Operator, u"OP1"_s},  {Type::Util1, u"a"_s},     {Type::Location, u"TSH +0.50"_s},
        {Type::DataPoint, u"123"_s}, {Type::Util2, u"b"_s},     {Type::Skip, u"skip"_s},
        {Type::Comment, u"good"_s},  {Type::Analyst, u"J7"_s},  {Type::Filename, u"F42"_s},
        {Type::FileIndex, u"42"_s}};
    QString line;
    conversion.spec.reportFields.clear();
    for (const auto &[type, value] : values) {
        conversion.spec.reportFields.append(
            field(int(type), 0, {}, int(line.size()), int(line.size() + value.size()) - 1));
        line += value + u' ';
    }
    convert(line);
    const ReportEntry &entry = conversion.report()[0];
    EXPECT_TRUE(entry.isResult());
    EXPECT_EQ(QList<int>({entry.sec, entry.row, entry.col, entry.calNumber}), QList<int>({0, 12, 7, 12}));
    EXPECT_EQ(entry.meas.volts, 1.25);
    EXPECT_EQ(entry.meas.phase, 93);
    EXPECT_EQ(entry.meas.type, u"V"_s);
    EXPECT_EQ(entry.defect, u"DNT"_s);
    EXPECT_EQ(entry.channel, u"P1"_s);
    EXPECT_EQ(entry.endTest, u"TEC"_s);
    EXPECT_EQ(entry.operatorId, u"OP1"_s);
    EXPECT_EQ(entry.location.landmark, u"TSH"_s);
    EXPECT_EQ(entry.location.offset, 0.5F);
    EXPECT_EQ(entry.location.point, 123);
    EXPECT_EQ((QStringList{entry.util1, entry.util2, entry.comment}), (QStringList{u"a"_s, u"b"_s, u"good"_s}));
    EXPECT_EQ(entry.analystId, u"J7"_s);
    EXPECT_EQ(entry.fileName, u"F42"_s);
    EXPECT_EQ(entry.fileNumber, 42);
    EXPECT_TRUE(entry.entryTime.isNull());
    EXPECT_EQ(remarks(), QStringList());
}

TEST_F(ConversionTest, PercentsAreDepthsOrCodes)
{
    setFields({kSec, kRow, kCol, {Type::Volts, 8, 10}, {Type::Percent, 12, 14}});
    convert(u"0 12  7 1.5  42\n"
            "0 12  7 1.5 GEO\n"
            "0 12  7 1.5    \n"_s);
    const Report &report = conversion.report();
    EXPECT_EQ(report[0].meas.percent, 42);
    EXPECT_EQ(report[0].meas.type, u"V"_s); // a depth needs its volts
    EXPECT_EQ(report[0].defect, QString());
    EXPECT_EQ(report[1].meas.percent, 0);
    EXPECT_EQ(report[1].defect, u"GEO"_s);
    EXPECT_EQ(report[1].meas.type, QString()); // only a code field's code is looked up
    EXPECT_EQ(report[2].meas.percent, 0);
    EXPECT_EQ(report[2].meas.type, u"V"_s);
}

TEST_F(ConversionTest, MeasurementsNeedVoltsAndACodeThatWantsThem)
{
    setFields({kSec, kRow, kCol, {Type::Volts, 8, 10}, {Type::Code, 12, 14}});
    convert(u"0 12  7 1.5 NDD\n0 12  7 1.5 DNT\n"_s);
    EXPECT_EQ(conversion.report()[0].meas.type, QString());
    EXPECT_EQ(conversion.report()[1].meas.type, u"V"_s);
    setFields({kSec, kRow, kCol, {Type::Code, 12, 14}});
    convert(u"0 12  7 1.5 DNT\n"_s);
    EXPECT_EQ(conversion.report()[0].meas.type, QString());
}

TEST_F(ConversionTest, LaterFieldsOfATypeWin)
{
    setFields({kSec, kRow, kCol, {Type::Analyst, 8, 9}, {Type::Analyst, 11, 12}, {Type::OperType, 14, 20}});
    convert(u"0 12  7 AA BB primary\n"_s);
    EXPECT_EQ(conversion.report()[0].analystId, u"BB"_s);
    EXPECT_EQ(conversion.report()[0].operType, u"PRI"_s);
}

TEST_F(ConversionTest, ShortLinesTakeEarlierValues)
{
    setFields({kSec, kRow, kCol, {Type::Analyst, 8, 9}});
    convert(u"0 12  7 J7\n"
            "0 12  8 J\n"
            "0 13\n"_s);
    EXPECT_EQ(conversion.report()[1].analystId, u"J7"_s);
    EXPECT_EQ(conversion.report()[2].row, 13);
    EXPECT_EQ(conversion.report()[2].col, 8);
    const QStringList expected{u"2: too short; an earlier value is used for ANA \"J7\""_s,
                               u"3: too short; an earlier value is used for COL \"8\", ANA \"J7\""_s};
    EXPECT_EQ(remarks(), expected);
}

TEST_F(ConversionTest, LinesWithoutATubeAreHeaderLines)
{
    setFields({kSec, kRow, kCol});
    conversion.spec.headerLines = 1;
    convert(u"0 12  7 a header line whatever it holds\n"
            "\n"
            "- -- --\n"
            "0 12  7\n"
            "0 1O  7\n"
            "End of report "_s +
            QString(200, u'x') + u"\n"_s);
    QStringList kinds;
    for (const ReportEntry &entry : conversion.report().entries)
        kinds.append(entry.isHeader() ? entry.headerText.left(5) : u"result"_s);
    EXPECT_EQ(kinds, (QStringList{u"0 12 "_s, u"- -- "_s, u"result"_s, u"0 1O "_s, u"End o"_s}));
    EXPECT_EQ(conversion.report().entries.last().headerText.size(), brannock::ReportSchema::kHeaderColumns);
    // A rule and an ending have no tube; a mistyped number is worth a look.
    EXPECT_EQ(remarks(), QStringList{u"5: treated as a header line; not a number: ROW \"1O\""_s});
    Report &report = conversion.report();
    report.entries.removeFirst(); // an edit moves the entries
    EXPECT_EQ(ReportConversion::lineOfEntry(report, 1), 4);
    EXPECT_EQ(ReportConversion::entryOfLine(report, 4), 1);
    EXPECT_EQ(ReportConversion::entryOfLine(report, 2), -1);
    EXPECT_EQ(ReportConversion::lineOfEntry(report, 4), -1);
}

TEST_F(ConversionTest, WithoutASectionFieldEveryLineIsAHeader)
{
    setFields({kRow, kCol});
    for (const ReportEntry &entry : convert(u"0 12  7\n0 12  8\n"_s))
        EXPECT_TRUE(entry.isHeader());
}

TEST_F(ConversionTest, ColumnsAreReadByTheRowsLabels)
{
    project.steamGen.labels[int(ellery::Axis::Row)] = {QString(), u"A"_s, u"B"_s};
    project.steamGen.labels[int(ellery::Axis::Col)] = {u"B"_s, u"A"_s};
    setFields({kSec, kRow, kCol});
    convert(u"0  A  B\n"_s);
    EXPECT_EQ(conversion.report()[0].row, 1);
    EXPECT_EQ(conversion.report()[0].col, 2);
}

TEST_F(ConversionTest, DoubtfulValuesAreRemarkedOn)
{
    setFields({kSec, kRow, kCol, {Type::Volts, 8, 11}, {Type::Cal, 13, 17}, {Type::Percent, 19, 23}});
    convert(u"0 12 99 1,25    7x 99999\n"_s);
    const ReportEntry &entry = conversion.report()[0];
    EXPECT_EQ(entry.meas.volts, 1);
    EXPECT_EQ(entry.calNumber, 7);
    EXPECT_EQ(entry.meas.percent, 32767);
    const QStringList expected{u"1: VOLT \"1,25\" is not a number; 1 is used"_s,
                               u"1: CAL \"7x\" is not a whole number from -1 to 65535; 7 is used"_s,
                               u"1: % \"99999\" is not a whole number from 0 to 32767; 32767 is used"_s,
                               u"1: ROW 12 COL 99 does not exist in SGA"_s};
    EXPECT_EQ(remarks(), expected);
}

TEST_F(ConversionTest, NumbersOfALocationWithoutLandmarkAreRemarkedOn)
{
    setFields({kSec, kRow, kCol, {Type::Location, 8, 16}, {Type::DataPoint, 18, 20}});
    convert(u"0 12  7 TSH +1.25 123\n0 12  7           123\n0 12  7             0\n"_s);
    EXPECT_EQ(remarks(),
              QStringList{u"2: the location has no landmark; its offset 0 and data point 123 are not stored"_s});
}

TEST_F(ConversionTest, RemarksWithoutEndAreCountedOnly)
{
    setFields({kSec, kRow, kCol});
    convert(u"0 12 99\n"_s.repeated(Remarks::kMostKept + 5));
    EXPECT_EQ(conversion.remarks().kept().size(), Remarks::kMostKept);
    EXPECT_EQ(conversion.remarks().count(), Remarks::kMostKept + 5);
}

TEST_F(ConversionTest, CommaDelimitedLinesAreCutByNumber)
{
    conversion.spec.layout = qint32(FieldLayout::CommaDelimited);
    setFields({{Type::Sec, 0, 99}, {Type::Row, 1, 0}, {Type::Col, 2, 0}, {Type::Comment, 4, 0}, {Type::Util1, 9, 0}});
    convert(u"0,12,7,,\"dent, small\"\n0, 13 ,8\n"_s);
    EXPECT_EQ(conversion.report()[0].comment, u"dent, small"_s);
    EXPECT_EQ(conversion.report()[1].row, 13);
    EXPECT_EQ(conversion.report()[1].comment, u"dent, small"_s); // too few values: the earlier one stays
}

TEST_F(ConversionTest, PathAndHeaderLinesSetThePrompts)
{
    conversion.spec.filenameFields = {field(0, 1, {}, 3, 5), field(2, 0, {}, 0, 6), field(1, 2, {}, 0, 2)};
    conversion.spec.commentFields = {field(1, 0, u"Probe:"_s, 1, 3), field(2, 1, {}, 12, 14),
                                     field(3, 0, u"on"_s, 1, 19), field(0, 0, u"Cal"_s, 1, 3)};
    setFields({kSec, kRow, kCol});
    conversion.prompts.analyst = u"OLD"_s;
    convert(u"Probe: ABC\nbefore this ANA was on 09/05/2002 14:03:09 Cal 77\n0 12  7\n"_s, u"primary/CAL012.txt"_s);
    EXPECT_EQ(conversion.prompts.cal, 12);
    EXPECT_EQ(conversion.prompts.operType, u"PRI"_s);
    EXPECT_EQ(conversion.prompts.probe, u"ABC"_s);
    EXPECT_EQ(conversion.prompts.analyst, u"ANA"_s);
    EXPECT_EQ(conversion.prompts.dateTime, tarnwick::JDateTime::fromLocal(2002, 9, 5, 14, 3, 9));

    convert(u"was on the 5th of Sep\n"_s, u"primary/CAL012.txt"_s);
    EXPECT_EQ(conversion.prompts.dateTime, tarnwick::JDateTime::fromLocal(2002, 9, 5, 14, 3, 9));
    EXPECT_EQ(remarks(), QStringList{u"1: \"the 5th of Sep\" is not a date and time"_s});
}

TEST_F(ConversionTest, CalsOfFileNamesAreCheckedLikeThoseOfAPrompt)
{
    conversion.spec.filenameFields = {field(0, 1, {}, 0, 11)};
    setFields({kSec, kRow, kCol});
    for (const auto &[name, cal, hasRemark] :
         std::initializer_list<std::tuple<QString, int, bool>>{{u"012.txt"_s, 12, false},
                                                               {u"999.txt"_s, 999, false},
                                                               {u"13b.txt"_s, 13, true},
                                                               {u"0.txt"_s, 5, true},
                                                               {u"20020905.txt"_s, 5, true},
                                                               {u"999999999999.txt"_s, 5, true},
                                                               {u"cal.txt"_s, 5, true}}) {
        conversion.prompts.cal = 5;
        convert(u"0 12  7\n"_s, name);
        EXPECT_EQ(conversion.prompts.cal, cal) << qPrintable(name);
        EXPECT_EQ(remarks().size(), hasRemark ? 1 : 0) << qPrintable(name);
    }
    EXPECT_EQ(remarks(),
              QStringList{u"0: the cal \"cal\" of the file's path is not a whole number from 1 to 999; 5 is used"_s});
}

TEST_F(ConversionTest, ACheckFindsWhatStoringWouldDo)
{
    setFields({kSec, kRow, kCol, {Type::Code, 8, 10}});
    conversion.prompts.operatorId = u"OP"_s;
    ConversionCheck check(project);
    convert(u"0 12  7 NDD\n0 99  7 NDD\n0 13\n"_s);
    check.add(conversion, conversion.report());
    brannock::Report edited = conversion.report();
    edited.entries[1].row = 9;
    check.add(conversion, edited);
    check.addUnreadable(u"none.txt"_s, u"does not exist"_s);
    QStringList found;
    for (const brannock::FileOutcome &outcome : check.outcomes()) {
        for (const brannock::ReportProblem &problem : outcome.problems)
            found.append(u"%1/%2 %3 %4"_s.arg(problem.line).arg(problem.entry).arg(problem.field, problem.kind));
        found.append(u"stored %1 of %2"_s.arg(outcome.stored).arg(outcome.entries));
    }
    EXPECT_EQ(found, (QStringList{u"3/3  short line"_s, u"1/1 analyst_id missing analyst"_s, u"2/2 row unknown tube"_s,
                                  u"stored 3 of 3"_s, u"0/0  same report"_s, u"3/3  short line"_s,
                                  u"1/1 analyst_id missing analyst"_s, u"stored 3 of 3"_s, u"0/0  cannot be read"_s,
                                  u"stored 0 of 0"_s}));
    EXPECT_EQ(check.outcomes()[0].problems[1].text, u"The analyst is missing. (3 entries)");
    edited.entries.insert(1, 3, {});
    QList<int> entries;
    for (const int line : {0, 1, 2, 3, 4})
        entries.append(ReportConversion::entryOfLine(edited, line));
    EXPECT_EQ(entries, QList<int>({-1, 0, 4, 5, -1}));
}

TEST_F(ConversionTest, StoreFillsWhatIsMissing)
{
    setFields({kSec, kRow, kCol, {Type::Analyst, 8, 9}, {Type::Cal, 11, 12}});
    conversion.spec.headerLines = 1;
    convert(u"HEADER\n0 12  7 J7  5\n0 12  8    -1\n"_s);
    conversion.prompts = {12, 0, 0, u"ANA"_s, u"OPR"_s, u"BOBBIN"_s, u"SN1"_s, u"S/C"_s, {}};
    conversion.prompts.dateTime = tarnwick::JDateTime::fromLocal(2002, 9, 5);
    RecordingPrompts user;
    EXPECT_EQ(conversion.store(user), StoreResult::Stored);
    EXPECT_EQ(user.lastStatus(), u"Stored \"reports\\00012_S_C.rep\"'"_s);

    Report stored;
    stored.loadReport(folder.path(u"project/reports/00012_S_C.rep"_s));
    ASSERT_EQ(stored.numEntry(), 3);
    EXPECT_TRUE(stored[0].isHeader());
    EXPECT_EQ(stored[0].headerText, u"HEADER"_s);
    EXPECT_EQ(stored[1].calNumber, 5);
    EXPECT_EQ(stored[1].analystId, u"J7"_s);
    const ReportEntry &entry = stored[2];
    EXPECT_EQ(entry.calNumber, 12);
    EXPECT_EQ((QStringList{entry.analystId, entry.operatorId, entry.operType, entry.probe.type,
                           entry.probe.serialNumber, entry.site.siteCode, entry.site.compCode, entry.outage}),
              (QStringList{u"ANA"_s, u"OPR"_s, u"S/C"_s, u"BOBBIN"_s, u"SN1"_s, u"KLM"_s, u"SGA"_s, u"2002R"_s}));
    EXPECT_EQ(entry.entryTime, tarnwick::JDateTime::fromLocal(2002, 9, 5));
    EXPECT_EQ(entry.leg, ReportEntry().leg); // the prompt's leg reaches no entry
}

TEST_F(ConversionTest, StoreAsksBeforeItOverwrites)
{
    setFields({kSec, kRow, kCol});
    convert(u"0 12  7\n"_s);
    RecordingPrompts user;
    conversion.store(user);
    const QString file = u"project/reports/00001_PRI.rep"_s;
    const QByteArray first = folder.read(file);

    convert(u"0 12  8\n"_s);
    for (const Answer answer : {Answer::No, Answer::Cancel}) {
        user.answerWith({answer});
        EXPECT_EQ(conversion.store(user), StoreResult::Declined);
        EXPECT_EQ(folder.read(file), first);
        EXPECT_EQ(conversion.report()[0].calNumber, -1);
    }
    EXPECT_EQ(user.texts(RecordingPrompts::Entry::Kind::Question).first(),
              u"Report \"reports\\00001_PRI.rep\" already exists.\nDo you wish to overwrite it?"_s);
    user.answerWith({Answer::Yes});
    tarnwick::failWritesAfter(10);
    EXPECT_THROW(conversion.store(user), tarnwick::FileError);
    tarnwick::failWritesAfter(-1);
    EXPECT_EQ(folder.read(file), first);
    user.answerWith({Answer::Yes});
    EXPECT_EQ(conversion.store(user), StoreResult::Stored);
    EXPECT_NE(folder.read(file), first);
}

TEST_F(ConversionTest, WhatCannotBeReadLeavesTheReportAsItWas)
{
    setFields({kSec, kRow, kCol});
    convert(u"0 12  7\n"_s);
    conversion.spec.filenameFields = {field(0, 1, {}, 0, 2)};
    conversion.prompts.cal = 3;
    EXPECT_THROW(conversion.convertFile(folder.path(u"missing.txt"_s)), tarnwick::FileError);
    EXPECT_THROW(conversion.convertFile(folder.write(u"999.txt"_s, QByteArray(8, '\0'))), tarnwick::FileError);
    StopsAtOnce progress;
    EXPECT_THROW(conversion.convertFile(folder.writeText(u"999.txt"_s, u"0 12  9\n"_s), &progress),
                 tarnwick::Cancelled);
    EXPECT_EQ(conversion.prompts.cal, 3);
    EXPECT_EQ(conversion.report().numEntry(), 1);
    EXPECT_EQ(conversion.report()[0].col, 7);
    EXPECT_EQ(conversion.spec.reportFields[2].value, u"7"_s);
}
