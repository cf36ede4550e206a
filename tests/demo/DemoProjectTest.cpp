#include <brannock/InspPlan.h>
#include <brannock/Project.h>
#include <brannock/Report.h>
#include <conversion/ReportConversion.h>
#include <demo/DemoProject.h>
#include <gmock/gmock.h>
#include <numeric>
#include <QCryptographicHash>
#include <QDir>
#include <QDirIterator>
#include <QSet>
#include <QTemporaryDir>
#include <tarnwick/FileWriter.h>
#include <tarnwick/Prompts.h>

using namespace Qt::StringLiterals;
using brannock::Project;
using brannock::Report;
using brannock::ReportEntry;
using demo::DemoOptions;

namespace {

QStringList filesIn(const QString &folder)
{
    QStringList files;
    QDirIterator it(folder, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext())
        files.append(it.next());
    files.sort();
    return files;
}

QByteArray fingerprint(const QString &folder)
{
    QCryptographicHash hash(QCryptographicHash::Sha1);
    for (const QString &file : filesIn(folder)) {
        hash.addData(QDir(folder).relativeFilePath(file).toUtf8());
        hash.addData(tarnwick::readFile(file));
    }
    return hash.result();
}

/// A project and all results of it: those of the report files, and those that its texts convert to.
struct Made
{
    explicit Made(const DemoOptions &options)
    {
        demo::makeProject(options, folder);
        project = Project::load(folder);
        for (const QString &path : filesIn(folder + u"/reports")) {
            Report report;
            report.loadReport(path);
            add(report, earlier);
        }
        convert(u"foreign"_s, u"default.fmt"_s, bobbin);
        convert(u"foreign2"_s, u"quillmark.fmt"_s, rotating);
    }
    void convert(const QString &texts, const QString &specFile, QList<ReportEntry> &into)
    {
        conversion::ReportConversion conversion(project);
        conversion.spec.loadFrom(folder + u"/report_formats/" + specFile);
        for (const QString &path : filesIn(folder + u'/' + texts)) {
            conversion.convertFile(path);
            EXPECT_TRUE(conversion.remarks().isEmpty()) << conversion.remarks().kept().first().toString().toStdString();
            tarnwick::RecordingPrompts prompts;
            EXPECT_EQ(conversion.store(prompts), conversion::StoreResult::Stored) << "targets differ from file to file";
            Report report;
            report.loadReport(project.pathOf(conversion.target().text()));
            add(report, into);
        }
    }
    static void add(const Report &report, QList<ReportEntry> &into)
    {
        for (const ReportEntry &entry : report.entries) {
            if (entry.isResult())
                into.append(entry);
        }
    }
    QList<ReportEntry> all() const { return earlier + bobbin + rotating; }

