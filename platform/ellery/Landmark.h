#pragma once
#include "Tube.h"

#include <QList>
#include <QString>

namespace ellery {

/// An axial landmark of the tubes: a tube end, tubesheet face, support plate or anti-vibration bar.
struct Landmark
{
    int number = 0;
    QString type;  ///< "TUBE END", "TUBESHEET", "SUPPORT", "AVB" and the like
    QString name;  ///< as in reports: "TEH", "TSH", "01H", "AV1", ...
    int leg = 0;   ///< -1 none, 0 outlet, 1 inlet, 2 U-bend
    float pos = 0; ///< along the tube from the inlet end, for row 1
    float angle =
        0; ///< in degrees; 0 for a support plate; for a bar in the U-bend its position on the bend, from the inlet side
    int firstRow = 0;
    int lastRow = 999;
    /// True if offsets from it count in the direction of increasing distance from the inlet end.
    bool forward = true;

    /// Position along the given tube. A longer U-bend moves all positions on the outlet side by the full growth of the
    /// bend, and a bar in the bend by its share (angle / 180). Positions on the inlet leg and on straight tubes do not
    /// change.
    float posFor(const Tube &tube, float bendLengthPerRow) const;
    /// Sets pos to the position along that tube. Use it on a copy of the component's landmark: the growth is added by
    /// each call.
    void setDist(const Tube &tube, float bendLengthPerRow);
    bool appliesTo(const Tube &tube) const { return tube.address.row >= firstRow && tube.address.row <= lastRow; }
};

/// The landmarks that apply to a range of rows of a component.
class LandmarkSet
{
public:
    int number = 0;
    /// Growth of the U-bend's length per row, in the unit of pos.
    float bendLengthPerRow = 0;
    QList<Landmark> landmarks;

    int numLand() const { return int(landmarks.size()); }
    const Landmark &operator[](int index) const { return landmarks[index]; }
    /// First landmark of exactly that name, or -1.
    int find(QStringView name) const;
    bool appliesTo(const Tube &tube) const { return tube.address.row >= firstRow && tube.address.row <= lastRow; }
    int firstRow = 0; ///< rows that the set applies to, both included
    int lastRow = 999;
};

} // namespace ellery
