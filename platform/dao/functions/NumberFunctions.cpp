#include "Call.h"

#include <dao/values/Decimal.h>

#include <cmath>
#include <random>

namespace dao::functions {
namespace {

/// Keeps whole numbers whole.
template <double (*Function)(double)>
void keepKind(const Call &call)
{
    if (call.isInteger(0))
        call.give(qint64(Function(call.real(0))));
    else
        call.give(Function(call.real(0)));
}

template <double (*Function)(double)>
void plain(const Call &call)
{
    call.give(Function(call.real(0)));
}

double absolute(double x)
{
    return std::fabs(x);
}
double floored(double x)
{
    return std::floor(x);
}
double truncated(double x)
{
    return std::trunc(x);
}
double exponential(double x)
{
    return std::exp(x);
}
double sine(double x)
{
    return std::sin(x);
}
double cosine(double x)
{
    return std::cos(x);
}
double tangent(double x)
{
    return std::tan(x);
}
double arcTangent(double x)
{
    return std::atan(x);
}

void sign(const Call &call)
{
    const double number = call.real(0);
    call.give(number > 0 ? 1 : number < 0 ? -1 : 0);
}

void squareRoot(const Call &call)
{
    if (call.real(0) < 0)
        fail(error::InvalidProcedureCall);
    call.give(std::sqrt(call.real(0)));
}

void logarithm(const Call &call)
{
    if (call.real(0) <= 0)
        fail(error::InvalidProcedureCall);
    call.give(std::log(call.real(0)));
}

void round(const Call &call)
{
    const int places = call.wholeOr(1, 0);
    if (places < 0)
        fail(error::InvalidProcedureCall);
    if (call.isInteger(0))
        call.pass(0);
    else
        call.give(roundDecimal(call.real(0), places));
}

// A negative argument begins the series that belongs to it, 0 repeats the last number.
void random(const Call &call)
{
    thread_local std::mt19937 engine(std::random_device{}());
    thread_local double last = 0;
    const double argument = call.realOr(0, 1);
    if (argument < 0)
        engine.seed(quint32(std::hash<double>{}(argument)));
    if (argument != 0 || last == 0)
        last = double(float(engine() >> 8) / 16777216.0F);
    call.give(last);
}

void partition(const Call &call)
{
    const qint64 number = call.whole(0);
    const qint64 start = call.whole(1);
    const qint64 stop = call.whole(2);
    const qint64 interval = call.whole(3);
    if (start < 0 || stop <= start || interval < 1)
        fail(error::InvalidProcedureCall);
    const qsizetype width = std::max(QString::number(start - 1).size(), QString::number(stop + 1).size());
    const auto padded = [width](qint64 value) { return QString::number(value).rightJustified(width); };
    const QString blank(width, u' ');
    if (number < start) {
        call.give(blank + u':' + padded(start - 1));
    } else if (number > stop) {
        call.give(padded(stop + 1) + u':' + blank);
    } else {
        const qint64 low = start + (number - start) / interval * interval;
        call.give(padded(low) + u':' + padded(std::min(low + interval - 1, stop)));
    }
}

constexpr Entry entries[] = {
    {"abs", 1, keepKind<absolute>},
    {"int", 1, keepKind<floored>},
    {"fix", 1, keepKind<truncated>},
    {"sgn", 1, sign},
    {"sqr", 1, squareRoot},
    {"exp", 1, plain<exponential>},
    {"log", 1, logarithm},
    {"sin", 1, plain<sine>},
    {"cos", 1, plain<cosine>},
    {"tan", 1, plain<tangent>},
    {"atn", 1, plain<arcTangent>},
    {"round", -1, round},
    {"rnd", -1, random, Entry::Changing},
    {"partition", 4, partition},
};

} // namespace

std::span<const Entry> numberEntries()
{
    return entries;
}

} // namespace dao::functions
