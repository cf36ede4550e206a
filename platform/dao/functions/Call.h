#pragma once
#include <dao/values/Errors.h>

#include <QString>
#include <span>
#include <sqlite3.h>

namespace dao::functions {

/// One call of a function by the inner engine: its arguments and where the result goes.
class Call
{
public:
    Call(sqlite3_context *context, int count, sqlite3_value **values)
        : m_context(context)
        , m_count(count)
        , m_values(values)
    {
    }

    int count() const { return m_count; }
    bool has(int index) const { return index < m_count; }
    bool isNull(int index) const { return sqlite3_value_type(m_values[index]) == SQLITE_NULL; }
    bool isText(int index) const { return sqlite3_value_type(m_values[index]) == SQLITE_TEXT; }
    bool isInteger(int index) const { return sqlite3_value_type(m_values[index]) == SQLITE_INTEGER; }
    bool isNumber(int index) const { return isInteger(index) || sqlite3_value_type(m_values[index]) == SQLITE_FLOAT; }

    /// A text argument; a number is given as text.
    QString text(int index) const;
    double real(int index) const { return sqlite3_value_double(m_values[index]); }
    /// Rounded half to even to 32 bits; error 6 outside of them.
    int whole(int index) const;
    /// The same, or another value when the argument is missing or Null.
    int wholeOr(int index, int otherwise) const { return has(index) && !isNull(index) ? whole(index) : otherwise; }
    double realOr(int index, double otherwise) const { return has(index) && !isNull(index) ? real(index) : otherwise; }

    void give(const QString &text) const;
    void give(double number) const;
    void give(qint64 number) const { sqlite3_result_int64(m_context, number); }
    void give(int number) const { give(qint64(number)); }
    void giveBoolean(bool flag) const { give(flag ? -1 : 0); }
    void giveNull() const { sqlite3_result_null(m_context); }
    /// An argument as it is.
    void pass(int index) const { sqlite3_result_value(m_context, m_values[index]); }

private:
    sqlite3_context *m_context;
    int m_count;
    sqlite3_value **m_values;
};

/// Thrown by functions; becomes the error text of the call.
struct Failure
{
    int number;
};

[[noreturn]] inline void fail(int number)
{
    throw Failure{number};
}

/// "dao:<number>:<text>"
QByteArray failureText(int number);

/// How a function is registered.
struct Entry
{
    enum Flag { None = 0, NullIn = 1, Changing = 2 };
    const char *name; ///< without the prefix
    int arguments;    ///< -1: any number
    void (*body)(const Call &);
    /// NullIn: the body sees Null arguments; otherwise one of them makes the result Null. Changing: not the same for
    /// the same arguments.
    int flags = None;
};

// One table for each family.
std::span<const Entry> conversionEntries();
std::span<const Entry> operatorEntries();
std::span<const Entry> textEntries();
std::span<const Entry> formatEntries();
std::span<const Entry> dateEntries();
std::span<const Entry> numberEntries();
std::span<const Entry> informationEntries();
std::span<const Entry> moneyEntries();
void registerAggregates(sqlite3 *connection);

/// The prefix of every name of ours in the inner engine.
inline constexpr const char *prefix = "jet_";

} // namespace dao::functions
