#pragma once
#include <cmath>
#include <ellery/SteamGen.h>
#include <ellery/TubeStates.h>
#include <random>
#include <support/Marks.h>

namespace sample {

/// One leg of a recirculating steam generator with a U-bend: half a disc of rows above each other, on a triangular or a
/// square pitch, with gaps for stay rods. The usual 46 rows and 94 columns have about 3,400 tubes.
inline ellery::SteamGen uBend(int rows = 46, int cols = 94, bool triangular = false)
{
    ellery::SteamGen steamGen;
    steamGen.name = QStringLiteral("SGA");
    steamGen.modelName = QStringLiteral("UB-51");
    steamGen.triangular = triangular;
    steamGen.pitch = 1.281f;
    const double stepX = steamGen.pitch;
    const double stepY = steamGen.pitch * (triangular ? std::sqrt(3.0) / 2 : 1);
    const double middle = (cols + 1) / 2.0;
    const double radius = std::max(rows * stepY, cols / 2.0 * stepX) + 0.3 * stepX;
    QList<ellery::Tube> tubes;
    for (int row = 1; row <= rows; ++row) {
        for (int col = 1; col <= cols; ++col) {
            ellery::Tube tube;
            tube.address = {0, qint16(row), qint16(col)};
            tube.x = float((col - middle + (triangular && row % 2 ? 0.5 : 0)) * stepX);
            tube.y = float((row + 0.5) * stepY);
            if (std::hypot(double(tube.x), double(tube.y)) > radius)
                continue;
            if (row % 12 == 6 && col % 14 == 5) {
                steamGen.stayRods.append({tube.x, tube.y, 0});
                continue;
            }
            tube.periphery = std::hypot(double(tube.x), double(tube.y)) > radius - stepX;
            tubes.append(tube);
        }
    }
    steamGen.setTubes(tubes);
    return steamGen;
}

/// A plain block of rows x cols tubes, one unit apart, row and column 0 at the origin.
inline ellery::SteamGen block(int rows, int cols)
{
    ellery::SteamGen steamGen;
    QList<ellery::Tube> tubes;
    for (int row = 0; row < rows; ++row) {
        for (int col = 0; col < cols; ++col)
            tubes.append({{0, qint16(row), qint16(col)}, float(col), float(row), false});
    }
    steamGen.setTubes(tubes);
    return steamGen;
}

/// Marks and selects tubes in shares as an inspection plan does.
inline ellery::TubeStates markLikeAPlan(const ellery::SteamGen &steamGen)
{
    ellery::TubeStates tubes(steamGen.numTube());
    std::mt19937 random(7);
    const auto chance = [&](double share) { return double(random()) < share * double(std::mt19937::max()); };
    for (int i = 0; i < steamGen.numTube(); ++i) {
        const ellery::Tube &tube = steamGen[i];
        if (chance(0.012))
            tubes.setMark(i, markOf(u'\u25CF', 0x0000D0));
        else if (tube.periphery)
            tubes.setMark(i, markOf(u'P', 0xB27200));
        else if (tube.address.row % 10 == 0 && tube.address.col % 2 == 0)
            tubes.setMark(i, markOf(u'B', 0x73D09E));
        else if (chance(0.2))
            tubes.setMark(i, markOf(u'A', 0x009FE6));
        else if (chance(0.03))
            tubes.setMark(i, markOf(u'W', 0xA779CC));
        if (tube.address.row > 30 && tube.address.row < 36 && tube.address.col > 40 && tube.address.col < 52)
            tubes.setSelected(i, true);
        if (chance(0.01))
            tubes.setSelected(i, true);
    }
    return tubes;
}

} // namespace sample
