#include "ConversionFixture.h"

#include <tarnwick/FileWriter.h>
#include <tarnwick/Format.h>

using namespace Qt::StringLiterals;
using namespace conversion;
using brannock::ReportEntry;

namespace {

QString shown(const brannock::TubeLoc &place)
{
    if (!place.isValid())
        return u"-"_s;
    return tarnwick::format(u"%S%+.2f", place.landmark, double(place.offset));
}

QString shown(const ReportEntry &entry)
{
    if (entry.isHeader())
        return u"# "_s + entry.headerText.trimmed().left(60);
    const brannock::Meas &meas = entry.meas;
    return tarnwick::format(u"%d/%d/%d cal %d [%S] %.2fV %.0fdeg %d%% ", entry.sec, entry.row, entry.col,
                            entry.calNumber, meas.type, meas.volts, meas.phase, meas.percent) +
           tarnwick::format(u"%S ch %S at %S from %S to %S test %S-%S ", entry.defect, entry.channel,
                            shown(entry.location), shown(entry.from), shown(entry.to), entry.beginTest, entry.endTest) +
           tarnwick::format(u"by %S %S probe %S/%S file %S %d on %t", entry.analystId, entry.operType, entry.probe.type,
                            entry.probe.serialNumber, entry.fileName, entry.fileNumber, entry.entryTime);
}

} // namespace

// A text as an analysis program prints it, with page heads, a short line, a mistyped row and a total, by a spec that
// reads its path and head. The expected lines stand beside it.
TEST_F(ConversionTest, AWholeReportIsConvertedAsExpected)
{
    ReportConvSpec &spec = conversion.spec;
    spec.resetToDefaults();
    const auto add = [](QList<ConvField> &list, int type, int part, const QString &keyword, int first, int last) {
        ConvField field;
        field.type = type;
        field.part = part;
        field.keyword = keyword;
        field.firstColumn = first;
        field.lastColumn = last;
        list.append(field);
    };
    add(spec.filenameFields, int(FilenameFieldType::Cal), int(FilenamePart::Filename), {}, 8, 9);
    add(spec.filenameFields, int(FilenameFieldType::OperType), int(FilenamePart::Filename), {}, 0, 6);
    add(spec.commentFields, int(CommentFieldType::Probe), int(CommentPart::Keyword), u"PROBE:"_s, 1, 11);
    add(spec.commentFields, int(CommentFieldType::DateTime), int(CommentPart::Keyword), u"ANALYST: J7201"_s, 2, 20);
    spec.storeTo(folder.path(u"project/report_formats/default.fmt"_s));

    ReportConversion run(project);
    run.spec.loadFrom(folder.path(u"project/report_formats/default.fmt"_s));
    run.prompts.serialNumber = u"4711"_s;
    const QString data = QStringLiteral(ARVO_TEST_DATA "/data/");
    run.convertFile(data + u"primary_12.txt"_s);
    tarnwick::RecordingPrompts user;
    run.store(user);
    EXPECT_EQ(user.lastStatus(), u"Stored \"reports\\00012_PRI.rep\"'"_s);

    brannock::Report stored;
    stored.loadReport(folder.path(u"project/reports/00012_PRI.rep"_s));
    QStringList lines;
    for (const ReportEntry &entry : stored.entries)
        lines.append(shown(entry));
    for (const Remark &remark : run.remarks().kept())
        lines.append(u"remark on line %1: %2"_s.arg(remark.line).arg(remark.text));
    const QString expected = QString::fromUtf8(tarnwick::readFile(data + u"primary_12.expected"_s));
    EXPECT_EQ(lines, expected.split(u'\n', Qt::SkipEmptyParts));
}
