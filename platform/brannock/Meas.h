#pragma once
#include <QString>

namespace brannock {

/// An eddy-current measurement: volts and phase of the signal, and the depth derived from it.
struct Meas
{
    QString type; ///< how volts were measured ("Vpp", "Vmx", "Vxx", "V"); empty: no measurement
    double volts = 0;
    int digVolts = 0; ///< in digitiser counts
    double phase = 0; ///< degrees
    int percent = 0;  ///< depth in per cent of the wall; 0: none

    bool isValid() const { return !type.isEmpty(); }
    bool operator==(const Meas &) const = default;
};

/// A location along a tube: a landmark and an offset from it.
struct TubeLoc
{
    QString landmark;
    float offset = 0;
    int point = 0;  ///< data point number of the acquisition
    float dist = 0; ///< distance along the tube; 0 or less: unknown

    bool isValid() const { return !landmark.isEmpty(); }
    void clear() { *this = TubeLoc(); }
    bool operator==(const TubeLoc &) const = default;
};

} // namespace brannock
