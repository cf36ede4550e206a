// Compares the conversion of old databases with a million rows with a plain copy of the same table by SQLite, and the
// import of a Jet file (named by ARVO_BENCH_JET; grow-jet-file makes a large one) with the export of its tables by
// mdbtools. Also measures the connection to a current database.
//
// Number of rows: ARVO_BENCH_ROWS, a million by default.
#include "OldDatabases.h"

#include <benchmark/benchmark.h>
#include <brannock/Project.h>
#include <db/revision/ConnectDatabase.h>
#include <db/revision/JetImport.h>
#include <map>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <sqlite3.h>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace {

qint64 wantedRows()
{
    constexpr qint64 kMillion = 1'000'000;
    const qint64 rows = qEnvironmentVariable("ARVO_BENCH_ROWS").toLongLong();
    return rows > 0 ? rows : kMillion;
}

/// Answers Yes to every question.
class Yes : public tarnwick::RecordingPrompts
{
public:
    tarnwick::Answer ask(tarnwick::Buttons, const QString &, int) override { return tarnwick::Answer::Yes; }
};

/// A project folder whose database is reset to an old shape for each run; created once for each shape.
class Workshop
{
public:
    static Workshop &of(int shapes)
    {
        static std::map<int, std::unique_ptr<Workshop>> shops;
        std::unique_ptr<Workshop> &shop = shops[shapes];
        if (!shop)
            shop = std::make_unique<Workshop>(shapes);
        shop->restore();
        return *shop;
    }

    explicit Workshop(int shapes)
        : m_made(m_folder.filePath(u"made.mdb"_s))
    {
        old::Sizes sizes;
        (shapes & old::Plans ? sizes.planEntries : sizes.report) = wantedRows();
        project.folder = m_folder.path();
        QDir(m_folder.path()).mkpath(u"arvo"_s);
        old::makeDatabase(m_made, shapes, sizes);
    }

    void restore()
    {
        QFile::remove(path());
        QFile::remove(m_folder.filePath(u"arvo/project._db"_s));
        QFile::copy(m_made, path());
    }
    QString path() const { return m_folder.filePath(u"arvo/project.mdb"_s); }

    brannock::Project project;

private:
    QTemporaryDir m_folder;
    QString m_made;
};

void connect(Workshop &shop)
{
    Yes prompts;
    db::DatabaseSession session(prompts);
    if (!db::connectDatabase(session, shop.path(), {&shop.project, nullptr, nullptr}))
        throw std::runtime_error("not connected");
}

void convert(benchmark::State &state, int shapes)
{
    for (auto _ : state) {
        state.PauseTiming();
        Workshop &shop = Workshop::of(shapes);
        state.ResumeTiming();
        connect(shop);
    }
    state.SetItemsProcessed(state.iterations() * wantedRows());
}

/// For each index of a table, the statement that creates the same index on its copy.
QList<QByteArray> indexesOfCopy(sqlite3 *db, const QByteArray &table)
{
    QList<QByteArray> statements;
    sqlite3_stmt *rows = nullptr;
    sqlite3_prepare_v2(db, "SELECT sql FROM sqlite_schema WHERE type = 'index' AND sql > '' AND tbl_name = ?1", -1,
                       &rows, nullptr);
    sqlite3_bind_text(rows, 1, table.constData(), -1, SQLITE_STATIC);
    while (sqlite3_step(rows) == SQLITE_ROW) {
        const QByteArray sql(reinterpret_cast<const char *>(sqlite3_column_text(rows, 0)));
        const QByteArray kind = sql.startsWith("CREATE UNIQUE") ? "CREATE UNIQUE INDEX copy_" : "CREATE INDEX copy_";
        statements.append(kind + QByteArray::number(statements.size()) + " ON copy_of_it " +
                          sql.mid(sql.indexOf('(', sql.indexOf(" ON "))));
    }
    sqlite3_finalize(rows);
    return statements;
}

