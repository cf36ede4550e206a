#pragma once
#include <QString>
#include <span>

struct sqlite3_context;
struct sqlite3_value;

namespace dao::functions {

/// Limit for texts that functions build. Longer ones raise error 6 (overflow) instead of running out of memory.
inline constexpr qint64 kLongestText = 16 * 1024 * 1024;

/// Thrown by a function to report an error by its number.
struct FunctionFault
{
    int number;
};

/// One call of an expression function by SQLite: its arguments, converted by the rules of the dialect, and its result.
class Call
{
public:
    Call(sqlite3_context *context, int count, sqlite3_value **arguments)
        : m_context(context)
        , m_count(count)
        , m_arguments(arguments)
    {
    }

    int count() const { return m_count; }
    bool has(int index) const { return index < m_count; }
    bool isNull(int index) const;
    bool isText(int index) const;
    bool isInteger(int index) const;
    /// The argument as a number. Text must be numeric. Fault 13 for other text, 94 for Null.
    double number(int index) const;
    /// The argument as a number rounded half to even; fault 6 outside 32 bits.
    int integer(int index) const;
    int integer(int index, int whenMissing) const { return has(index) ? integer(index) : whenMissing; }
    qint64 wholeNumber(int index) const; ///< requires isInteger()
    /// The argument as text; numbers with at most 15 digits; Null is empty.
    QString text(int index) const;
    /// The argument as a date: a number of days, or text that is a date or a number; faults 13, 94.
    double date(int index) const;
    bool condition(int index) const { return number(index) != 0; }

    void result(double number);
    void result(qint64 number);
    void result(int number) { result(qint64(number)); }
    void result(const QString &text);
    /// -1 or 0
    void resultBoolean(bool value) { result(qint64(value ? -1 : 0)); }
    void resultNull();
    void resultArgument(int index);
    void fail(int number, const QString &text = {});

    sqlite3_context *context() const { return m_context; }
    sqlite3_value *raw(int index) const { return m_arguments[index]; }

private:
    sqlite3_context *m_context;
    int m_count;
    sqlite3_value **m_arguments;
};

/// A function for SQLite. It is registered as "jet_" + name.
struct Entry
{
    const char *name;
    int minArguments;
    int maxArguments; ///< -1: any number
    void (*run)(Call &call);
    /// If one of the first nullArguments arguments is Null, the result is Null without a call; -1: any argument.
    int nullArguments = -1;
    bool deterministic = true;
};

std::span<const Entry> conversionFunctions();
std::span<const Entry> textFunctions();
std::span<const Entry> formatFunctions();
std::span<const Entry> dateFunctions();
std::span<const Entry> numberFunctions();
std::span<const Entry> logicFunctions();
std::span<const Entry> moneyFunctions();
std::span<const Entry> operatorFunctions();
std::span<const Entry> assignmentFunctions();

} // namespace dao::functions
