#include "Landmark.h"

namespace ellery {

namespace {
constexpr int kOutletLeg = 0;
constexpr int kBendLeg = 2;
constexpr float kWholeBend = 180;
} // namespace

float Landmark::posFor(const Tube &tube, float bendLengthPerRow) const
{
    const float share = leg == kOutletLeg ? 1 : leg == kBendLeg ? angle / kWholeBend : 0;
    return pos + share * bendLengthPerRow * float(tube.address.row - 1);
}

void Landmark::setDist(const Tube &tube, float bendLengthPerRow)
{
    pos = posFor(tube, bendLengthPerRow);
}

int LandmarkSet::find(QStringView name) const
{
    for (int i = 0; i < landmarks.size(); ++i) {
        if (landmarks[i].name == name)
            return i;
    }
    return -1;
}

} // namespace ellery
