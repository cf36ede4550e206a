#include "Aggregates.h"

#include <cmath>
#include <QtGlobal>
#include <sqlite3.h>

namespace dao::functions {

namespace {

// First and Last: the group's memory is one copied value.
struct KeptValue
{
    sqlite3_value *value;
};

void keepFirst(sqlite3_context *context, int, sqlite3_value **arguments)
{
    auto *kept = static_cast<KeptValue *>(sqlite3_aggregate_context(context, sizeof(KeptValue)));
    if (kept && !kept->value)
        kept->value = sqlite3_value_dup(arguments[0]);
}

void keepLast(sqlite3_context *context, int, sqlite3_value **arguments)
{
    auto *kept = static_cast<KeptValue *>(sqlite3_aggregate_context(context, sizeof(KeptValue)));
    if (!kept)
        return;
    sqlite3_value_free(kept->value);
    kept->value = sqlite3_value_dup(arguments[0]);
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

// Welford's running mean and sum of squared differences: no cancellation for large means.
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
void giveSpread(sqlite3_context *context)
{
    const auto *spread = static_cast<Spread *>(sqlite3_aggregate_context(context, 0));
    const qint64 divisor = spread ? spread->count - (population ? 0 : 1) : 0;
    if (divisor < 1)
        return; // Null
    const double variance = spread->squares / double(divisor);
    sqlite3_result_double(context, root ? std::sqrt(variance) : variance);
}

} // namespace

void registerAggregates(sqlite3 *connection)
{
    const auto add = [connection](const char *name, auto step, auto final) {
        sqlite3_create_function_v2(connection, name, 1, SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS, nullptr,
                                   nullptr, step, final, nullptr);
    };
    add("jet_first", keepFirst, giveKept);
    add("jet_last", keepLast, giveKept);
    add("jet_stdev", addToSpread, giveSpread<false, true>);
    add("jet_stdevp", addToSpread, giveSpread<true, true>);
    add("jet_var", addToSpread, giveSpread<false, false>);
    add("jet_varp", addToSpread, giveSpread<true, false>);
}

} // namespace dao::functions
