#include "ConversionFixture.h"

#include <conversion/FieldCutter.h>
#include <conversion/FieldMarks.h>
#include <conversion/LineResult.h>
#include <conversion/SpecPrint.h>
#include <conversion/SpecTables.h>

#include <array>
#include <cmath>

using namespace Qt::StringLiterals;
using namespace conversion;
using tarnwick::ColourRef;
using Type = ReportFieldType;

namespace {

using Row = std::array<double, 3>;

Row times(const std::array<Row, 3> &matrix, const Row &v)
{
    Row product{};
    for (size_t i = 0; i < 3; ++i)
        product[i] = matrix[i][0] * v[0] + matrix[i][1] * v[1] + matrix[i][2] * v[2];
    return product;
}

// CIE 1976 lightness and colour of linear RGB.
Row lab(const Row &rgb)
{
    const Row xyz = times({{{0.4339, 0.3762, 0.1899}, {0.2126, 0.7152, 0.0722}, {0.0177, 0.1095, 0.8728}}}, rgb);
    const auto f = [](double t) { return t > 0.008856 ? std::cbrt(t) : 7.787 * t + 16.0 / 116; };
    return {116 * f(xyz[1]) - 16, 500 * (f(xyz[0]) - f(xyz[1])), 200 * (f(xyz[1]) - f(xyz[2]))};
}

// Least difference of two colours for usual eyes and the three kinds of colour blindness.
double difference(ColourRef a, ColourRef b)
{
    static const std::array<std::array<Row, 3>, 4> eyes{
        {{{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}},
         {{{0.152, 1.053, -0.205}, {0.115, 0.786, 0.099}, {-0.004, -0.048, 1.052}}},
         {{{0.367, 0.861, -0.228}, {0.280, 0.673, 0.047}, {-0.012, 0.043, 0.969}}},
         {{{1.256, -0.077, -0.179}, {-0.078, 0.931, 0.148}, {0.005, 0.691, 0.304}}}}};
    const auto linear = [](ColourRef colour) {
        const auto one = [](int c) { return std::pow(c / 255.0, 2.2); };
        return Row{one(colour.red()), one(colour.green()), one(colour.blue())};
    };
    double least = 1000;
    for (const auto &eye : eyes) {
        Row x = lab(times(eye, linear(a)));
        const Row y = lab(times(eye, linear(b)));
        least = std::min(least, std::hypot(x[0] - y[0], x[1] - y[1], x[2] - y[2]));
    }
    return least;
}

} // namespace

TEST(SpecEditTest, DefaultColoursOfNeighboursDifferForAllEyes)
{
    ReportConvSpec spec;
    setDefaultColours(spec);
    for (int i = 1; i < spec.reportFields.size(); ++i) {
        EXPECT_GT(difference(spec.reportFields[i - 1].colour, spec.reportFields[i].colour), 15) << i;
        EXPECT_NE(spec.reportFields[i].colour, ConvField::kDefaultColour);
    }
}

TEST_F(ConversionTest, MarksShowWhatIsCut)
{
    ReportConvSpec spec;
    spec.headerLines = 1;
    spec.reportFields.resize(2);
    spec.commentFields.emplaceBack().keyword = u"Probe:"_s;
    spec.commentFields.last().type = int(CommentFieldType::Probe);
    spec.commentFields.last().firstColumn = 1;
    spec.commentFields.last().lastColumn = 3;
    const auto shown = [this, &spec](int number, QStringView line) {
        QStringList marks;
        for (const FieldMark &mark : FieldMarks(spec, project.steamGen).of(number, line))
            marks.append(u"%1 %2-%3"_s.arg(mark.keyword).arg(mark.first).arg(mark.last));
        return marks.join(u", "_s);
    };
    EXPECT_EQ(shown(1, u"A Probe: XYZ"), u"Probe 9-11");
    EXPECT_EQ(shown(1, u"no such text"), QString());
    EXPECT_EQ(shown(2, u"  0   1"), u"SEC 0-2, ROW 4-6");
    EXPECT_EQ(shown(2, u"SEC ROW  Probe: XYZ"), u"Probe 16-18") << "a line without a tube is a header line";
    EXPECT_EQ(shown(2, u"  0"), u"SEC 0-2, ROW 4-6") << "its row is that of an earlier line";
    spec.layout = int(FieldLayout::CommaDelimited);
    spec.reportFields[1].firstColumn = 2;
    EXPECT_EQ(shown(2, u"0,\"a,b\", 12"), u"SEC 0-0, ROW 8-10");
    EXPECT_EQ(valueAt(u"0,\"a,b\", 12", 9), 2);
    EXPECT_EQ(valueAt(u"0,\"a,b\", 12", 99), 2);
}

