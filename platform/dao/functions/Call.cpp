#include "Functions.h"

#include "Call.h"

#include <cmath>
#include <dao/values/Decimal.h>
#include <limits>

namespace dao::functions {
namespace {

bool anyNull(int count, sqlite3_value **values)
{
    return std::any_of(values, values + count,
                       [](sqlite3_value *value) { return sqlite3_value_type(value) == SQLITE_NULL; });
}

void run(sqlite3_context *context, int count, sqlite3_value **values)
{
    const Entry &entry = *static_cast<const Entry *>(sqlite3_user_data(context));
    if (!(entry.flags & Entry::NullIn) && anyNull(count, values)) {
        sqlite3_result_null(context);
        return;
    }
    try {
        entry.body(Call(context, count, values));
    } catch (const Failure &failure) {
        const QByteArray text = failureText(failure.number);
        sqlite3_result_error(context, text.constData(), int(text.size()));
    } catch (const std::bad_alloc &) {
        sqlite3_result_error_nomem(context);
    }
}

void registerEntries(sqlite3 *connection, std::span<const Entry> entries)
{
    for (const Entry &entry : entries) {
        const QByteArray name = QByteArray(prefix) + entry.name;
        const int flags = SQLITE_UTF8 | SQLITE_INNOCUOUS | (entry.flags & Entry::Changing ? 0 : SQLITE_DETERMINISTIC);
        sqlite3_create_function_v2(connection, name.constData(), entry.arguments, flags, const_cast<Entry *>(&entry),
                                   run, nullptr, nullptr, nullptr);
    }
}

} // namespace

QString Call::text(int index) const
{
    sqlite3_value *value = m_values[index];
    if (isNumber(index))
        return numberText(sqlite3_value_double(value));
    const auto *bytes = reinterpret_cast<const char *>(sqlite3_value_text(value));
    return QString::fromUtf8(bytes, sqlite3_value_bytes(value));
}

int Call::whole(int index) const
{
    const double rounded = roundHalfEven(real(index));
    if (!(rounded >= double(std::numeric_limits<int>::min()) && rounded <= double(std::numeric_limits<int>::max())))
        fail(error::Overflow);
    return int(rounded);
}

void Call::give(const QString &text) const
{
    const QByteArray bytes = text.toUtf8();
    sqlite3_result_text64(m_context, bytes.constData(), quint64(bytes.size()), SQLITE_TRANSIENT, SQLITE_UTF8);
}

void Call::give(double number) const
{
    if (!std::isfinite(number))
        fail(error::Overflow);
    sqlite3_result_double(m_context, number);
}

QByteArray failureText(int number)
{
    return "dao:" + QByteArray::number(number) + ':' + errorText(number).toUtf8();
}

void registerAll(sqlite3 *connection)
{
    for (const auto entries : {conversionEntries(), operatorEntries(), textEntries(), formatEntries(), dateEntries(),
                               numberEntries(), informationEntries(), moneyEntries()})
        registerEntries(connection, entries);
    registerAggregates(connection);
}

} // namespace dao::functions
