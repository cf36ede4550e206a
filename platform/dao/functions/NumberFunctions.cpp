#include "Call.h"

#include <bit>
#include <cmath>
#include <dao/values/Decimal.h>
#include <dao/values/Errors.h>
#include <limits>

namespace dao::functions {

namespace {

void absolute(Call &call)
{
    // The smallest 64-bit integer has no positive counterpart.
    if (call.isInteger(0) && call.wholeNumber(0) > std::numeric_limits<qint64>::min())
        call.result(std::abs(call.wholeNumber(0)));
    else
        call.result(std::abs(call.number(0)));
}

void sign(Call &call)
{
    const double number = call.number(0);
    call.result(number < 0 ? -1 : number > 0 ? 1 : 0);
}

void squareRoot(Call &call)
{
    const double number = call.number(0);
    if (number < 0)
        throw FunctionFault{error::InvalidProcedureCall};
    call.result(std::sqrt(number));
}

void logarithm(Call &call)
{
    const double number = call.number(0);
    if (number <= 0)
        throw FunctionFault{error::InvalidProcedureCall};
    call.result(std::log(number));
}

template <double (*function)(double)>
void apply(Call &call)
{
    call.result(function(call.number(0)));
}

// Int and Fix. Integers are returned unchanged.
template <double (*function)(double)>
void toWhole(Call &call)
{
    if (call.isInteger(0))
        call.result(call.wholeNumber(0));
    else
        call.result(function(call.number(0)));
}

void round(Call &call)
{
    const int places = call.integer(1, 0);
    if (places < 0)
        throw FunctionFault{error::InvalidProcedureCall};
    if (call.isInteger(0))
        call.result(call.wholeNumber(0));
    else
        call.result(roundDecimal(call.number(0), std::min(places, 22)));
}

// Rnd: a 24-bit linear congruential generator. Its state belongs to the process, as in the original engine.
quint32 randomState = 0x50000;

void random(Call &call)
{
    constexpr quint32 kMask = 0xFFFFFF;
    const double argument = call.has(0) ? call.number(0) : 1;
    if (argument < 0) {
        const auto bits = std::bit_cast<quint32>(float(argument));
        randomState = (bits + (bits >> 24)) & kMask;
    }
    if (argument != 0)
        randomState = (randomState * 0x43FD43FDu + 0xC39EC3u) & kMask;
    call.result(double(randomState) / (kMask + 1));
}

constexpr Entry kEntries[] = {
    {"abs", 1, 1, absolute},
    {"sgn", 1, 1, sign},
    {"sqr", 1, 1, squareRoot},
    {"exp", 1, 1, apply<std::exp>},
    {"log", 1, 1, logarithm},
    {"sin", 1, 1, apply<std::sin>},
    {"cos", 1, 1, apply<std::cos>},
    {"tan", 1, 1, apply<std::tan>},
    {"atn", 1, 1, apply<std::atan>},
    {"int", 1, 1, toWhole<std::floor>},
    {"fix", 1, 1, toWhole<std::trunc>},
    {"round", 1, 2, round},
    {"rnd", 0, 1, random, -1, false},
};

} // namespace

std::span<const Entry> numberFunctions()
{
    return kEntries;
}

} // namespace dao::functions
