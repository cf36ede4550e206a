// The text of a query while it is written: a statement of ten thousand characters.
#include "Editor.h"

#include <query/SqlCheck.h>
#include <query/SqlCompletion.h>

namespace {

using namespace bench;
using namespace Qt::StringLiterals;

QString longQuery(const QString &lastCondition)
{
    constexpr int kCharacters = 10'000;
    QString sql = u"SELECT r.sec, r.row, r.col, Left(r.analyst_id, 2) AS who\nFROM report r\nWHERE "_s;
    for (int i = 0; sql.size() < kCharacters; ++i)
        sql += u"(r.pcnt > %1 AND r.volts < %2 AND Left(r.defect, 3) <> 'NDD')\n   OR "_s.arg(i % 100).arg(i * 0.1);
    return sql + lastCondition;
}

void completions(benchmark::State &state)
{
    Project project(kMillion);
    const query::SqlNames names = query::SqlNames::of(project.session.database());
    const QString sql = longQuery(u"r."_s);
    for (auto _ : state) {
        if (query::completionsAt(sql, int(sql.size()), names).items.isEmpty())
            state.SkipWithError("no completions");
    }
}
BENCHMARK(completions)->Unit(benchmark::kMillisecond);

void errorMarks(benchmark::State &state)
{
    Project project(kMillion);
    const QString sql = longQuery(u"r.pcnt > )"_s);
    for (auto _ : state) {
        if (!query::SqlCheck::of(project.session.database(), sql).error)
            state.SkipWithError("no error");
    }
}
BENCHMARK(errorMarks)->Unit(benchmark::kMillisecond);

void noErrorMarks(benchmark::State &state)
{
    Project project(kMillion);
    const QString sql = longQuery(u"r.pcnt > 100"_s);
    for (auto _ : state) {
        if (query::SqlCheck::of(project.session.database(), sql).error)
            state.SkipWithError("an error");
    }
}
BENCHMARK(noErrorMarks)->Unit(benchmark::kMillisecond);

} // namespace