TEST_F(ConversionTest, FieldsAreEditedAsATable)
{
    ReportConvSpec spec;
    spec.reportFields.resize(2);
    tarnwick::RecordingPrompts said;
    FieldTable table(spec, FieldTable::List::Report, said);
    int changes = 0;
    table.changed = [&changes] { ++changes; };
    table.setExtraRows(2);
    const auto row = [&table](int number) {
        QStringList texts;
        for (int column = 0; column < table.columnCount(); ++column)
            texts.append(table.text(number, column));
        return texts.join(u' ');
    };
    EXPECT_EQ(row(1), u"Tube Row 4 6 #F0F0F0");
    EXPECT_TRUE(table.setText(1, 1, u"8"_s)); // a field that is moved keeps its width
    EXPECT_TRUE(table.setText(1, 0, u"Tube Col"_s) && table.setText(1, 3, u"#77aadd"_s));
    EXPECT_EQ(row(1), u"Tube Col 8 10 #77AADD");
    for (const auto &[column, text] : {std::pair(1, u"-1"_s), {1, u"x"_s}, {2, u"7"_s}, {3, u"blue"_s}})
        EXPECT_FALSE(table.setText(1, column, text));
    EXPECT_EQ(said.entries().size(), 4);
    EXPECT_EQ(row(1), u"Tube Col 8 10 #77AADD");

    EXPECT_EQ(table.rowCount(), 4);
    EXPECT_FALSE(table.whyNotEditable(3, 0).isEmpty());
    EXPECT_TRUE(table.setText(2, 0, u"Code"_s));
    EXPECT_TRUE(table.deleteRow(0) && table.insertRow(1));
    EXPECT_EQ(table.rowCount(), 4);
    EXPECT_EQ((QStringList{row(0), row(1), row(2), row(3)}),
              (QStringList{u"Tube Col 8 10 #77AADD"_s, u"Skip 0 0 #F0F0F0"_s, u"Code 0 0 #F0F0F0"_s, u"   "_s}));
    EXPECT_EQ(changes, 6);
    spec.layout = int(FieldLayout::CommaDelimited);
    EXPECT_EQ(table.column(1).title, u"VALUE");
    EXPECT_FALSE(table.whyNotEditable(0, 2).isEmpty());
}

TEST_F(ConversionTest, TheResultOfALineIsShownFieldByField)
{
    setFields(
        {{Type::Sec, 0, 0}, {Type::Row, 2, 3}, {Type::Col, 5, 6}, {Type::Percent, 8, 10}, {Type::Location, 12, 20}});
    conversion.spec.headerLines = 1;
    LineResult result;
    const auto shown = [&](int number, QStringView line) {
        result.convert(project, conversion.spec, number, line);
        QStringList rows;
        for (int row = 0; row < result.rowCount(); ++row)
            rows.append(result.lineText(row).isEmpty()
                            ? u"%1=%2:%3"_s.arg(result.text(row, 0), result.text(row, 1), result.text(row, 2))
                            : result.lineText(row));
        return rows;
    };
    EXPECT_EQ(shown(2, u"0 12  7 GEO TSH +1.25"),
              (QStringList{u"Tube Sec=0:0"_s, u"Tube Row=12:12"_s, u"Tube Col=7:7"_s, u"Percent=GEO:GEO"_s,
                           u"Location=TSH +1.25:TSH +1.25"_s}));
    EXPECT_EQ(shown(2, u"0 12  7 GEO").last(), u"too short; an earlier value is used for LOC \"\"");
    EXPECT_EQ(shown(1, u"0 12  7 GEO"), QStringList{u"A header line."_s});
    EXPECT_EQ(shown(2, u"").size(), 1);
}

TEST_F(ConversionTest, ASpecIsPrintedWithAllItsSettings)
{
    ReportConvSpec spec;
    spec.reportFields.resize(1);
    spec.reportFields[0].type = 99;
    spec.filenameFields.append(ConvField());
    spec.operTypes.resize(1);
    EXPECT_EQ(specAsText(spec, u"quill"_s),
              u"OPTIONS\n\nHeader Lines: 3\nField Type: Fixed Fields\n\nquill Report Fields\n\n"
              "  1  Field type 99        0-2    \n\nquill Filename Fields\n\n"
              "  1  Cal              Directory      0-0    \n\nquill Keyword Fields\n\n\nquill Operator Types\n\n"
              "PRI      primary\n"_s);
}
