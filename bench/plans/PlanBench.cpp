#include <bench/PlainDatabase.h>
#include <bench/ReportTable.h>
#include <bench/SideBySide.h>
#include <bench/SilentPrompts.h>
#include <plans/storage/PlanCheck.h>
#include <plans/storage/PlanEditor.h>
#include <plans/storage/PlanStorage.h>
#include <plans/storage/TubeListFile.h>
#include <QFile>
#include <QTemporaryDir>

namespace {

using namespace Qt::StringLiterals;
using brannock::InspPlan;

constexpr int kTubes = 16'000;
constexpr int kLines = 100'000;
constexpr int kResults = 1'000'000;

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

/// All tubes of a component in turn, until there are as many as wanted.
InspPlan planOf(const ellery::SteamGen &component)
{
    QList<ellery::TubeAddress> tubes;
    for (int i = 0; i < kTubes; ++i)
        tubes.append(component[i % component.numTube()].address);
    InspPlan plan;
    plan.name = u"All"_s;
    plan.createTime = tarnwick::JDateTime::fromSeconds(1'500'000'000);
    plan.addTubes(tubes);
    return plan;
}

void loadSymbols(benchmark::State &state)
{
    bench::SilentPrompts prompts;
    db::DatabaseSession session(prompts);
    ellery::TubeStates tubes(kTubes);
    for (int tube = 0; tube < kTubes; ++tube)
        tubes.setMark(tube, {ellery::Symbol(u'A'), {}});
    for (auto _ : state) {
        plans::PlanEditor editor(session, project());
        editor.loadSymbols(tubes);
        if (editor.plan().entries.size() != kTubes)
            state.SkipWithError("not every tube was added");
    }
}
BENCHMARK(loadSymbols)->Unit(benchmark::kMillisecond);

void readList(benchmark::State &state)
{
    ellery::SteamGen component = project().steamGen;
    if (state.range(0)) {
        for (int number = 0; number <= component.maxNumber(ellery::Axis::Row); ++number)
            component.labels[int(ellery::Axis::Row)].append(u"R%1"_s.arg(number));
    }
    plans::TubeList list;
    for (int i = 0; i < kLines; ++i) {
        const ellery::TubeAddress &address = component[i % kTubes].address;
        list.entries.append({i, address.row, address.col, address.sec, {}});
    }
    const QByteArray content = plans::tubeListText(list, u"all.lst"_s, tarnwick::JDateTime::now(), component).toUtf8();
    for (auto _ : state) {
        const plans::TubeListFile file(content, component, true);
        if (file.errorCount() != 0 || file.tubes().size() != kLines)
            state.SkipWithError("not every line was read");
    }
}
BENCHMARK(readList)->ArgName("labels")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

/// Upload, fetch and deletion of a plan: the rows of both tables by prepared statements of SQLite.
void plainPlan(const QString &path, const InspPlan &plan)
{
    bench::PlainDatabase database(path);
    database.run("BEGIN IMMEDIATE");
    {
        database.run("INSERT INTO plans (name, create_time) VALUES ('All', 45000)");
        bench::PlainStatement insert(
            database,
            "INSERT INTO plan_entry (name, row, col, sec, entry_num, is_done) VALUES ('All', ?1, ?2, ?3, ?4, 0)");
        for (const brannock::PlanEntry &entry : plan.entries) {
            sqlite3_bind_int(insert.handle(), 1, entry.row);
            sqlite3_bind_int(insert.handle(), 2, entry.col);
            sqlite3_bind_int(insert.handle(), 3, entry.sec);
            sqlite3_bind_int(insert.handle(), 4, entry.entryNum);
            insert.step();
            insert.reset();
        }
    }
    database.run("COMMIT");
    {
        bench::PlainStatement select(database,
                                     "SELECT * FROM plan_entry WHERE name = 'All' ORDER BY entry_num, sec, row, col");
        qint64 sum = 0;
        while (select.step())
            sum += select.readRow();
        benchmark::DoNotOptimize(sum);
    }
    database.run("BEGIN IMMEDIATE");
    database.run("DELETE FROM plans WHERE name = 'All'");
    database.run("COMMIT");
}

void uploadFetchDelete(benchmark::State &state)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"plans.mdb"_s);
    bench::makeDatabase(path);
    const InspPlan plan = planOf(project().steamGen);
    const auto ours = [&] {
        bench::SilentPrompts prompts;
        db::DatabaseSession session(prompts);
        session.open(path);
        plans::PlanStorage storage(session);
        if (!storage.upload(plan, plan.name) || storage.fetch(plan.name)->entries != plan.entries ||
            !storage.remove(plan.name, plans::PlanStorage::Asks::Never))
            qFatal("not stored");
    };
    bench::SideBySide::run(state, kTubes, ours, [&] { plainPlan(path, plan); });
}
BENCHMARK(uploadFetchDelete)->UseManualTime()->Iterations(7)->Unit(benchmark::kMillisecond);

void isPlanAnalyzed(benchmark::State &state)
{
    const QString path = bench::reportDatabase(kResults);
    const InspPlan plan = planOf(bench::resultsProject().steamGen);
    const QString outage = bench::resultsProject().outages.last().name;
    bench::SilentPrompts prompts;
    db::DatabaseSession session(prompts);
    session.open(path, dao::OpenMode::ReadOnly);
    const bench::PlainDatabase database(path);
    const auto ours = [&] {
        InspPlan checked = plan;
        plans::markAnalyzed(session, checked, outage, {u"INC"_s}, nullptr);
        benchmark::DoNotOptimize(checked.entries.last().analyzed);
    };
    const QByteArray sql = "SELECT COUNT(*) FROM report WHERE outage = '" + outage.toUtf8() +
                           "' AND row = ?1 AND col = ?2 AND sec = ?3 AND (defect IS NULL OR defect NOT IN ('INC'))";
    const auto plain = [&] {
        bench::PlainStatement count(database, sql.constData());
        qint64 sum = 0;
        for (const brannock::PlanEntry &entry : plan.entries) {
            sqlite3_bind_int(count.handle(), 1, entry.row);
            sqlite3_bind_int(count.handle(), 2, entry.col);
            sqlite3_bind_int(count.handle(), 3, entry.sec);
            count.step();
            sum += count.readRow();
            count.reset();
        }
        benchmark::DoNotOptimize(sum);
    };
    bench::SideBySide::run(state, kTubes, ours, plain);
}
BENCHMARK(isPlanAnalyzed)->UseManualTime()->Iterations(5)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
