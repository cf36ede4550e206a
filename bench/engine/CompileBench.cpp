#include "Figures.h"

#include <bench/ReportTable.h>
#include <bench/SideBySide.h>
#include <dao/DatabaseImpl.h>
#include <dao/functions/Functions.h>
#include <demo/StoredQueries.h>

namespace {

using namespace bench;

constexpr qint64 kSomeRows = 20'000;

QString madeSql(const dao::QueryDef &query)
{
    return std::get<dao::sql::SelectPlan>(query.compiled().plan).fullSql;
}

/// Compares the compilation from text to prepared statement with preparing the generated SQL alone.
void compare(benchmark::State &state, const QStringList &texts)
{
    constexpr int kTimes = 100;
    Opened opened(kSomeRows);
    dao::functions::registerAll(opened.plain.handle());
    QList<QByteArray> made;
    for (const QString &text : texts)
        made.append(madeSql(dao::QueryDef(opened.database, text)).toUtf8());
    const auto ours = [&] {
        for (int i = 0; i < kTimes; ++i) {
            for (const QString &text : texts) {
                const dao::QueryDef query(opened.database, text);
                const dao::store::Statement prepared(opened.database.impl().connection, madeSql(query),
                                                     dao::store::Access::User);
                benchmark::DoNotOptimize(prepared.isValid());
            }
        }
    };
    const auto plain = [&] {
        for (int i = 0; i < kTimes; ++i) {
            for (const QByteArray &sql : made) {
                const PlainStatement prepared(opened.plain, sql.constData());
                benchmark::DoNotOptimize(prepared.handle());
            }
        }
    };
    SideBySide::run(state, kTimes * texts.size(), ours, plain);
}

void compileDemoQueries(benchmark::State &state)
{
    QStringList texts;
    const QList<demo::StoredQuery> queries = demo::storedQueries(resultsProject());
    for (const demo::StoredQuery &query : queries)
        texts.append(query.sql);
    compare(state, texts);
}
BENCHMARK(compileDemoQueries)->UseManualTime()->Iterations(15);

void compileOneQuery(benchmark::State &state)
{
    const demo::StoredQuery query = demo::storedQueries(resultsProject()).at(state.range(0));
    state.SetLabel(query.fileName.toStdString());
    compare(state, {query.sql});
}
BENCHMARK(compileOneQuery)->UseManualTime()->Iterations(9)->DenseRange(0, 19);

} // namespace
