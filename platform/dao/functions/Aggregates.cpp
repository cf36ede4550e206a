#include "Call.h"

#include <cmath>
#include <new>
#include <vector>

namespace dao::functions {
namespace {

/// Memory of one group, made when its first row comes and kept by the inner engine as one pointer.
template <typename State>
State *stateOf(sqlite3_context *context, bool create)
{
    auto **slot = static_cast<State **>(sqlite3_aggregate_context(context, create ? int(sizeof(State *)) : 0));
    if (!slot)
        return nullptr;
    if (!*slot && create)
        *slot = new (std::nothrow) State;
    return *slot;
}

/// Frees the state at the end of the group.
template <typename State>
std::unique_ptr<State> takeState(sqlite3_context *context)
{
    State *state = stateOf<State>(context, false);
    return std::unique_ptr<State>(state);
}

// ---- First, Last -------------------------------------------------------------------------------------------------

struct ValueFree
{
    void operator()(sqlite3_value *value) const { sqlite3_value_free(value); }
};
using HeldValue = std::unique_ptr<sqlite3_value, ValueFree>;

struct Extreme
{
    bool any = false;
    std::vector<qint64> key;
    HeldValue value;
};

/// Row keys stand behind the value; a missing one (of an outer join) counts as the lowest.
template <bool Last>
void extremeStep(sqlite3_context *context, int count, sqlite3_value **values)
{
    Extreme *state = stateOf<Extreme>(context, true);
    if (!state)
        return sqlite3_result_error_nomem(context);
    std::vector<qint64> key;
    for (int i = 1; i < count; ++i)
        key.push_back(sqlite3_value_type(values[i]) == SQLITE_NULL ? std::numeric_limits<qint64>::min()
                                                                   : sqlite3_value_int64(values[i]));
    // Without keys, rows count in the order in which they come.
    const bool better = !state->any || (Last ? key >= state->key : key < state->key);
    if (!better)
        return;
    state->any = true;
    state->key = std::move(key);
    state->value.reset(sqlite3_value_dup(values[0]));
}

void extremeFinal(sqlite3_context *context)
{
    const std::unique_ptr<Extreme> state = takeState<Extreme>(context);
    if (state && state->value)
        sqlite3_result_value(context, state->value.get());
    else
        sqlite3_result_null(context);
}

// ---- StDev, Var --------------------------------------------------------------------------------------------------

/// Mean and sum of squared distances, updated row by row without loss of digits.
struct Spread
{
    qint64 count = 0;
    double mean = 0;
    double squares = 0;
};

void spreadStep(sqlite3_context *context, int, sqlite3_value **values)
{
    if (sqlite3_value_type(values[0]) == SQLITE_NULL)
        return;
    Spread *state = stateOf<Spread>(context, true);
    if (!state)
        return sqlite3_result_error_nomem(context);
    const double value = sqlite3_value_double(values[0]);
    const double distance = value - state->mean;
    ++state->count;
    state->mean += distance / double(state->count);
    state->squares += distance * (value - state->mean);
}

template <bool Population, bool Root>
void spreadFinal(sqlite3_context *context)
{
    const std::unique_ptr<Spread> state = takeState<Spread>(context);
    const qint64 divisor = state ? state->count - (Population ? 0 : 1) : 0;
    if (divisor < 1)
        return sqlite3_result_null(context);
    const double variance = state->squares / double(divisor);
    sqlite3_result_double(context, Root ? std::sqrt(variance) : variance);
}

// ---- the one row of a subquery -----------------------------------------------------------------------------------

struct Single
{
    int rows = 0;
    HeldValue value;
};

void singleStep(sqlite3_context *context, int, sqlite3_value **values)
{
    Single *state = stateOf<Single>(context, true);
    if (!state)
        return sqlite3_result_error_nomem(context);
    if (++state->rows > 1) {
        const QByteArray text = failureText(error::SubqueryRows);
        return sqlite3_result_error(context, text.constData(), int(text.size()));
    }
    state->value.reset(sqlite3_value_dup(values[0]));
}

void singleFinal(sqlite3_context *context)
{
    const std::unique_ptr<Single> state = takeState<Single>(context);
    // After a failed step the error stands.
    if (state && state->rows > 1)
        return;
    if (state && state->value)
        sqlite3_result_value(context, state->value.get());
    else
        sqlite3_result_null(context);
}

struct AggregateEntry
{
    const char *name;
    int arguments;
    void (*step)(sqlite3_context *, int, sqlite3_value **);
    void (*final)(sqlite3_context *);
};

constexpr AggregateEntry entries[] = {
    {"first", -1, extremeStep<false>, extremeFinal},
    {"last", -1, extremeStep<true>, extremeFinal},
    {"stdev", 1, spreadStep, spreadFinal<false, true>},
    {"stdevp", 1, spreadStep, spreadFinal<true, true>},
    {"var", 1, spreadStep, spreadFinal<false, false>},
    {"varp", 1, spreadStep, spreadFinal<true, false>},
    {"single", 1, singleStep, singleFinal},
};

} // namespace

void registerAggregates(sqlite3 *connection)
{
    for (const AggregateEntry &entry : entries) {
        const QByteArray name = QByteArray(prefix) + entry.name;
        sqlite3_create_function_v2(connection, name.constData(), entry.arguments,
                                   SQLITE_UTF8 | SQLITE_INNOCUOUS | SQLITE_DETERMINISTIC, nullptr, nullptr, entry.step,
                                   entry.final, nullptr);
    }
}

} // namespace dao::functions
