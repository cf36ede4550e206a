#include "TickAxis.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace brannock {

using ellery::Axis;
using ellery::Tube;

namespace {

/// Summary of the tubes of one row (or column) of one section.
struct Line
{
    int count = 0;
    double sumX = 0, sumY = 0, sumXX = 0, sumYY = 0;
    int firstAcross = 0, lastAcross = 0;
    QPointF first, last;

    void add(const Tube &tube, int across)
    {
        const QPointF point(tube.x, tube.y);
        if (count == 0 || across < firstAcross) {
            firstAcross = across;
            first = point;
        }
        if (count == 0 || across > lastAcross) {
            lastAcross = across;
            last = point;
        }
        ++count;
        sumX += point.x();
        sumY += point.y();
        sumXX += point.x() * point.x();
        sumYY += point.y() * point.y();
    }
    static double deviation(double sum, double squares, int n)
    {
        return std::sqrt(std::max(0.0, squares / n - (sum / n) * (sum / n)));
    }
    double deviationX() const { return deviation(sumX, sumXX, count); }
    double deviationY() const { return deviation(sumY, sumYY, count); }
};

using Lines = std::map<std::pair<int, int>, Line>; // by number, then section

Lines collectLines(const ellery::SteamGen &steamGen, Axis axis)
{
    Lines lines;
    for (const Tube &tube : steamGen.tubes()) {
        const auto &address = tube.address;
        const bool rows = axis == Axis::Row;
        lines[{rows ? address.row : address.col, address.sec}].add(tube, rows ? address.col : address.row);
    }
    return lines;
}

QPointF outwardOf(const Line &line)
{
    const QPointF along = line.first - line.last;
    const double length = std::hypot(along.x(), along.y());
    return length > 0 ? along / length : QPointF(-1, 0);
}

/// Sections that continue each other's rows give equal labels at the same position: keeps one of them.
void dropDoubles(std::vector<Tick> &ticks, double tolerance)
{
    const auto same = [tolerance](const Tick &a, const Tick &b) {
        return a.label == b.label && std::abs(a.pos - b.pos) < tolerance;
    };
    ticks.erase(std::unique(ticks.begin(), ticks.end(), same), ticks.end());
}

} // namespace

TickAxis makeTickAxis(const ellery::SteamGen &steamGen, Axis axis, double pitch)
{
    TickAxis result;
    const Lines lines = collectLines(steamGen, axis);
    if (lines.empty())
        return result;
    double alongX = 0;
    double alongY = 0;
    for (const auto &[key, line] : lines) {
        alongX += line.deviationX();
        alongY += line.deviationY();
    }
    result.vertical = alongY < alongX || (alongY == alongX && axis == Axis::Row);
    // In a triangular pitch the tubes of a column alternate by half a pitch from row to row; it still counts as
    // straight.
    result.straight = std::min(alongX, alongY) / double(lines.size()) < 0.75 * pitch;
    for (const auto &[key, line] : lines) {
        const QString label = steamGen.tubeLabel(axis, key.first);
        if (label.isEmpty())
            continue;
        const double pos = (result.vertical ? line.sumY : line.sumX) / line.count;
        result.ticks.push_back({key.first, label, pos, line.first, outwardOf(line)});
    }
    if (result.straight) {
        std::stable_sort(result.ticks.begin(), result.ticks.end(),
                         [](const Tick &a, const Tick &b) { return a.pos < b.pos; });
        dropDoubles(result.ticks, pitch / 4);
    }
    return result;
}

} // namespace brannock