    QTemporaryDir dir;
    QString folder = dir.filePath(u"demo"_s);
    Project project;
    QList<ReportEntry> earlier;
    QList<ReportEntry> bobbin;
    QList<ReportEntry> rotating;
};

DemoOptions small(demo::Kind kind = demo::Kind::Recirculating)
{
    DemoOptions options;
    options.kind = kind;
    options.tubes = 800;
    options.entries = 6000;
    return options;
}

class DemoProjectTest : public testing::TestWithParam<demo::Kind>
{
};

TEST_P(DemoProjectTest, EveryResultIsWhatAnUploadNeeds)
{
    const Made made(small(GetParam()));
    EXPECT_EQ(made.all().size(), 6000) << "the asked number, texts of the present outage included";
    EXPECT_GT(made.rotating.size(), 100);
    EXPECT_GT(made.bobbin.size(), 1000);
    QSet<QString> outages;
    for (const ReportEntry &e : made.all()) {
        const int tube = made.project.steamGen.findTube(e.address());
        ASSERT_GE(tube, 0) << e.sec << ' ' << e.row << ' ' << e.col;
        ASSERT_EQ(e.site.siteCode, u"S1");
        ASSERT_EQ(e.site.compCode, u"SGA");
        ASSERT_TRUE(e.operType == u"PRI" || e.operType == u"SEC" || e.operType == u"RES") << e.operType.toStdString();
        ASSERT_GT(e.calNumber, 0);
        ASSERT_GT(e.fileNumber, 0);
        ASSERT_TRUE(e.analystId.startsWith(u'A')) << e.fileName.toStdString();
        ASSERT_TRUE(e.operatorId.startsWith(u'A'));
        ASSERT_FALSE(e.entryTime.isNull());
        ASSERT_FALSE(e.defect.isEmpty());
        ASSERT_FALSE(e.probe.type.isEmpty());
        ASSERT_LE(e.meas.percent, 100);
        for (const brannock::TubeLoc &place : {e.location, e.from, e.to}) {
            if (place.isValid()) {
                ASSERT_GE(made.project.steamGen.getLandmarkSet(tube)->find(place.landmark), 0)
                    << place.landmark.toStdString();
            }
        }
        if (e.isNdd() || e.defect == u"PLG") {
            ASSERT_TRUE(!e.location.isValid() && !e.meas.isValid());
        } else {
            ASSERT_TRUE(e.location.isValid() || e.from.isValid()) << e.defect.toStdString();
        }
        if (e.meas.isValid()) {
            ASSERT_GT(e.meas.volts, 0);
        }
        outages.insert(e.outage);
    }
    EXPECT_EQ(outages, (QSet<QString>{u"R10"_s, u"R11"_s, u"R12"_s}));
    // The present outage's times come from the header lines, in US form, and lie in the outage's month.
    for (const ReportEntry &e : made.bobbin + made.rotating)
        ASSERT_EQ(e.entryTime.toString(u"%m/%Y"), made.project.outageDate().toString(u"%m/%Y"));
}

INSTANTIATE_TEST_SUITE_P(Kinds, DemoProjectTest, testing::Values(demo::Kind::Recirculating, demo::Kind::OnceThrough),
                         [](const auto &kind) {
                             return kind.param == demo::Kind::OnceThrough ? "OnceThrough" : "Recirculating";
                         });

TEST(DemoSharesTest, CodesAndDepthsArePlausible)
{
    DemoOptions options;
    options.entries = 20000;
    const Made made(options);
    QHash<QString, int> codes;
    using Place = std::tuple<int, int, QString, QString>;
    std::map<Place, std::map<QString, int>> depths; // of the resolution with the bobbin, by outage
    for (const ReportEntry &e : made.all()) {
        ++codes[e.defect];
        if (e.operType == u"RES" && e.probe.type == u"BOBBIN" && (e.defect == u"WAR" || e.defect == u"PCT"))
            depths[{e.row, e.col, e.location.landmark, e.defect}][e.outage] = e.meas.percent;
    }
    const auto share = [&](std::initializer_list<QStringView> names) {
        int sum = 0;
        for (const QStringView name : names)
            sum += codes.value(name.toString());
        return sum / 20000.0;
    };
    EXPECT_NEAR(share({u"NDD"}), 0.72, 0.12);
    EXPECT_NEAR(share({u"WAR"}), 0.12, 0.07);
    EXPECT_NEAR(share({u"SAI", u"MAI", u"SCI", u"MCI"}), 0.005, 0.0047);

    // Wear grows on the whole, but its readings scatter, as those of real probes do.
    QList<int> growths;
    for (const auto &[place, byOutage] : depths)
        for (auto it = byOutage.begin(); it != byOutage.end() && std::next(it) != byOutage.end(); ++it)
            growths.append(std::next(it)->second - it->second);
    EXPECT_GT(growths.size(), 100) << "most wear is seen again in the next outage";
    EXPECT_NEAR(std::accumulate(growths.begin(), growths.end(), 0.0) / double(growths.size()), 3.5, 1);
    const auto shrunk = std::count_if(growths.begin(), growths.end(), [](int growth) { return growth < 0; });
    EXPECT_NEAR(double(shrunk) / double(growths.size()), 0.07, 0.06);
}

TEST(DemoFilesTest, SameSeedSameBytesAnotherSeedOtherBytes)
{
    const QTemporaryDir dir;
    DemoOptions options = small();
    options.entries = 2000;
    demo::makeProject(options, dir.filePath(u"a"_s));
    demo::makeProject(options, dir.filePath(u"b"_s));
    EXPECT_EQ(fingerprint(dir.filePath(u"a"_s)), fingerprint(dir.filePath(u"b"_s)));
    options.seed = 2;
    demo::makeProject(options, dir.filePath(u"c"_s));
    EXPECT_NE(fingerprint(dir.filePath(u"a"_s)), fingerprint(dir.filePath(u"c"_s)));
}

TEST(DemoFilesTest, PlansListsAndQueriesCanBeUsed)
{
    const QTemporaryDir dir;
    const QString folder = dir.filePath(u"demo"_s);
    demo::makeProject(small(demo::Kind::OnceThrough), folder);
    const Project project = Project::load(folder);
    brannock::InspPlan plan;
    plan.loadPlan(project.pathOf(u"plans\\Bobbin full length.pln"_s));
    EXPECT_GT(plan.entries.size(), 700);
    EXPECT_GE(project.steamGen.findTube(plan.entries.last().address()), 0);
    int named = 0;
    for (const QString &line :
         QString::fromUtf8(tarnwick::readFile(folder + u"/tube_lists/wear.lst")).split(u'\n', Qt::SkipEmptyParts)) {
        if (line.startsWith(u'#') || line.startsWith(u'!'))
            continue;
        EXPECT_GE(project.steamGen.parseTube(QStringView(line).trimmed().sliced(line.trimmed().indexOf(u' '))), 0)
            << line.toStdString();
        ++named;
    }
    EXPECT_GT(named, 5);
    EXPECT_GE(QDir(folder + u"/queries").entryList({u"*.qry"_s}).size(), 12);
}

/// Stops the work at the second look.
class Stop : public tarnwick::Progress
{
public:
    void report(qint64, qint64, const QString &) override { ++looks; }
    bool cancelled() override { return looks > 1; }
    int looks = 0;
};

TEST(DemoFilesTest, NothingIsLeftOfAFailedProjectAndNothingIsOverwritten)
{
    const QTemporaryDir dir;
    const QString folder = dir.filePath(u"demo"_s);
    Stop stop;
    EXPECT_THROW(demo::makeProject(small(), folder, &stop), tarnwick::Cancelled);
    EXPECT_FALSE(QDir(folder).exists());
    ASSERT_TRUE(QDir().mkpath(folder));
    tarnwick::failWritesAfter(200'000);
    EXPECT_THROW(demo::makeProject(small(), folder), tarnwick::FileError);
    tarnwick::failWritesAfter(-1);
    EXPECT_TRUE(QDir(folder).isEmpty());

    tarnwick::writeFileAtomically(folder + u"/mine.txt", "x");
    EXPECT_THROW(demo::makeProject(small(), folder), tarnwick::FileError);
    EXPECT_EQ(filesIn(folder).size(), 1);
    DemoOptions wrong;
    wrong.tubes = 3;
    EXPECT_THROW(demo::makeProject(wrong, dir.filePath(u"other"_s)), tarnwick::Error);
}

} // namespace
