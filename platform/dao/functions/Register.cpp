#include "Aggregates.h"
#include "Call.h"
#include "Functions.h"

#include <dao/values/Errors.h>
#include <new>
#include <sqlite3.h>

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
    // Nothing may be thrown through the inner engine.
    try {
        entry.run(call);
    } catch (const FunctionFault &fault) {
        call.fail(fault.number);
    } catch (const std::bad_alloc &) {
        sqlite3_result_error_nomem(context);
    }
}

void registerFamily(sqlite3 *connection, std::span<const Entry> family)
{
    for (const Entry &entry : family) {
        const QByteArray name = QByteArray("jet_") + entry.name;
        const int flags = SQLITE_UTF8 | SQLITE_INNOCUOUS | (entry.deterministic ? SQLITE_DETERMINISTIC : 0);
        const int arguments = entry.minArguments == entry.maxArguments ? entry.minArguments : -1;
        sqlite3_create_function_v2(connection, name.constData(), arguments, flags, const_cast<Entry *>(&entry),
                                   callFunction, nullptr, nullptr, nullptr);
    }
}

} // namespace

void registerAll(sqlite3 *connection)
{
    for (const auto &family :
         {conversionFunctions(), textFunctions(), formatFunctions(), dateFunctions(), numberFunctions(),
          logicFunctions(), moneyFunctions(), operatorFunctions(), assignmentFunctions()})
        registerFamily(connection, family);
    registerAggregates(connection);
}

} // namespace dao::functions
