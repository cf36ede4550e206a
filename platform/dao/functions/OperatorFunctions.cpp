#include "Call.h"
#include "LikePattern.h"

#include <dao/values/Decimal.h>

#include <cmath>

namespace dao::functions {
namespace {

void divide(const Call &call)
{
    if (call.real(1) == 0)
        fail(error::DivisionByZero);
    call.give(call.real(0) / call.real(1));
}

// Both operands are rounded to 32 bits first; the quotient is cut towards zero.
void intDivide(const Call &call)
{
    const qint64 dividend = call.whole(0);
    const qint64 divisor = call.whole(1);
    if (divisor == 0)
        fail(error::DivisionByZero);
    call.give(dividend / divisor);
}

void modulo(const Call &call)
{
    const qint64 dividend = call.whole(0);
    const qint64 divisor = call.whole(1);
    if (divisor == 0)
        fail(error::DivisionByZero);
    call.give(dividend % divisor);
}

void power(const Call &call)
{
    const double base = call.real(0);
    const double exponent = call.real(1);
    if ((base < 0 && exponent != std::trunc(exponent)) || (base == 0 && exponent < 0))
        fail(error::InvalidProcedureCall);
    call.give(std::pow(base, exponent));
}

// + of operands of unknown kind: two texts are joined, anything else is added.
void add(const Call &call)
{
    if (call.isText(0) && call.isText(1)) {
        call.give(call.text(0) + call.text(1));
        return;
    }
    double sum = 0;
    for (int i = 0; i < 2; ++i) {
        const std::optional<double> number = call.isText(i) ? parseNumber(call.text(i)) : std::optional(call.real(i));
        if (!number)
            fail(error::TypeMismatch);
        sum += *number;
    }
    if (call.isInteger(0) && call.isInteger(1))
        call.give(qint64(sum));
    else
        call.give(sum);
}

void concatenate(const Call &call)
{
    QString text;
    bool any = false;
    for (int i = 0; i < call.count(); ++i) {
        if (call.isNull(i))
            continue;
        any = true;
        text += call.text(i);
    }
    if (any)
        call.give(text);
    else
        call.giveNull();
}

template <bool Ansi>
void like(const Call &call)
{
    call.give(matchesLike(call.text(1), call.text(0), Ansi) ? 1 : 0);
}

constexpr Entry entries[] = {
    {"divide", 2, divide},    {"int_divide", 2, intDivide},
    {"mod", 2, modulo},       {"power", 2, power},
    {"add", 2, add},          {"concatenate", -1, concatenate, Entry::NullIn},
    {"like", 2, like<false>}, {"alike", 2, like<true>},
};

} // namespace

std::span<const Entry> operatorEntries()
{
    return entries;
}

} // namespace dao::functions
