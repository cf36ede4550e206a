#include <conversion/ReportConvOptions.h>
#include <conversion/ReportConvSpec.h>
#include <support/Damage.h>
#include <support/Printers.h>
#include <support/TemporaryFolder.h>
#include <tarnwick/base/Error.h>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace conversion;

TEST(ReportConvSpecTest, MapsOperatorTypesExactlyElseToUpperCase)
{
    ReportConvSpec spec;
    EXPECT_EQ(spec.mapOperType(u"primary"_s), u"PRI"_s);
    EXPECT_EQ(spec.mapOperType(u"Primary"_s), u"PRIMARY"_s);
    EXPECT_EQ(spec.mapOperType(u"mid"_s), u"MID"_s);
    spec.operTypes.append({u"primary"_s, u"XXX"_s});
    spec.operTypes.append({QString(), u"NONE"_s});
    EXPECT_EQ(spec.mapOperType(u"primary"_s), u"PRI"_s);
    EXPECT_EQ(spec.mapOperType(QString()), u"NONE"_s);
}

namespace {

ReportConvSpec fullSpec()
{
    ReportConvSpec spec;
    spec.headerLines = 5;
    spec.layout = 1;
    spec.reportFields.resize(2);
    spec.reportFields[1] = {3, 0, u"é"_s, -1, 2147483647, u"12"_s, 7, tarnwick::ColourRef(0x00FF00)};
    spec.filenameFields = {{0, 1, {}, 3, 5, {}, 0, tarnwick::ColourRef(1)}};
    spec.commentFields = {{3, 0, u"Date:"_s, 0, 20, u"x"_s, 0, tarnwick::ColourRef(2)}};
    spec.operTypes = {{u"a"_s, u"b"_s}};
    spec.fileTypes = {{u"Text"_s, u"*.txt"_s}, {u"Listing"_s, u"*.lst"_s}};
    return spec;
}

} // namespace

TEST(ReportConvSpecTest, IsKeptAsFormatFile)
{
    const support::TemporaryFolder folder;
    const QString path = folder.path(u"report_formats/a.fmt"_s);
    fullSpec().storeTo(path);
    ReportConvSpec read;
    read.loadFrom(path);
    EXPECT_TRUE(read.sameSettings(fullSpec()));

    const QByteArray good = folder.read(u"report_formats/a.fmt"_s);
    const auto load = [&folder](const QByteArray &bytes) {
        ReportConvSpec spec;
        try {
            spec.loadFrom(folder.write(u"b.fmt"_s, bytes));
        } catch (...) {
            EXPECT_TRUE(spec.sameSettings(ReportConvSpec()));
            throw;
        }
    };
    support::expectEveryTruncationThrows<tarnwick::FileError>(good, load);
    support::expectDamageIsSurvived<tarnwick::FileError>(good, load);
}

TEST(ReportConvOptionsTest, AreKeptBetweenRuns)
{
    const support::TemporaryFolder folder;
    const tarnwick::PathRoots roots{folder.path(), {}};
    ReportConvOptions options;
    EXPECT_FALSE(options.load(roots));
    options.prompts.cal = 12;
    options.prompts.analyst = u"J7201"_s;
    options.prompts.dateTime = tarnwick::JDateTime::now();
    options.highlightFields = false;
    options.fileFilterIndex = 3;
    options.store(roots);
    ReportConvOptions read;
    EXPECT_TRUE(read.load(roots));
    EXPECT_EQ(read.prompts.cal, 12);
    EXPECT_EQ(read.prompts.analyst, u"J7201"_s);
    EXPECT_TRUE(read.prompts.dateTime.isNull());
    EXPECT_FALSE(read.highlightFields);
    EXPECT_EQ(read.fileFilterIndex, 3);
    EXPECT_EQ(read.printArgs, options.printArgs);
}
