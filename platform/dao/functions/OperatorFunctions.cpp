#include "Call.h"
#include "LikePattern.h"

#include <cmath>
#include <dao/values/Decimal.h>
#include <dao/values/Errors.h>
#include <limits>
#include <memory>
#include <sqlite3.h>

namespace dao::functions {

namespace {

// If the sum overflows 64 bits it continues as a double.
void addWhole(Call &call)
{
    qint64 sum = 0;
    if (__builtin_add_overflow(call.wholeNumber(0), call.wholeNumber(1), &sum))
        call.result(call.number(0) + call.number(1));
    else
        call.result(sum);
}

// "+" on values whose type is known only at run time: two texts are concatenated; a number and a numeric text are
// added.
void add(Call &call)
{
    if (call.isText(0) && call.isText(1)) {
        const QString joined = call.text(0) + call.text(1);
        if (joined.size() > kLongestText)
            throw FunctionFault{error::Overflow};
        call.result(joined);
    } else if (call.isInteger(0) && call.isInteger(1)) {
        addWhole(call);
    } else {
        call.result(call.number(0) + call.number(1));
    }
}

// "/" always gives a real number; division by zero is error 11.
void divide(Call &call)
{
    const double divisor = call.number(1);
    if (divisor == 0)
        throw FunctionFault{error::DivisionByZero};
    call.result(call.number(0) / divisor);
}

// Integer division: operands are rounded to integers first, the result is truncated towards zero.
void integerDivide(Call &call)
{
    const qint64 divisor = call.integer(1);
    if (divisor == 0)
        throw FunctionFault{error::DivisionByZero};
    const qint64 quotient = call.integer(0) / divisor;
    if (quotient > std::numeric_limits<int>::max())
        throw FunctionFault{error::Overflow};
    call.result(quotient);
}

// Mod: operands are rounded to integers first; the result has the sign of the left one.
void modulo(Call &call)
{
    const qint64 divisor = call.integer(1);
    if (divisor == 0)
        throw FunctionFault{error::DivisionByZero};
    call.result(call.integer(0) % divisor);
}

void power(Call &call)
{
    const double base = call.number(0);
    const double exponent = call.number(1);
    if ((base < 0 && std::trunc(exponent) != exponent) || (base == 0 && exponent < 0))
        throw FunctionFault{error::InvalidProcedureCall};
    call.result(std::pow(base, exponent));
}

// "&" of two or more operands: Null counts as empty text, but the result is Null if all operands are Null.
void join(Call &call)
{
    QString result;
    bool allNull = true;
    for (int i = 0; i < call.count(); ++i) {
        allNull = allNull && call.isNull(i);
        result += call.text(i);
        if (result.size() > kLongestText)
            throw FunctionFault{error::Overflow};
    }
    if (allNull)
        call.resultNull();
    else
        call.result(result);
}

// SQLite calls this when it discards a compiled pattern.
void deletePattern(void *pattern)
{
    delete static_cast<LikePattern *>(pattern);
}

// Like. Arguments: (pattern, text). Returns 1 or 0. A pattern that is constant for all rows is compiled once.
template <LikePattern::Form form>
void like(Call &call)
{
    auto *pattern = static_cast<LikePattern *>(sqlite3_get_auxdata(call.context(), 0));
    const QString text = call.text(1);
    if (pattern) {
        call.result(pattern->matches(text) ? 1 : 0);
        return;
    }
    auto compiled = std::make_unique<LikePattern>(call.text(0), form);
    call.result(compiled->matches(text) ? 1 : 0);
    sqlite3_set_auxdata(call.context(), 0, compiled.release(), deletePattern);
}

// Arguments: (number[, text]). Raises this error when it is evaluated.
void raiseError(Call &call)
{
    call.fail(call.integer(0), call.has(1) ? call.text(1) : QString());
}

// The "$" forms of functions (Left$) do not accept Null: error 94.
void refuseNull(Call &call)
{
    if (call.isNull(0))
        throw FunctionFault{error::InvalidUseOfNull};
    call.resultArgument(0);
}

constexpr Entry kEntries[] = {
    {"add", 2, 2, add},
    {"divide", 2, 2, divide},
    {"int_divide", 2, 2, integerDivide},
    {"mod", 2, 2, modulo},
    {"power", 2, 2, power},
    {"concatenate", 1, -1, join, 0},
    {"like", 2, 2, like<LikePattern::Form::Star>},
    {"alike", 2, 2, like<LikePattern::Form::Percent>},
    {"not_null", 1, 1, refuseNull, 0},
    {"raise", 1, 2, raiseError, 0, false},
};

} // namespace

std::span<const Entry> operatorFunctions()
{
    return kEntries;
}

} // namespace dao::functions
