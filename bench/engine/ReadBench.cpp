#include "Figures.h"

#include <bench/SideBySide.h>

namespace {

using namespace bench;
using namespace Qt::StringLiterals;
using dao::Recordset;

constexpr qint64 kMillion = 1'000'000;

/// Compares reading every cell of a query in one forward pass with stepping through the same statement in SQLite.
void readAgainstStepping(benchmark::State &state, const QString &sql, qint64 items)
{
    Opened opened(kMillion);
    const QByteArray text = sql.toUtf8();
    const auto ours = [&] {
        Recordset snapshot(opened.database);
        qint64 sum = 0;
        for (snapshot.open(Recordset::Type::Snapshot, sql); !snapshot.isEof(); snapshot.moveNext())
            sum += readRow(snapshot);
        benchmark::DoNotOptimize(sum);
    };
    const auto plain = [&] {
        PlainStatement select(opened.plain, text.constData());
        qint64 sum = 0;
        while (select.step())
            sum += select.readRow();
        benchmark::DoNotOptimize(sum);
    };
    SideBySide::run(state, items, ours, plain);
}

void readTable(benchmark::State &state)
{
    readAgainstStepping(state, u"SELECT * FROM report"_s, kMillion);
}
BENCHMARK(readTable)->UseManualTime()->Iterations(5)->Unit(benchmark::kMillisecond);

void readHistory(benchmark::State &state)
{
    readAgainstStepping(state, kHistorySql, kMillion);
}
BENCHMARK(readHistory)->UseManualTime()->Iterations(3)->Unit(benchmark::kMillisecond);

void calList(benchmark::State &state)
{
    readAgainstStepping(state, kCalListSql, 1);
}
BENCHMARK(calList)->UseManualTime()->Iterations(7)->Unit(benchmark::kMillisecond);

} // namespace
