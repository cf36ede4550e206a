#include "Call.h"

#include <cmath>
#include <dao/values/Errors.h>

namespace dao::functions {

namespace {

double optional(const Call &call, int index, double whenMissing = 0)
{
    return call.has(index) ? call.number(index) : whenMissing;
}

// Payments at the beginning of a period (due) bear interest for one more period.
double dueFactor(const Call &call, double rate, int index)
{
    return optional(call, index) != 0 ? 1 + rate : 1;
}

// The future value of one unit paid in each period.
double annuity(double rate, double periods)
{
    return rate == 0 ? periods : (std::pow(1 + rate, periods) - 1) / rate;
}

// The usual equation of annuities, here and below solved for one of its terms:
//     present * (1 + rate)^periods + payment * due * ((1 + rate)^periods - 1) / rate + future = 0
double futureValue(double rate, double periods, double payment, double present, double due)
{
    return -(present * std::pow(1 + rate, periods) + payment * due * annuity(rate, periods));
}

double payment(double rate, double periods, double present, double future, double due)
{
    const double grown = annuity(rate, periods) * due;
    if (grown == 0)
        throw FunctionFault{error::InvalidProcedureCall};
    return -(present * std::pow(1 + rate, periods) + future) / grown;
}

void fv(Call &call)
{
    const double rate = call.number(0);
    call.result(futureValue(rate, call.number(1), call.number(2), optional(call, 3), dueFactor(call, rate, 4)));
}

void pv(Call &call)
{
    const double rate = call.number(0);
    const double periods = call.number(1);
    const double paid = call.number(2) * dueFactor(call, rate, 4) * annuity(rate, periods);
    call.result(-(optional(call, 3) + paid) / std::pow(1 + rate, periods));
}

void pmt(Call &call)
{
    const double rate = call.number(0);
    call.result(payment(rate, call.number(1), call.number(2), optional(call, 3), dueFactor(call, rate, 4)));
}

// IPmt and PPmt. Arguments: (rate, period, periods, present[, future[, due]]).
// The interest of a period is the balance before it times the rate.
double interestOf(const Call &call)
{
    const double rate = call.number(0);
    const double period = call.number(1);
    const double periods = call.number(2);
    if (period < 1 || period > periods)
        throw FunctionFault{error::InvalidProcedureCall};
    const double due = dueFactor(call, rate, 5);
    const double present = call.number(3);
    const double paid = payment(rate, periods, present, optional(call, 4), due);
    if (due == 1)
        return futureValue(rate, period - 1, paid, present, 1) * rate;
    return period == 1 ? 0 : (futureValue(rate, period - 2, paid, present, due) - paid) * rate;
}

void ipmt(Call &call)
{
    call.result(interestOf(call));
}

void ppmt(Call &call)
{
    const double rate = call.number(0);
    const double whole = payment(rate, call.number(2), call.number(3), optional(call, 4), dueFactor(call, rate, 5));
    call.result(whole - interestOf(call));
}

// The equation solved for periods; without interest it is linear.
void nper(Call &call)
{
    const double rate = call.number(0);
    const double paid = call.number(1) * dueFactor(call, rate, 4);
    const double present = call.number(2);
    const double future = optional(call, 3);
    if (rate == 0) {
        if (paid == 0)
            throw FunctionFault{error::InvalidProcedureCall};
        return call.result(-(present + future) / paid);
    }
    const double ratio = (paid - future * rate) / (paid + present * rate);
    if (!(ratio > 0))
        throw FunctionFault{error::InvalidProcedureCall};
    call.result(std::log(ratio) / std::log(1 + rate));
}

// Rate. Arguments: (periods, payment, present[, future[, due[, guess]]]). Solved by the secant method.
void rate(Call &call)
{
    constexpr int kMostSteps = 128;
    constexpr double kCloseEnough = 1e-12;
    const auto remainder = [&call](double r) {
        return optional(call, 3) -
               futureValue(r, call.number(0), call.number(1), call.number(2), dueFactor(call, r, 4));
    };
    double a = optional(call, 5, 0.1);
    double b = a * 1.1 + 0.01;
    double atA = remainder(a);
    for (int i = 0; i < kMostSteps; ++i) {
        const double atB = remainder(b);
        if (!std::isfinite(atB) || atB == atA)
            break;
        const double next = b - atB * (b - a) / (atB - atA);
        if (std::abs(next - b) < kCloseEnough)
            return call.result(next);
        a = b;
        atA = atB;
        b = next;
    }
    throw FunctionFault{error::InvalidProcedureCall};
}

void sln(Call &call)
{
    const double life = call.number(2);
    if (life == 0)
        throw FunctionFault{error::DivisionByZero};
    call.result((call.number(0) - call.number(1)) / life);
}

void syd(Call &call)
{
    const double life = call.number(2);
    const double period = call.number(3);
    if (life <= 0 || period < 1 || period > life)
        throw FunctionFault{error::InvalidProcedureCall};
    call.result((call.number(0) - call.number(1)) * (life - period + 1) * 2 / (life * (life + 1)));
}

void ddb(Call &call)
{
    const double cost = call.number(0);
    const double salvage = call.number(1);
    const double life = call.number(2);
    const double period = call.number(3);
    const double factor = optional(call, 4, 2);
    if (cost < 0 || salvage < 0 || life <= 0 || period < 1 || period > life || factor <= 0)
        throw FunctionFault{error::InvalidProcedureCall};
    const double share = std::min(1.0, factor / life);
    const double before = cost * std::pow(1 - share, period - 1);
    const double after = std::max(salvage, cost * std::pow(1 - share, period));
    call.result(std::max(0.0, before - after));
}

constexpr Entry kEntries[] = {
    {"fv", 3, 5, fv},     {"pv", 3, 5, pv},     {"pmt", 3, 5, pmt}, {"ipmt", 4, 6, ipmt}, {"ppmt", 4, 6, ppmt},
    {"nper", 3, 5, nper}, {"rate", 3, 6, rate}, {"sln", 3, 3, sln}, {"syd", 4, 4, syd},   {"ddb", 4, 5, ddb},
};

} // namespace

std::span<const Entry> moneyFunctions()
{
    return kEntries;
}

} // namespace dao::functions
