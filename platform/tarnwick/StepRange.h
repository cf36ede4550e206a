#pragma once
#include <QtGlobal>

namespace tarnwick {

/// The whole numbers that a field steps through, from minimum to maximum and round at the ends.
struct StepRange
{
    qint64 minimum = 0;
    qint64 maximum = 0;

    /// The minimum when the whole amount does not fit below the maximum.
    qint64 increased(qint64 value, qint64 amount) const { return value <= maximum - amount ? value + amount : minimum; }
    /// The maximum when the whole amount does not fit above the minimum.
    qint64 decreased(qint64 value, qint64 amount) const { return value >= minimum + amount ? value - amount : maximum; }
};

/// How many steps one click or key makes: ten with Shift, a hundred with Ctrl, a thousand with both.
constexpr int stepFactor(bool shift, bool control)
{
    return (shift ? 10 : 1) * (control ? 100 : 1);
}

} // namespace tarnwick
