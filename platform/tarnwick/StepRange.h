#pragma once
#include <QtGlobal>

namespace tarnwick {

/// The whole numbers of a field with steps: minimum to maximum, wrapping around at the ends.
struct StepRange
{
    qint64 minimum = 0;
    qint64 maximum = 0;

    /// Returns minimum if the amount does not fit below maximum.
    qint64 increased(qint64 value, qint64 amount) const { return value <= maximum - amount ? value + amount : minimum; }
    /// Returns maximum if the amount does not fit above minimum.
    qint64 decreased(qint64 value, qint64 amount) const { return value >= minimum + amount ? value - amount : maximum; }
};

/// Number of steps per click or key press: 10 with Shift, 100 with Ctrl, 1000 with both.
constexpr int stepFactor(bool shift, bool control)
{
    return (shift ? 10 : 1) * (control ? 100 : 1);
}

} // namespace tarnwick
