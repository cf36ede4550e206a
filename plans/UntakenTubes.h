#pragma once
#include <ellery/SteamGen.h>
#include <ellery/TubeStates.h>

#include <vector>

namespace plans {

/// The tubes that are not selected, for taking those around one place after another. A tube that was taken is not
/// visited again, so a large radius takes no longer than a small one. Tubes without finite coordinates are left out.
class UntakenTubes
{
public:
    UntakenTubes(const ellery::SteamGen &steamGen, const ellery::TubeStates &states);

    bool isEmpty() const { return m_left == 0; }
    /// Takes the tubes whose distance (square root of dx² + dy² in double precision) is at most the radius. Returns
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
    /// Horizontal band of the map. Its entries are sorted from left to right.
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

    std::vector<Entry> m_entries; ///< sorted by strip
    std::vector<Strip> m_strips;
    std::vector<size_t> m_next; ///< the place itself if not taken, otherwise a later one; shortened during searches
    double m_bottom = 0;
    double m_height = 1; ///< height of a strip
    qsizetype m_left = 0;
};

} // namespace plans
