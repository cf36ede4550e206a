#include "MapPainter.h"

#include <QFontMetricsF>
#include <cmath>

namespace brannock {

using namespace Qt::StringLiterals;

namespace {

/// Above this diameter a picture costs more than the few discs that are visible then.
constexpr double kLargestSprite = 56;
constexpr size_t kFragmentsPerCall = 4096;

/// Whole pixels for the upper left corner of an even or odd picture. The small shift keeps rows that fall on the middle between two
/// pixels together, whatever the last bits of their coordinates are.
QPointF snapped(const QPointF &centre, bool odd)
{
    const double half = odd ? 0.5 : 0;
    return {std::floor(centre.x() - half + 0.5 + 1e-6) + half, std::floor(centre.y() - half + 0.5 + 1e-6) + half};
}

bool isOdd(const TubeArt &art)
{
    return int(art.diameter()) % 2 != 0;
}

template <typename Visitor>
void visitRods(const MapScene &scene, const MapView &view, const QRectF &exposed, double reach, Visitor &&visitor)
{
    const QRectF area = exposed.adjusted(-reach, -reach, reach, reach);
    for (const ellery::Mark &rod : scene.stayRods()) {
        const QPointF centre = view.toView(rod.x, rod.y);
        if (area.contains(centre))
            visitor(centre);
    }
}

void paintWatermark(QPainter &painter, const MapScene &scene, const MapView &view)
{
    if (scene.watermark.isEmpty())
        return;
    const QRectF sheet = view.toView(scene.bounds());
    QFont font(u"Arial"_s);
    font.setBold(true);
    font.setPixelSize(100);
    const QRectF ink = QFontMetricsF(font).boundingRect(scene.watermark);
    const double size = 100 * std::min(sheet.width() * 0.8 / std::max(1.0, ink.width()),
                                       sheet.height() * 0.5 / std::max(1.0, ink.height()));
    font.setPointSizeF(std::max(0.5, size * 72 / std::max(1, painter.device()->logicalDpiY())));
    painter.setFont(font);
    painter.setPen(fromColourRef(scene.options.watermarkColour));
    painter.drawText(sheet, Qt::AlignCenter | Qt::TextDontClip, scene.watermark);
}

} // namespace

/// The outline is convex: what holds the corners holds the rectangle.
static bool coversWholly(const QPolygonF &outline, const QRectF &rect)
{
    const auto holds = [&](const QPointF &point) { return outline.containsPoint(point, Qt::WindingFill); };
    return holds(rect.topLeft()) && holds(rect.topRight()) && holds(rect.bottomLeft()) && holds(rect.bottomRight());
}

static void paintTubesheet(QPainter &painter, const MapScene &scene, const MapView &view, const QRectF &exposed, double line)
{
    QPolygonF outline;
    outline.reserve(scene.outline().size());
    for (const QPointF &point : scene.outline())
        outline.append(view.toView(point));
    const QColor map = fromColourRef(scene.options.mapColour);
    if (coversWholly(outline, exposed.adjusted(-line, -line, line, line))) {
        painter.fillRect(exposed, map);
        return;
    }
    painter.setPen(QPen(mixed(fromColourRef(scene.options.fillColour), map, 0.45), line, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin));
    painter.setBrush(map);
    painter.drawPolygon(outline);
}

TubeArt MapPainter::artFor(const MapScene &scene, const MapView &view, Target target)
{
    const double pitch = scene.pitch() * view.scale;
    return target == Target::Pixels ? TubeArt::forPixels(scene.options, pitch) : TubeArt::forVectors(scene.options, pitch);
}

std::vector<MapPainter::Placed> MapPainter::collect(const MapScene &scene, const MapView &view, const QRectF &exposed,
                                                    const TubeArt &art, Target target)
{
    const double reach = art.reach() + 1;
    const QRectF area = view.toMap(exposed.adjusted(-reach, -reach, reach, reach));
    std::vector<Placed> placed;
    const bool pixels = target == Target::Pixels;
    const bool odd = isOdd(art);
    scene.grid().visit(area.left(), area.top(), area.right(), area.bottom(), [&](const ellery::TubeGrid::Entry &entry) {
        const QPointF centre = view.toView(double(entry.x), double(entry.y));
        placed.push_back({pixels ? snapped(centre, odd) : centre, scene.look(entry.tube)});
    });
    return placed;
}

MapPainter::Result MapPainter::paint(QPainter &painter, const MapScene &scene, const MapView &view, const QRectF &exposed,
                                     Target target)
{
    Result result;
    if (scene.isEmpty() && scene.stayRods().isEmpty())
        return result;
    const TubeArt art = artFor(scene, view, target);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    paintTubesheet(painter, scene, view, exposed, std::max(1.0, art.diameter() * 0.06));
    paintWatermark(painter, scene, view);
    visitRods(scene, view, exposed, art.reach(), [&](const QPointF &centre) {
        art.paintStayRod(painter, target == Target::Pixels ? snapped(centre, isOdd(art)) : centre);
    });
    paintPlaced(painter, scene, art, collect(scene, view, exposed, art, target), target, result);
    painter.restore();
    return result;
}

void MapPainter::paintTubes(QPainter &painter, const MapScene &scene, const MapView &view, const QList<qint32> &tubes)
{
    const TubeArt art = artFor(scene, view, Target::Pixels);
    std::vector<Placed> placed;
    const double reach = art.reach();
    const QRectF area = QRectF(QPointF(0, 0), view.size).adjusted(-reach, -reach, reach, reach);
    for (const qint32 tube : tubes) {
        const QPointF centre = snapped(view.toView(scene.position(tube)), isOdd(art));
        if (area.contains(centre))
            placed.push_back({centre, scene.look(tube)});
    }
    Result result;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    paintPlaced(painter, scene, art, placed, Target::Pixels, result);
    painter.restore();
}

void MapPainter::paintPlaced(QPainter &painter, const MapScene &scene, const TubeArt &art, const std::vector<Placed> &placed,
                             Target target, Result &result)
{
    result.tubes = int(placed.size());
    result.symbols = art.detail() == TubeArt::Detail::Full;
    if (target == Target::Pixels && art.diameter() <= kLargestSprite) {
        m_atlas.prepare(scene, art);
        const bool all = std::all_of(placed.begin(), placed.end(),
                                     [&](const Placed &tube) { return m_atlas.ensure(scene, tube.look); });
        if (all) {
            result.sprites = paintSprites(painter, scene, placed);
            return;
        }
    }
    for (const Placed &tube : placed)
        art.paintTube(painter, tube.centre, scene.markOfLook(tube.look), tube.look & 1);
}

int MapPainter::paintSprites(QPainter &painter, const MapScene &, const std::vector<Placed> &placed)
{
    painter.setRenderHint(QPainter::SmoothPixmapTransform, false);
    for (size_t from = 0; from < placed.size(); from += kFragmentsPerCall) {
        const size_t end = std::min(placed.size(), from + kFragmentsPerCall);
        m_fragments.clear();
        for (size_t i = from; i < end; ++i)
            m_fragments.push_back(QPainter::PixmapFragment::create(placed[i].centre, m_atlas.source(placed[i].look)));
        painter.drawPixmapFragments(m_fragments.data(), int(m_fragments.size()), m_atlas.pixmap());
    }
    return int(placed.size());
}

QPointF MapPainter::pixelPosition(const MapScene &scene, const MapView &view, int tube)
{
    return snapped(view.toView(scene.position(tube)), isOdd(artFor(scene, view, Target::Pixels)));
}

QRectF MapPainter::tubeRect(const MapScene &scene, const MapView &view, int tube)
{
    const double reach = std::ceil(artFor(scene, view, Target::Pixels).reach()) + 1;
    const QPointF centre = view.toView(scene.position(tube));
    return QRectF(centre.x() - reach, centre.y() - reach, 2 * reach, 2 * reach);
}

QStringList MapPainter::describe(const MapScene &scene, const MapView &view, const QRectF &exposed, Target target)
{
    QStringList lines;
    const TubeArt art = artFor(scene, view, target);
    const auto place = [](const QPointF &point) {
        return u"%1,%2"_s.arg(point.x(), 0, 'f', 1).arg(point.y(), 0, 'f', 1);
    };
    const QRectF sheet = view.toView(scene.bounds());
    lines << u"sheet %1 %2"_s.arg(place(sheet.topLeft()), place(sheet.bottomRight()));
    if (!scene.watermark.isEmpty())
        lines << u"watermark \"%1\""_s.arg(scene.watermark);
    visitRods(scene, view, exposed, art.reach(), [&](const QPointF &centre) { lines << u"rod "_s + place(centre); });
    for (const Placed &tube : collect(scene, view, exposed, art, target)) {
        const TubeMark &mark = scene.markOfLook(tube.look);
        QString line = u"tube "_s + place(tube.centre);
        if (mark.symbol == 0)
            line += u" open"_s;
        else if (art.detail() == TubeArt::Detail::Full)
            line += u" '%1' %2"_s.arg(QChar(mark.symbol)).arg(fromColourRef(mark.colour).name());
        else
            line += u" "_s + fromColourRef(mark.colour).name();
        lines << (tube.look & 1 ? line + u" selected"_s : line);
    }
    return lines;
}

} // namespace brannock