/// Baseline: the table copied by plain SQL statements, without or with its indexes.
void copyTable(benchmark::State &state, int shapes, const char *table, bool withIndexes)
{
    for (auto _ : state) {
        state.PauseTiming();
        Workshop &shop = Workshop::of(shapes);
        state.ResumeTiming();
        sqlite3 *db = nullptr;
        sqlite3_open(shop.path().toUtf8().constData(), &db);
        QList<QByteArray> statements{"PRAGMA cache_size = -65536", "BEGIN",
                                     "CREATE TABLE copy_of_it AS SELECT * FROM " + QByteArray(table)};
        if (withIndexes)
            statements += indexesOfCopy(db, table);
        for (const QByteArray &sql : std::as_const(statements))
            if (sqlite3_exec(db, sql.constData(), nullptr, nullptr, nullptr) != SQLITE_OK)
                throw std::runtime_error(sqlite3_errmsg(db));
        sqlite3_exec(db, "COMMIT", nullptr, nullptr, nullptr);
        sqlite3_close(db);
    }
    state.SetItemsProcessed(state.iterations() * wantedRows());
}

void connectCurrent(benchmark::State &state)
{
    Workshop &shop = Workshop::of(old::Current);
    connect(shop);
    for (auto _ : state)
        connect(shop);
}

void openPlain(benchmark::State &state)
{
    Workshop &shop = Workshop::of(old::Current);
    for (auto _ : state) {
        sqlite3 *db = nullptr;
        sqlite3_open(shop.path().toUtf8().constData(), &db);
        sqlite3_exec(db, "SELECT count(*) FROM sqlite_schema", nullptr, nullptr, nullptr);
        sqlite3_close(db);
    }
}

void importJet(benchmark::State &state)
{
    const QString file = qEnvironmentVariable("ARVO_BENCH_JET");
    if (file.isEmpty()) {
        state.SkipWithError("ARVO_BENCH_JET is not set");
        return;
    }
    const QTemporaryDir folder;
    const QString target = folder.filePath(u"new.mdb"_s);
    for (auto _ : state) {
        QFile::remove(target);
        db::importJetFile(file, target);
    }
    state.SetBytesProcessed(state.iterations() * QFileInfo(file).size());
}

/// Export of the same file by other programs: every table as text, output discarded.
void exportJet(benchmark::State &state)
{
    const QString file = qEnvironmentVariable("ARVO_BENCH_JET");
    if (file.isEmpty()) {
        state.SkipWithError("ARVO_BENCH_JET is not set");
        return;
    }
    const auto run = [](const QString &program, const QStringList &arguments, const QString &output) {
        QProcess process;
        if (!output.isEmpty())
            process.setStandardOutputFile(output);
        process.start(program, arguments);
        if (!process.waitForFinished(-1) || process.exitCode() != 0)
            throw std::runtime_error("no mdbtools");
        return QString::fromUtf8(process.readAllStandardOutput());
    };
    for (auto _ : state) {
        const QString tables = run(u"mdb-tables"_s, {u"-1"_s, file}, {});
        for (const QString &table : tables.split(u'\n', Qt::SkipEmptyParts))
            run(u"mdb-export"_s, {file, table}, QProcess::nullDevice());
    }
    state.SetBytesProcessed(state.iterations() * QFileInfo(file).size());
}

BENCHMARK_CAPTURE(convert, report, int(old::Report))->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK_CAPTURE(copyTable, report, int(old::Report), "report", true)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK_CAPTURE(copyTable, report_rows, int(old::Report), "report", false)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1);
BENCHMARK_CAPTURE(convert, plan_entry, int(old::Plans))->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK_CAPTURE(copyTable, plan_entry, int(old::Plans), "plan_entry", true)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1);
BENCHMARK_CAPTURE(copyTable, plan_entry_rows, int(old::Plans), "plan_entry", false)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1);
BENCHMARK_CAPTURE(convert, everything, int(old::Everything))->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(connectCurrent)->Unit(benchmark::kMillisecond);
BENCHMARK(openPlain)->Unit(benchmark::kMillisecond);
BENCHMARK(importJet)->Unit(benchmark::kMillisecond)->Iterations(1)->UseRealTime();
BENCHMARK(exportJet)->Unit(benchmark::kMillisecond)->Iterations(1)->UseRealTime();

} // namespace

int main(int argc, char **argv)
{
    // The reading process is expected beside the program.
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
