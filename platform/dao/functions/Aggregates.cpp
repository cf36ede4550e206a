#include "Aggregates.h"

#include <algorithm>
#include <cmath>
#include <dao/values/CellFailure.h>
#include <dao/values/Errors.h>
#include <QtGlobal>
#include <sqlite3.h>

namespace dao::functions {

namespace {

// State of First and Last: one copied value and the key of its row.
struct KeptValue
{
    static constexpr int kMostKeys = 8;
    sqlite3_value *value;
    sqlite3_int64 keys[kMostKeys];
};

// First and Last are defined by the order of the row keys, not by the order in which SQLite delivers the rows.
int compareKeys(const KeptValue &kept, int count, sqlite3_value **keys)
{
    for (int i = 0; i < count; ++i) {
        const sqlite3_int64 key = sqlite3_value_int64(keys[i]);
        if (key != kept.keys[i])
            return key < kept.keys[i] ? -1 : 1;
    }
    return 0;
}

template <bool last>
void keep(sqlite3_context *context, int count, sqlite3_value **arguments)
{
    auto *kept = static_cast<KeptValue *>(sqlite3_aggregate_context(context, sizeof(KeptValue)));
    if (!kept)
        return;
    const int keyCount = std::min(count - 1, KeptValue::kMostKeys);
    if (kept->value) {
        const int order = compareKeys(*kept, keyCount, arguments + 1);
        if (last ? order < 0 : order >= 0)
            return;
        sqlite3_value_free(kept->value);
    }
    kept->value = sqlite3_value_dup(arguments[0]);
    for (int i = 0; i < keyCount; ++i)
        kept->keys[i] = sqlite3_value_int64(arguments[1 + i]);
}

void giveKept(sqlite3_context *context)
{
    auto *kept = static_cast<KeptValue *>(sqlite3_aggregate_context(context, 0));
    if (!kept || !kept->value)
        return;
    sqlite3_result_value(context, kept->value);
    sqlite3_value_free(kept->value);
    kept->value = nullptr;
}

void keepSingle(sqlite3_context *context, int, sqlite3_value **arguments)
{
    auto *kept = static_cast<KeptValue *>(sqlite3_aggregate_context(context, sizeof(KeptValue)));
    if (!kept)
        return;
    if (kept->value) {
        const QByteArray text = "dao:3354:" + errorText(error::SubqueryRows).toUtf8();
        sqlite3_result_error(context, text.constData(), int(text.size()));
        return;
    }
    kept->value = sqlite3_value_dup(arguments[0]);
}

// Inside a result cell a failure becomes a value: see Register.cpp.
void keepSingleInCell(sqlite3_context *context, int, sqlite3_value **arguments)
{
    auto *kept = static_cast<KeptValue *>(sqlite3_aggregate_context(context, sizeof(KeptValue)));
    if (!kept)
        return;
    kept->keys[0] += 1;
    if (!kept->value)
        kept->value = sqlite3_value_dup(arguments[0]);
}

void giveSingleInCell(sqlite3_context *context)
{
    const auto *kept = static_cast<KeptValue *>(sqlite3_aggregate_context(context, 0));
    const bool several = kept && kept->keys[0] > 1;
    giveKept(context);
    if (!several)
        return;
    const QByteArray bytes = failureBytes(error::SubqueryRows);
    sqlite3_result_blob(context, bytes.constData(), int(bytes.size()), SQLITE_TRANSIENT);
}

// Welford's algorithm: running mean and sum of squared differences. The naive sum of squares loses its digits to
// cancellation when the mean is large.
struct Spread
{
    qint64 count;
    double mean;
    double squares;
};

void addToSpread(sqlite3_context *context, int, sqlite3_value **arguments)
{
    if (sqlite3_value_type(arguments[0]) == SQLITE_NULL)
        return;
    auto *spread = static_cast<Spread *>(sqlite3_aggregate_context(context, sizeof(Spread)));
    if (!spread)
        return;
    const double value = sqlite3_value_double(arguments[0]);
    const double difference = value - spread->mean;
    ++spread->count;
    spread->mean += difference / double(spread->count);
    spread->squares += difference * (value - spread->mean);
}

template <bool population, bool root>
// The sample variants divide by n - 1 and are Null for one row; the population variants divide by n.
void giveSpread(sqlite3_context *context)
{
    const auto *spread = static_cast<Spread *>(sqlite3_aggregate_context(context, 0));
    const qint64 divisor = spread ? spread->count - (population ? 0 : 1) : 0;
    if (divisor < 1)
        return; // too few rows: Null
    const double variance = spread->squares / double(divisor);
    sqlite3_result_double(context, root ? std::sqrt(variance) : variance);
}

} // namespace

void registerAggregates(sqlite3 *connection)
{
    const auto add = [connection](const char *name, int arguments, auto step, auto final) {
        sqlite3_create_function_v2(connection, name, arguments, SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS,
                                   nullptr, nullptr, step, final, nullptr);
    };
    add("jet_first", -1, keep<false>, giveKept);
    add("jet_last", -1, keep<true>, giveKept);
    add("jet_single", 1, keepSingle, giveKept);
    add("try_single", 1, keepSingleInCell, giveSingleInCell);
    add("jet_stdev", 1, addToSpread, giveSpread<false, true>);
    add("jet_stdevp", 1, addToSpread, giveSpread<true, true>);
    add("jet_var", 1, addToSpread, giveSpread<false, false>);
    add("jet_varp", 1, addToSpread, giveSpread<true, false>);
}

} // namespace dao::functions
