#pragma once
#include <ellery/SteamGen.h>
#include <ellery/TubeStates.h>

#include <cmath>

/// A round bundle of about this many tubes on a triangular pitch.
inline ellery::SteamGen bundle(int count)
{
    const double step = std::sqrt(3.0) / 2;
    const double radius = std::sqrt(count * step / std::acos(-1.0));
    QList<ellery::Tube> tubes;
    for (int row = 0; row <= int(2 * radius / step); ++row) {
        for (int col = 0; col <= int(2 * radius) + 1; ++col) {
            const double x = col + (row % 2 ? 0.5 : 0) - radius;
            const double y = row * step - radius;
            if (std::hypot(x, y) <= radius)
                tubes.append({{0, qint16(row), qint16(col)}, float(x), float(y), false});
        }
    }
    ellery::SteamGen steamGen;
    steamGen.setTubes(tubes);
    return steamGen;
}

/// Every tube marked: 8 colours, 26 symbols.
inline ellery::TubeStates marks(const ellery::SteamGen &steamGen)
{
    static constexpr quint32 kColours[] = {0x009FE6, 0xE9B456, 0x739E00, 0x42E4F0,
                                           0xB27200, 0x005ED5, 0xA779CC, 0x0000D0};
    ellery::TubeStates tubes(steamGen.numTube());
    for (int i = 0; i < tubes.count(); ++i)
        tubes.setMark(i, {ellery::Symbol(char16_t(u'A' + i % 26)), tarnwick::ColourRef(kColours[i / 26 % 8])});
    return tubes;
}
