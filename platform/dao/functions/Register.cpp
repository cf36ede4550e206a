#include "Aggregates.h"
#include "Call.h"
#include "Functions.h"

#include <dao/values/CellFailure.h>
#include <dao/values/Errors.h>
#include <new>
#include <sqlite3.h>
#include <utility>

namespace dao::functions {

namespace {

void callFunction(sqlite3_context *context, int count, sqlite3_value **arguments)
{
    const auto &entry = *static_cast<const Entry *>(sqlite3_user_data(context));
    Call call(context, count, arguments);
    if (count < entry.minArguments || (entry.maxArguments >= 0 && count > entry.maxArguments)) {
        call.fail(error::InvalidProcedureCall);
        return;
    }
    const int nullsCount = entry.nullArguments < 0 ? count : std::min(count, entry.nullArguments);
    for (int i = 0; i < nullsCount; ++i) {
        if (call.isNull(i)) {
            call.resultNull();
            return;
        }
    }
    // Exceptions must not pass through SQLite's C code.
    try {
        entry.run(call);
    } catch (const FunctionFault &fault) {
        call.fail(fault.number);
    } catch (const std::bad_alloc &) {
        sqlite3_result_error_nomem(context);
    }
}

// Error handling of calculated result cells: a function that fails inside a cell stores its error number here and
// returns Null. cell() then returns the failure instead of the value, so that the other rows of the result are kept.
// cell_begin(), the first argument of cell(), clears the number and returns that of the enclosing cell.
thread_local int notedFailure = 0;

void noteFailure(int number)
{
    if (notedFailure == 0)
        notedFailure = number;
}

void callNoting(sqlite3_context *context, int count, sqlite3_value **arguments)
{
    const auto &entry = *static_cast<const Entry *>(sqlite3_user_data(context));
    Call call(context, count, arguments);
    call.resultNull();
    const int nullsCount = entry.nullArguments < 0 ? count : std::min(count, entry.nullArguments);
    for (int i = 0; i < nullsCount; ++i) {
        if (call.isNull(i))
            return;
    }
    try {
        entry.run(call);
    } catch (const FunctionFault &fault) {
        call.resultNull();
        noteFailure(fault.number);
    } catch (const std::bad_alloc &) {
        sqlite3_result_error_nomem(context);
    }
}

int failureOf(sqlite3_value *value)
{
    if (sqlite3_value_type(value) != SQLITE_BLOB)
        return 0;
    return failureIn({static_cast<const char *>(sqlite3_value_blob(value)), sqlite3_value_bytes(value)});
}

void beginCell(sqlite3_context *context, int, sqlite3_value **)
{
    sqlite3_result_int(context, std::exchange(notedFailure, 0));
}

void endCell(sqlite3_context *context, int, sqlite3_value **arguments)
{
    const int failure = std::exchange(notedFailure, sqlite3_value_int(arguments[0]));
    if (failure == 0) {
        sqlite3_result_value(context, arguments[1]);
        return;
    }
    const QByteArray bytes = failureBytes(failure);
    sqlite3_result_blob(context, bytes.constData(), int(bytes.size()), SQLITE_TRANSIENT);
}

// cell_placed(cell_begin(), start, length, value): if the value failed, ends the statement with an error that has the
// place in the user's text.
void placeFailure(sqlite3_context *context, int, sqlite3_value **arguments)
{
    const int failure = std::exchange(notedFailure, sqlite3_value_int(arguments[0]));
    if (failure == 0) {
        sqlite3_result_value(context, arguments[3]);
        return;
    }
    const QByteArray place =
        QByteArray::number(sqlite3_value_int(arguments[1])) + ',' + QByteArray::number(sqlite3_value_int(arguments[2]));
    const QByteArray message = "dao:" + QByteArray::number(failure) + '@' + place + ':' + errorText(failure).toUtf8();
    sqlite3_result_error(context, message.constData(), int(message.size()));
}

// Reads a cell of a nested query: inside a cell its failure is passed on, elsewhere it ends the statement.
template <bool inCell>
void takeCell(sqlite3_context *context, int count, sqlite3_value **arguments)
{
    const int failure = failureOf(arguments[0]);
    if (failure == 0)
        sqlite3_result_value(context, arguments[0]);
    else if (inCell)
        noteFailure(failure);
    else
        Call(context, count, arguments).fail(failure);
}

void registerCells(sqlite3 *connection)
{
    const auto add = [connection](const char *name, int arguments, auto body) {
        sqlite3_create_function_v2(connection, name, arguments, SQLITE_UTF8 | SQLITE_INNOCUOUS, nullptr, body, nullptr,
                                   nullptr, nullptr);
    };
    add("cell_begin", 0, beginCell);
    add("cell_end", 2, endCell);
    add("cell_placed", 4, placeFailure);
    add("cell_value", 1, takeCell<false>);
    add("try_cell_value", 1, takeCell<true>);
}

void registerFamily(sqlite3 *connection, std::span<const Entry> family)
{
    for (const Entry &entry : family) {
        const QByteArray name = QByteArray("jet_") + entry.name;
        const int flags = SQLITE_UTF8 | SQLITE_INNOCUOUS | (entry.deterministic ? SQLITE_DETERMINISTIC : 0);
        const int arguments = entry.minArguments == entry.maxArguments ? entry.minArguments : -1;
        sqlite3_create_function_v2(connection, name.constData(), arguments, flags, const_cast<Entry *>(&entry),
                                   callFunction, nullptr, nullptr, nullptr);
        // Registered as not deterministic: SQLite would otherwise evaluate calls with constant arguments before the
        // cell begins.
        const QByteArray noting = QByteArray("try_") + entry.name;
        sqlite3_create_function_v2(connection, noting.constData(), arguments, SQLITE_UTF8 | SQLITE_INNOCUOUS,
                                   const_cast<Entry *>(&entry), callNoting, nullptr, nullptr, nullptr);
    }
}

} // namespace

void registerAll(sqlite3 *connection)
{
    for (const auto &family :
         {conversionFunctions(), textFunctions(), formatFunctions(), dateFunctions(), numberFunctions(),
          logicFunctions(), moneyFunctions(), operatorFunctions(), assignmentFunctions()})
        registerFamily(connection, family);
    registerCells(connection);
    registerAggregates(connection);
}

} // namespace dao::functions
