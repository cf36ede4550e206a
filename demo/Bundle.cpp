#include "Bundle.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <QSet>

using namespace Qt::StringLiterals;
using ellery::Axis;
using ellery::SteamGen;
using ellery::Tube;

namespace demo {

namespace {

constexpr double kSquarePitch = 1.25;     // in inches
constexpr double kTriangularPitch = 1.0;  //
constexpr double kOnceThroughPitch = 0.9; //
constexpr double kLane = 1.0;             // half of the divider lane, in pitches
constexpr double kDefaultRadius = 47.2;   // for 46 rows and 94 columns, in pitches
constexpr int kDefaultTriangular = 3400;
constexpr int kDefaultOnceThrough = 15500;

/// A position of the lattice. k counts half pitches from the centre line; -k is the mirrored position.
struct Place
{
    int k = 0;
    int row = 0;
    double x = 0; // in pitches
    double y = 0;
    bool rod = false;
};

class Lattice
{
public:
    Lattice(Kind kind, bool triangular)
        : m_round(kind == Kind::OnceThrough)
        , m_triangular(triangular)
    {
    }

    double rowHeight() const { return m_triangular ? std::numbers::sqrt3 / 2 : 1; }
    QList<Place> within(double radius) const;
    /// Radius that contains about that many positions.
    double radiusFor(int places) const
    {
        const double area = double(places) * rowHeight() * (m_round ? 1 : 2);
        return std::sqrt(area / std::numbers::pi);
    }
    QList<std::pair<int, int>> neighbours(const Place &place) const
    {
        if (m_triangular) {
            return {{place.k - 2, place.row},     {place.k + 2, place.row},     {place.k - 1, place.row - 1},
                    {place.k + 1, place.row - 1}, {place.k - 1, place.row + 1}, {place.k + 1, place.row + 1}};
        }
        return {{place.k - 2, place.row}, {place.k + 2, place.row}, {place.k, place.row - 1}, {place.k, place.row + 1}};
    }

private:
    /// The positions of a row are all at even or all at odd half pitches from the centre line.
    int parity(int row) const { return m_triangular ? row & 1 : 1; }
    static bool isRod(int k, int row);

