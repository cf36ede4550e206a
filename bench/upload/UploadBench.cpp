#include <bench/PlainInserts.h>
#include <bench/SideBySide.h>
#include <db/CreateDatabase.h>
#include <db/DatabaseSession.h>
#include <QFile>
#include <QTemporaryDir>
#include <results/UploadRun.h>

namespace {

using namespace Qt::StringLiterals;
using brannock::Report;
using brannock::ReportEntry;

constexpr int kEntries = 100'000;
constexpr int kRows = 46;
constexpr int kCols = 94;

/// Shows nothing and answers Yes.
class YesPrompts : public tarnwick::UserPrompts
{
public:
    void showError(int, int, const QString &text) override { qFatal("%s", qPrintable(text)); }
    void showInformation(const QString &) override {}
    tarnwick::Answer ask(tarnwick::Buttons, const QString &, int) override { return tarnwick::Answer::No; }
    void showStatus(const QString &) override {}
};

ReportEntry makeEntry(int number, int calNumber, const QString &outage)
{
    static const QString landmarks[] = {u"TSH"_s, u"01H"_s, u"02H"_s, u"03H"_s, u"AV1"_s, u"AV2"_s, u"05C"_s, u"TSC"_s};
    static const QString defects[] = {u"DNT"_s, u"WAR"_s, u"VOL"_s, u"ADI"_s};
    static const QString operTypes[] = {u"PRI"_s, u"SEC"_s, u"RES"_s};
    ReportEntry entry;
    entry.row = 1 + number % kRows;
    entry.col = 1 + number / kRows % kCols;
    entry.outage = outage;
    entry.site.siteCode = u"TMC"_s;
    entry.site.compCode = u"SGA"_s;
    entry.calNumber = calNumber;
    entry.fileNumber = number % 700;
    entry.operType = operTypes[calNumber % 3];
    entry.analystId = u"A%1"_s.arg(calNumber % 9);
    entry.operatorId = u"OP7"_s;
    entry.entryTime = tarnwick::JDateTime::fromSeconds(1'500'000'000 + number * 7LL);
    entry.beginTest = u"TEC"_s;
    entry.endTest = u"TEH"_s;
    entry.probe = {u"BOBBIN"_s, u"A-600-M"_s, 600, u"12345"_s};
    entry.fileName = u"SGACAL%1"_s.arg(calNumber, 5, 10, QLatin1Char('0'));
    entry.plan = u"100 PERCENT BOBBIN"_s;
    entry.defect = number % 3 == 0 ? u"NDD"_s : defects[number % 4];
    entry.channel = u"P1"_s;
    entry.meas = {u"Vpp"_s, 0.1 + number % 977 * 0.07, number % 5000, double(number % 360),
                  number % 7 ? 0 : number % 95};
    entry.location = {landmarks[number % 8], float(number % 300) * 0.1F, number % 20'000, 0};
    return entry;
}

const brannock::Project &project()
{
    static const brannock::Project made = [] {
        brannock::Project project;
        project.defects = brannock::DefectList::standard();
        project.site.siteCode = u"TMC"_s;
        project.site.compCode = u"SGA"_s;
        project.steamGen.name = u"SGA"_s;
        QList<ellery::Tube> tubes;
        for (qint16 row = 1; row <= kRows; ++row)
            for (qint16 col = 1; col <= kCols; ++col)
                tubes.append({{0, row, col}, float(col), float(row), false});
        project.steamGen.setTubes(tubes);
        ellery::LandmarkSet set;
        for (const QString &name : {u"TSH"_s, u"01H"_s, u"02H"_s, u"03H"_s, u"AV1"_s, u"AV2"_s, u"05C"_s, u"TSC"_s}) {
            ellery::Landmark landmark;
            landmark.name = name;
            landmark.pos = float(set.numLand()) * 40;
            set.landmarks.append(landmark);
        }
        project.steamGen.landmarkSets.append(set);
        return project;
    }();
    return made;
}

const Report &report()
{
    static const Report made = [] {
        Report report;
        for (int i = 0; i < kEntries; ++i)
            report.entries.append(makeEntry(i, 1, u"R12"_s));
        return report;
    }();
    return made;
}

QString newDatabase(const QTemporaryDir &folder)
{
    static int number = 0;
    YesPrompts prompts;
    const QString path = folder.filePath(u"%1.mdb"_s.arg(++number));
    if (!db::createDatabase(prompts, path))
        qFatal("no database");
    return path;
}

void uploadOnce(const QString &path)
{
    YesPrompts prompts;
    db::DatabaseSession session(prompts);
    session.open(path);
    if (results::ReportUpload(session, project()).upload(report()).stored != kEntries)
        qFatal("the upload is not complete");
}

void uploadAgainstPlainInserts(benchmark::State &state)
{
    const QTemporaryDir folder;
    report();
    project();
    const auto upload = [&] {
        const QString path = newDatabase(folder);
        uploadOnce(path);
        QFile::remove(path);
    };
    const auto plain = [&] {
        const QString path = newDatabase(folder);
        bench::insertPlainly(path, report());
        QFile::remove(path);
    };
    bench::SideBySide::run(state, kEntries, upload, plain);
}
BENCHMARK(uploadAgainstPlainInserts)->UseManualTime()->Iterations(5)->Unit(benchmark::kMillisecond);

constexpr int kFiles = 500;
constexpr int kFileEntries = 200;

/// Report files, each a cal of its own.
const QList<Report> &batch()
{
    static const QList<Report> made = [] {
        QList<Report> reports(kFiles);
        for (int file = 0; file < kFiles; ++file) {
            for (int i = 0; i < kFileEntries; ++i) {
                ReportEntry &entry =
                    reports[file].entries.emplaceBack(makeEntry(file * kFileEntries + i, file + 1, u"R12"_s));
                if (!entry.isNdd())
                    entry.defect = i % 2 == 0 ? u"DNT"_s : u"VOL"_s; // codes without problems
            }
        }
        return reports;
    }();
    return made;
}

/// Uploads all files as the dialog and the command line do, with the check of their entries and the log, or only
/// checks.
void runBatch(const QString &path, const brannock::Project &logged, results::UploadRun::Mode mode)
{
    YesPrompts prompts;
    db::DatabaseSession session(prompts);
    session.open(path);
    results::UploadRun run(session, logged, mode);
    for (const Report &each : batch()) {
        if (run.upload(each).stored != kFileEntries || !run.outcomes().last().problems.isEmpty())
            qFatal("the upload is not complete");
    }
}

void uploadFilesAgainstPlainInserts(benchmark::State &state)
{
    const QTemporaryDir folder;
    batch();
    brannock::Project logged = project();
    logged.folder = folder.path();
    const auto upload = [&] {
        const QString path = newDatabase(folder);
        runBatch(path, logged, results::UploadRun::Mode::Store);
        QFile::remove(path);
    };
    const auto plain = [&] {
        const QString path = newDatabase(folder);
        for (const Report &each : batch())
            bench::insertPlainly(path, each);
        QFile::remove(path);
    };
    bench::SideBySide::run(state, kFiles * kFileEntries, upload, plain);
}
BENCHMARK(uploadFilesAgainstPlainInserts)->UseManualTime()->Iterations(3)->Unit(benchmark::kMillisecond);

/// The dry run beside the run; "plain" is the run.
void checkFilesAgainstUpload(benchmark::State &state)
{
    const QTemporaryDir folder;
    batch();
    brannock::Project logged = project();
    logged.folder = folder.path();
    const auto in = [&](results::UploadRun::Mode mode) {
        const QString path = newDatabase(folder);
        runBatch(path, logged, mode);
        QFile::remove(path);
    };
    bench::SideBySide::run(
        state, kFiles * kFileEntries, [&] { in(results::UploadRun::Mode::Check); },
        [&] { in(results::UploadRun::Mode::Store); });
}
BENCHMARK(checkFilesAgainstUpload)->UseManualTime()->Iterations(3)->Unit(benchmark::kMillisecond);

/// A million rows in cals of 500 over ten outages.
class MillionRows
{
public:
    MillionRows()
        : path(newDatabase(m_folder))
    {
        constexpr int kCals = 2000;
        constexpr int kCalEntries = 500;
        constexpr int kCalsAnOutage = 200;
        Report all;
        for (int cal = 0; cal < kCals; ++cal)
            for (int i = 0; i < kCalEntries; ++i)
                all.entries.append(
                    makeEntry(cal * kCalEntries + i, 1 + cal % kCalsAnOutage, u"R%1"_s.arg(cal / kCalsAnOutage)));
        bench::insertPlainly(path, all);
    }

    YesPrompts prompts;
    QTemporaryDir m_folder;
    QString path;
};

void duplicateTest(benchmark::State &state)
{
    static MillionRows rows;
    db::DatabaseSession session(rows.prompts);
    session.open(rows.path);
    if (state.range(0))
        session.database().analyze(u"report"_s);
    int number = 0;
    for (auto _ : state) {
        const int calNumber = 1 + ++number % 200;
        const ReportEntry entry = makeEntry(0, calNumber, u"R%1"_s.arg(number % 10));
        const qint64 found = results::countCalRows(session.database(), results::Cal::of(entry));
        if (found != 500)
            state.SkipWithError("the cal is not there");
    }
}
BENCHMARK(duplicateTest)->ArgName("analyzed")->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
