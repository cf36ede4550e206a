#pragma once
#include <ellery/SteamGen.h>
#include <ellery/TubeStates.h>

#include <vector>

namespace plans {

/// The tubes that are not selected, to be taken around one place after the other; what was taken is never looked at
/// again. So a wide box costs no more than a small one. Tubes without a finite place are left out.
class UntakenTubes
{
public:
    UntakenTubes(const ellery::SteamGen &steamGen, const ellery::TubeStates &states);

    bool isEmpty() const { return m_left == 0; }
    /// Takes the tubes whose distance (square root of dx² + dy² in double precision) is not greater than the radius;
    /// ascending indices.
    QList<qint32> take(double x, double y, double radius);

private:
    struct Entry
    {
        double x;
        double y;
        qint32 tube;
        int strip;
    };
    /// Horizontal band of the map: its entries stand from left to right.
    struct Strip
    {
        double bottom = 0;
        double top = 0;
        size_t begin = 0;
        size_t end = 0;
    };
    int stripAt(double y) const;
    void takeFrom(const Strip &strip, double x, double y, double radius, double reach, QList<qint32> &taken);
    size_t firstLeft(size_t place);

    std::vector<Entry> m_entries; ///< strip by strip
    std::vector<Strip> m_strips;
    std::vector<size_t> m_next; ///< a place itself while it is there, else one further on; shortened when walked
    double m_bottom = 0;
    double m_height = 1; ///< of a strip
    qsizetype m_left = 0;
};

} // namespace plans
