#include "Call.h"

#include <cmath>

namespace dao::functions {
namespace {

/// An annuity: rate of a period, number of periods, payments at the end (0) or the beginning (1) of a period.
struct Annuity
{
    double rate;
    double periods;
    bool due;

    double growth() const { return std::pow(1 + rate, periods); }

    double future(double payment, double present) const
    {
        if (rate == 0)
            return -(present + payment * periods);
        return -(present * growth() + payment * (due ? 1 + rate : 1) * (growth() - 1) / rate);
    }

    double payment(double present, double future) const
    {
        if (periods == 0)
            fail(error::InvalidProcedureCall);
        if (rate == 0)
            return -(present + future) / periods;
        return -(present * growth() + future) * rate / ((due ? 1 + rate : 1) * (growth() - 1));
    }

    double present(double payment, double future) const
    {
        if (rate == 0)
            return -(future + payment * periods);
        return -(future + payment * (due ? 1 + rate : 1) * (growth() - 1) / rate) / growth();
    }

    /// Interest in the payment of one period, counted from 1.
    double interest(double period, double present, double future_) const
    {
        if (period < 1 || period > periods)
            fail(error::InvalidProcedureCall);
        const double paid = payment(present, future_);
        if (due && period == 1)
            return 0;
        const Annuity before{rate, period - 1 - (due ? 1 : 0), false};
        const double balance = before.future(paid, due ? present + paid : present);
        return balance * rate;
    }
};

void futureValue(const Call &call)
{
    const Annuity annuity{call.real(0), call.real(1), call.realOr(4, 0) != 0};
    call.give(annuity.future(call.real(2), call.realOr(3, 0)));
}

void presentValue(const Call &call)
{
    const Annuity annuity{call.real(0), call.real(1), call.realOr(4, 0) != 0};
    call.give(annuity.present(call.real(2), call.realOr(3, 0)));
}

void payment(const Call &call)
{
    const Annuity annuity{call.real(0), call.real(1), call.realOr(4, 0) != 0};
    call.give(annuity.payment(call.real(2), call.realOr(3, 0)));
}

void interestPayment(const Call &call)
{
    const Annuity annuity{call.real(0), call.real(2), call.realOr(5, 0) != 0};
    call.give(annuity.interest(call.real(1), call.real(3), call.realOr(4, 0)));
}

void principalPayment(const Call &call)
{
    const Annuity annuity{call.real(0), call.real(2), call.realOr(5, 0) != 0};
    const double whole = annuity.payment(call.real(3), call.realOr(4, 0));
    call.give(whole - annuity.interest(call.real(1), call.real(3), call.realOr(4, 0)));
}

void periodCount(const Call &call)
{
    const double rate = call.real(0);
    const double paid = call.real(1) * (call.realOr(4, 0) != 0 ? 1 + rate : 1);
    const double present = call.real(2);
    const double future = call.realOr(3, 0);
    if (rate == 0) {
        if (paid == 0)
            fail(error::InvalidProcedureCall);
        return call.give(-(present + future) / paid);
    }
    const double quotient = (paid - future * rate) / (paid + present * rate);
    if (rate <= -1 || !(quotient > 0))
        fail(error::InvalidProcedureCall);
    call.give(std::log(quotient) / std::log(1 + rate));
}

// By the secant method; gives up as users know it, with an invalid call.
void interestRate(const Call &call)
{
    constexpr int MaxSteps = 100;
    constexpr double Precision = 1e-10;
    const bool due = call.realOr(4, 0) != 0;
    const auto balance = [&](double rate) {
        return Annuity{rate, call.real(0), due}.future(call.real(1), call.real(2)) - call.realOr(3, 0);
    };
    double previous = call.realOr(5, 0.1);
    double rate = previous * 1.1 + 1e-4;
    double previousBalance = balance(previous);
    for (int i = 0; i < MaxSteps; ++i) {
        const double current = balance(rate);
        if (std::fabs(current) < Precision * std::max(1.0, std::fabs(call.real(2))))
            return call.give(rate);
        if (current == previousBalance || !std::isfinite(current))
            break;
        const double next = rate - current * (rate - previous) / (current - previousBalance);
        previous = rate;
        previousBalance = current;
        rate = next;
    }
    fail(error::InvalidProcedureCall);
}

void straightLine(const Call &call)
{
    if (call.real(2) == 0)
        fail(error::DivisionByZero);
    call.give((call.real(0) - call.real(1)) / call.real(2));
}

void sumOfYears(const Call &call)
{
    const double life = call.real(2);
    const double period = call.real(3);
    if (life <= 0 || period <= 0 || period > life)
        fail(error::InvalidProcedureCall);
    call.give((call.real(0) - call.real(1)) * (life - period + 1) * 2 / (life * (life + 1)));
}

void decliningBalance(const Call &call)
{
    const double cost = call.real(0);
    const double salvage = call.real(1);
    const double life = call.real(2);
    const double period = call.real(3);
    const double factor = call.realOr(4, 2);
    if (cost < 0 || salvage < 0 || life <= 0 || period <= 0 || period > life || factor <= 0)
        fail(error::InvalidProcedureCall);
    const double share = std::min(factor / life, 1.0);
    const double before = cost * std::pow(1 - share, period - 1);
    const double after = std::max(cost * std::pow(1 - share, period), salvage);
    call.give(std::max(before - after, 0.0));
}

constexpr Entry entries[] = {
    {"fv", -1, futureValue},       {"pv", -1, presentValue},       {"pmt", -1, payment},
    {"ipmt", -1, interestPayment}, {"ppmt", -1, principalPayment}, {"nper", -1, periodCount},
    {"rate", -1, interestRate},    {"sln", 3, straightLine},       {"syd", 4, sumOfYears},
    {"ddb", -1, decliningBalance},
};

} // namespace

std::span<const Entry> moneyEntries()
{
    return entries;
}

} // namespace dao::functions