    bool m_round;
    bool m_triangular;
};

bool Lattice::isRod(int k, int row)
{
    constexpr int kEveryHalfPitches = 24;
    constexpr int kEveryRows = 10;
    const int fromMiddle = std::abs(k) / 2;
    return fromMiddle * 2 % kEveryHalfPitches == 16 && std::abs(row) % kEveryRows == 7;
}

QList<Place> Lattice::within(double radius) const
{
    QList<Place> places;
    const int half = int(radius / rowHeight()) + 1;
    const int firstRow = m_round ? -half : 1;
    for (int row = firstRow; row <= half; ++row) {
        const double y = m_round ? -row * rowHeight() : kLane + (row - 0.5) * rowHeight();
        if (std::abs(y) > radius)
            continue;
        const double halfWidth = std::sqrt(radius * radius - y * y);
        const int last = int(2 * halfWidth);
        for (int k = -last; k <= last; ++k) {
            if ((k & 1) == parity(row))
                places.append({k, row, k / 2.0, y, isRod(k, row)});
        }
    }
    return places;
}

/// Removes pairs of mirrored positions from the bundle's edge until at most the wanted number is left.
void cutToSize(QList<Place> &places, int wanted)
{
    std::stable_sort(places.begin(), places.end(), [](const Place &a, const Place &b) {
        const auto key = [](const Place &p) { return std::tuple(p.x * p.x + p.y * p.y, std::abs(p.k), p.row); };
        return key(a) < key(b);
    });
    qsizetype tubes = std::count_if(places.begin(), places.end(), [](const Place &place) { return !place.rod; });
    while (tubes > wanted && !places.isEmpty()) {
        const Place last = places.takeLast();
        tubes -= last.rod ? 0 : 1;
        if (last.k != 0) {
            places.removeLast(); // its mirrored position, which is next to it in the sort order
            tubes -= last.rod ? 0 : 1;
        }
    }
    std::sort(places.begin(), places.end(),
              [](const Place &a, const Place &b) { return std::tie(a.row, a.k) < std::tie(b.row, b.k); });
}

QList<Place> choosePlaces(const DemoOptions &options, const Lattice &lattice, bool triangular)
{
    const bool round = options.kind == Kind::OnceThrough;
    int wanted = options.tubes;
    if (wanted == 0 && !round && !triangular)
        return lattice.within(kDefaultRadius);
    if (wanted == 0)
        wanted = round ? kDefaultOnceThrough : kDefaultTriangular;
    constexpr double kStep = 0.25;
    for (double radius = lattice.radiusFor(wanted);; radius += kStep) {
        QList<Place> places = lattice.within(radius);
        if (std::count_if(places.begin(), places.end(), [](const Place &place) { return !place.rod; }) >= wanted) {
            cutToSize(places, wanted);
            return places;
        }
    }
}

int sectorOf(const Place &place, int sections)
{
    // Clockwise from the top.
    const double turn = std::atan2(place.x, place.y) / (2 * std::numbers::pi);
    const double share = turn < 0 ? turn + 1 : turn;
    return std::min(int(share * sections), sections - 1);
}

QList<Tube> numberTubes(const QList<Place> &places, const QList<bool> &edge, const DemoOptions &options,
                        bool triangular, double pitch)
{
    const bool round = options.kind == Kind::OnceThrough;
    const int firstRow = places.first().row; // sorted by row
    const auto [leftmost, rightmost] =
        std::minmax_element(places.begin(), places.end(), [](const Place &a, const Place &b) { return a.k < b.k; });
    const int firstK = leftmost->k;
    const int columns = (rightmost->k - firstK) / (triangular ? 1 : 2) + 1;
    QList<Tube> tubes;
    QHash<int, int> columnsUsed; // used columns of a row, by section
    int row = -1;
    for (int i = 0; i < places.size(); ++i) {
        const Place &place = places[i];
        if (place.row != row) {
            columnsUsed.clear();
            row = place.row;
        }
        Tube tube;
        tube.address.row = qint16(place.row - firstRow + 1);
        const int bandColumn = (place.k - firstK) / (triangular ? 1 : 2) + 1;
        if (options.sections > 1)
            tube.address.sec =
                qint16(1 + (round ? sectorOf(place, options.sections) : (bandColumn - 1) * options.sections / columns));
        // The column number of a stay rod stays unused, so that neighbouring columns have neighbouring numbers.
        tube.address.col = qint16(round ? ++columnsUsed[tube.address.sec] : bandColumn);
        tube.x = float(place.x * pitch);
        tube.y = float(place.y * pitch);
        tube.periphery = edge[i];
        if (!place.rod)
            tubes.append(tube);
    }
    std::sort(tubes.begin(), tubes.end(), [](const Tube &a, const Tube &b) { return a.address < b.address; });
    return tubes;
}

QList<bool> edges(const QList<Place> &places, const Lattice &lattice, bool round)
{
    QSet<std::pair<int, int>> taken;
    for (const Place &place : places)
        taken.insert({place.k, place.row});
    QList<bool> edge;
    for (const Place &place : places) {
        const auto isOutside = [&](const std::pair<int, int> &other) {
            // The tubes along the divider lane do not count as edge tubes.
            return !taken.contains(other) && (round || other.second >= 1);
        };
        const auto around = lattice.neighbours(place);
        edge.append(std::any_of(around.begin(), around.end(), isOutside));
    }
    return edge;
}

} // namespace

SteamGen makeBundle(const DemoOptions &options)
{
    const bool round = options.kind == Kind::OnceThrough;
    const bool triangular = round || options.triangular;
    const Lattice lattice(options.kind, triangular);
    const QList<Place> places = choosePlaces(options, lattice, triangular);

    SteamGen gen;
    gen.name = u"SGA"_s;
    gen.triangular = triangular;
    gen.pitch = float(round ? kOnceThroughPitch : triangular ? kTriangularPitch : kSquarePitch);
    gen.setTubes(numberTubes(places, edges(places, lattice, round), options, triangular, double(gen.pitch)));
    for (const Place &place : places) {
        if (place.rod)
            gen.stayRods.append({float(place.x * double(gen.pitch)), float(place.y * double(gen.pitch)), 0});
    }
    if (options.sections > 1) {
        gen.labels[int(Axis::Sec)].append(QString()); // sections count from 1
        for (int section = 0; section < options.sections; ++section)
            gen.labels[int(Axis::Sec)].append(QString(QChar(char16_t(u'A' + section))));
    }
    gen.modelName =
        u"%1-%2x%3"_s.arg(round ? u"OT"_s : u"UB"_s).arg(gen.maxNumber(Axis::Row)).arg(gen.maxNumber(Axis::Col));
    return gen;
}

} // namespace demo
