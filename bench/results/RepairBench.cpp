#include <bench/SilentPrompts.h>

#include <bench/PlainDatabase.h>
#include <bench/ReportTable.h>
#include <bench/SideBySide.h>
#include <QFile>
#include <QTemporaryDir>
#include <results/repairs/RepairList.h>

namespace {

using namespace Qt::StringLiterals;
using results::Repair;
using results::RepairList;

constexpr int kTubes = 16'000;
constexpr int kRepairs = 100'000;
constexpr const char *kInsertSql =
    "INSERT INTO repairs (sec, row, col, repair_type, type, material, vendor, loc_land, loc_off, date_scheduled,"
    " is_perm, length, site_code, comp, outage, reason, comment)"
    " VALUES (0, ?1, ?2, 'Plug', '', '', '', '', 0, 45000.5, -1, 0, 'S1', 'SGA', 'R12', '', '')";

const brannock::Project &project()
{
    static const brannock::Project made = [] {
        constexpr int kCols = 160;
        brannock::Project project;
        QList<ellery::Tube> tubes;
        for (int i = 0; i < kTubes; ++i)
            tubes.append(
                {{0, qint16(1 + i / kCols), qint16(1 + i % kCols)}, float(i % kCols), float(i / kCols), false});
        project.steamGen.setTubes(tubes);
        return project;
    }();
    return made;
}

/// The repairs of the tubes in turn, one of each in a round.
void insertPlainly(const QString &path, int count)
{
    bench::PlainDatabase database(path);
    database.run("BEGIN IMMEDIATE");
    {
        bench::PlainStatement insert(database, kInsertSql);
        for (int i = 0; i < count; ++i) {
            const ellery::TubeAddress &address = project().steamGen[i % kTubes].address;
            sqlite3_bind_int(insert.handle(), 1, address.row);
            sqlite3_bind_int(insert.handle(), 2, address.col);
            insert.step();
            insert.reset();
        }
    }
    database.run("COMMIT");
}

class Opened
{
public:
    explicit Opened(const QString &path) { session.open(path); }
    bench::SilentPrompts prompts;
    db::DatabaseSession session{prompts};
    results::RepairOptions options;
    RepairList list{session, project(), options};
};

void openRepairs(benchmark::State &state)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"many.mdb"_s);
    bench::makeDatabase(path);
    insertPlainly(path, kRepairs);
    Opened opened(path);
    const bench::PlainDatabase plainDatabase(path);
    const auto ours = [&] {
        if (!opened.list.open() || opened.list.count() != kRepairs)
            qFatal("not every repair was read");
    };
    const auto plain = [&] {
        bench::PlainStatement select(plainDatabase,
                                     "SELECT * FROM repairs ORDER BY sec, row, col, repair_type, outage");
        qint64 sum = 0;
        while (select.step())
            sum += select.readRow();
        benchmark::DoNotOptimize(sum);
    };
    bench::SideBySide::run(state, kRepairs, ours, plain);
}
BENCHMARK(openRepairs)->UseManualTime()->Iterations(5)->Unit(benchmark::kMillisecond);

/// A repair for every tube is scheduled and stored.
void storeRepairs(benchmark::State &state)
{
    const QTemporaryDir folder;
    const QString empty = folder.filePath(u"empty.mdb"_s);
    bench::makeDatabase(empty);
    QList<qint32> tubes;
    for (qint32 i = 0; i < kTubes; ++i)
        tubes.append(i);
    const auto onACopy = [&](const auto &work) {
        const QString copy = folder.filePath(u"copy.mdb"_s);
        QFile::remove(copy);
        QFile::copy(empty, copy);
        work(copy);
    };
    const auto ours = [&](const QString &path) {
        Opened opened(path);
        opened.list.open();
        Repair pattern = opened.list.scheduleTemplate();
        pattern.repairType = u"Plug"_s;
        opened.list.schedule(tubes, pattern);
        if (!opened.list.closeWithOk())
            qFatal("not stored");
    };
    const auto plain = [&](const QString &path) { insertPlainly(path, kTubes); };
    bench::SideBySide::run(
        state, kTubes, [&] { onACopy(ours); }, [&] { onACopy(plain); });
}
BENCHMARK(storeRepairs)->UseManualTime()->Iterations(5)->Unit(benchmark::kMillisecond);

} // namespace
