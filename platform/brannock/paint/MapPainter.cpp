#include "MapPainter.h"

#include <cmath>
#include <QFontMetricsF>

namespace brannock {

using namespace Qt::StringLiterals;

namespace {

/// Above this diameter a sprite costs more than drawing the few visible discs.
constexpr double kLargestSprite = 56;
constexpr int kBandBytes = 2 << 20;

TubeArt pixelArt(const MapScene &scene, const MapView &view)
{
    return TubeArt::forPixels(scene.options, scene.pitch() * view.scale);
}

TubeArt vectorArt(const MapScene &scene, const MapView &view)
{
    return TubeArt::forVectors(scene.options, scene.pitch() * view.scale);
}

int oddness(const TubeArt &art)
{
    return int(art.diameter()) % 2;
}

/// Twice the nearest whole pixel (even discs) or pixel centre (odd discs). The small offset keeps rows at the boundary
/// between two pixels together, despite rounding errors in their coordinates. A cast is much faster than floor(), so
/// the value is shifted above zero first; tubes that far outside are never painted.
int snapped2(double coordinate, int odd)
{
    static constexpr int kAboveZero = 1 << 20;
    return 2 * (int(coordinate - odd * 0.5 + (kAboveZero + 0.5 + 1e-6)) - kAboveZero) + odd;
}

QPointF snapped(const QPointF &centre, int odd)
{
    return QPointF(snapped2(centre.x(), odd), snapped2(centre.y(), odd)) / 2;
}

/// Map coordinates of everything that can overlap the exposed rectangle.
QRectF reached(const MapView &view, const QRectF &exposed, const TubeArt &art)
{
    const double reach = art.reach() + 1;
    return view.toMap(exposed.adjusted(-reach, -reach, reach, reach));
}

template <typename Visitor>
void visitTubes(const MapScene &scene, const QRectF &area, Visitor &&visitor)
{
    scene.grid().visit(area.left(), area.top(), area.right(), area.bottom(), visitor);
}

template <typename Visitor>
void visitRods(const MapScene &scene, const MapView &view, const QRectF &area, Visitor &&visitor)
{
    for (const ellery::Mark &rod : scene.stayRods()) {
        if (rod.x >= area.left() && rod.x <= area.right() && rod.y >= area.top() && rod.y <= area.bottom())
            visitor(view.toView(double(rod.x), double(rod.y)));
    }
}

/// The outline is convex: if it contains the corners, it contains the rectangle.
bool coversWholly(const QPolygonF &outline, const QRectF &rect)
{
    const auto holds = [&](const QPointF &point) { return outline.containsPoint(point, Qt::WindingFill); };
    return holds(rect.topLeft()) && holds(rect.topRight()) && holds(rect.bottomLeft()) && holds(rect.bottomRight());
}

QPolygonF outlineInView(const MapScene &scene, const MapView &view)
{
    QPolygonF outline;
    outline.reserve(scene.outline().size());
    for (const QPointF &point : scene.outline())
        outline.append(view.toView(point));
    return outline;
}

/// The part of a convex polygon where the coordinate (x or y, times sign) is not below the limit.
QPolygonF cut(const QPolygonF &polygon, bool alongX, double sign, double limit)
{
    QPolygonF part;
    const auto inside = [&](const QPointF &point) { return sign * (alongX ? point.x() : point.y()) - limit; };
    for (qsizetype i = 0; i < polygon.size(); ++i) {
        const QPointF &from = polygon[i];
        const QPointF &to = polygon[(i + 1) % polygon.size()];
        const double a = inside(from);
        const double b = inside(to);
        if (a >= 0)
            part.append(from);
        if ((a < 0) != (b < 0))
            part.append(from + (to - from) * (a / (a - b)));
    }
    return part;
}

/// Clips the outline to the surroundings of the rectangle, since parts far outside cost as much to paint as visible
/// ones.
QPolygonF cutTo(QPolygonF polygon, const QRectF &rect)
{
    polygon = cut(polygon, true, 1, rect.left());
    polygon = cut(polygon, true, -1, -rect.right());
    polygon = cut(polygon, false, 1, rect.top());
    return cut(polygon, false, -1, -rect.bottom());
}

/// background: none for devices with their own.
void paintSheet(QPainter &painter, const MapScene &scene, const QPolygonF &outline, const QRectF &exposed, double line,
                const QColor &background)
{
    const QColor map = fromColourRef(scene.options.mapColour);
    if (coversWholly(outline, exposed.adjusted(-line, -line, line, line))) {
        painter.fillRect(exposed, map);
        return;
    }
    if (background.isValid())
        painter.fillRect(exposed, background);
    painter.setPen(QPen(mixed(fromColourRef(scene.options.fillColour), map, 0.45), line, Qt::SolidLine, Qt::FlatCap,
                        Qt::RoundJoin));
    painter.setBrush(map);
    painter.drawPolygon(cutTo(outline, exposed.adjusted(-4 * line, -4 * line, 4 * line, 4 * line)));
}

/// The columns of the band that the sheet covers from top to bottom, including the edge line; empty if there are none.
QRect coveredPart(const QPolygonF &outline, const QRect &band, double line)
{
    double left = band.left();
    double right = band.right() + 1.0;
    for (const double y : {band.top() - line, band.bottom() + 1 + line}) {
        double from = right;
        double to = left;
        for (qsizetype i = 0; i < outline.size(); ++i) {
            const QPointF &a = outline[i];
            const QPointF &b = outline[(i + 1) % outline.size()];
            if ((a.y() <= y) == (b.y() <= y))
                continue;
            const double x = a.x() + (b.x() - a.x()) * (y - a.y()) / (b.y() - a.y());
            from = std::min(from, x);
            to = std::max(to, x);
        }
        left = std::max(left, from + line);
        right = std::min(right, to - line);
    }
    const int first = int(std::ceil(left));
    return right > left ? QRect(first, band.top(), int(right) - first, band.height()) : QRect();
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

double edgeWidth(const TubeArt &art)
{
    return std::max(1.0, art.diameter() * 0.06);
}

} // namespace

void MapPainter::paint(QPainter &painter, const MapScene &scene, const MapView &view, const QRectF &exposed)
{
    if (scene.outline().isEmpty())
        return;
    const TubeArt art = vectorArt(scene, view);
    const QRectF area = reached(view, exposed, art);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    paintSheet(painter, scene, outlineInView(scene, view), exposed, edgeWidth(art), QColor());
    paintWatermark(painter, scene, view);
    visitRods(scene, view, area, [&](const QPointF &centre) { art.paintStayRod(painter, centre); });
    visitTubes(scene, area, [&](const ellery::TubeGrid::Entry &entry) {
        const QPointF centre = view.toView(double(entry.x), double(entry.y));
        art.paintTube(painter, centre, scene.mark(entry.tube), scene.isSelected(entry.tube));
    });
    painter.restore();
}

void MapPainter::paint(QImage &image, const MapScene &scene, const MapView &view, const QRect &exposed,
                       const QColor &background)
{
    const QRect clip = exposed & image.rect();
    // Painted in bands that fit into the processor's cache, from background to tubes.
    const int height = std::max(16, kBandBytes / std::max(1, clip.width() * 4));
    for (int top = clip.top(); top <= clip.bottom(); top += height) {
        const QRect band(clip.left(), top, clip.width(), height);
        paintBand(image, scene, view, band & clip, background);
    }
}

void MapPainter::paintBand(QImage &image, const MapScene &scene, const MapView &view, const QRect &band,
                           const QColor &background)
{
    const TubeArt art = pixelArt(scene, view);
    const int odd = oddness(art);
    const QRectF area = reached(view, band, art);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    // Near the edge, background and sheet are painted over each other; where only the sheet is visible, once is enough.
    const QPolygonF &outline = outlineOf(scene, view);
    const QRect covered = coveredPart(outline, band, edgeWidth(art));
    painter.fillRect(covered, fromColourRef(scene.options.mapColour));
    for (const QRect &part : QRegion(band) - covered) {
        painter.setClipRect(part);
        paintSheet(painter, scene, outline, part, edgeWidth(art), background);
    }
    painter.setClipRect(band);
    paintWatermark(painter, scene, view);
    visitRods(scene, view, area, [&](const QPointF &centre) { art.paintStayRod(painter, snapped(centre, odd)); });
    painter.end();
    m_placed.clear();
    visitTubes(scene, area, [&](const ellery::TubeGrid::Entry &entry) {
        const QPointF centre = view.toView(double(entry.x), double(entry.y));
        m_placed.push_back({snapped2(centre.x(), odd), snapped2(centre.y(), odd), scene.look(entry.tube)});
    });
    paintPlaced(image, scene, art, band);
}

void MapPainter::paintTubes(QImage &image, const MapScene &scene, const MapView &view, const QList<qint32> &tubes)
{
    const TubeArt art = pixelArt(scene, view);
    const int odd = oddness(art);
    const QRectF area = reached(view, image.rect(), art);
    m_placed.clear();
    for (const qint32 tube : tubes) {
        const QPointF position = scene.position(tube);
        if (!area.contains(position))
            continue;
        const QPointF centre = view.toView(position);
        m_placed.push_back({snapped2(centre.x(), odd), snapped2(centre.y(), odd), scene.look(tube)});
    }
    paintPlaced(image, scene, art, image.rect());
}

const QPolygonF &MapPainter::outlineOf(const MapScene &scene, const MapView &view)
{
    // The copy keeps the points' memory allocated, so its address identifies them.
    if (m_outlinePoints.constData() != scene.outline().constData() || !(m_outlineView == view)) {
        m_outlinePoints = scene.outline();
        m_outlineView = view;
        m_outline = outlineInView(scene, view);
    }
    return m_outline;
}

bool MapPainter::standOnPlainSheet(const MapScene &scene) const
{
    // Discs do not overlap each other or the sheet's edge, but the rings of selected tubes touch their neighbours.
    return scene.watermark.isEmpty() && scene.rodsKeepClear() &&
           std::none_of(m_placed.begin(), m_placed.end(), [](const Placed &tube) { return tube.look & 1; });
}

void MapPainter::paintPlaced(QImage &image, const MapScene &scene, const TubeArt &art, const QRect &clip)
{
    bool sprites = art.diameter() <= kLargestSprite;
    const bool plain = standOnPlainSheet(scene);
    SpriteAtlas &atlas = plain ? m_plainAtlas : m_atlas;
    if (sprites) {
        atlas.prepare(scene, art, plain ? std::optional(fromColourRef(scene.options.mapColour).rgb()) : std::nullopt);
        sprites = std::all_of(m_placed.begin(), m_placed.end(),
                              [&](const Placed &tube) { return atlas.ensure(scene, tube.look); });
    }
    if (sprites) {
        const int tile = atlas.tile();
        for (const Placed &tube : m_placed)
            atlas.put(image, clip, (tube.x2 - tile) / 2, (tube.y2 - tile) / 2, tube.look);
        return;
    }
    QPainter painter(&image);
    painter.setClipRect(clip);
    painter.setRenderHint(QPainter::Antialiasing);
    for (const Placed &tube : m_placed)
        art.paintTube(painter, QPointF(tube.x2, tube.y2) / 2, scene.markOfLook(tube.look), tube.look & 1);
}

QPointF MapPainter::pixelPosition(const MapScene &scene, const MapView &view, int tube)
{
    return snapped(view.toView(scene.position(tube)), oddness(pixelArt(scene, view)));
}

QRectF MapPainter::tubeRect(const MapScene &scene, const MapView &view, int tube)
{
    const double reach = std::ceil(pixelArt(scene, view).reach()) + 1;
    const QPointF centre = view.toView(scene.position(tube));
    return QRectF(centre.x() - reach, centre.y() - reach, 2 * reach, 2 * reach);
}

QStringList MapPainter::describe(const MapScene &scene, const MapView &view, const QRectF &exposed, bool vectors)
{
    QStringList lines;
    const TubeArt art = vectors ? vectorArt(scene, view) : pixelArt(scene, view);
    const auto place = [&](const QPointF &point) {
        const QPointF at = vectors ? point : snapped(point, oddness(art));
        return u"%1,%2"_s.arg(at.x(), 0, 'f', 1).arg(at.y(), 0, 'f', 1);
    };
    const QRectF area = reached(view, exposed, art);
    if (!scene.outline().isEmpty())
        lines << u"sheet"_s;
    if (!scene.watermark.isEmpty())
        lines << u"watermark \"%1\""_s.arg(scene.watermark);
    visitRods(scene, view, area, [&](const QPointF &centre) { lines << u"rod "_s + place(centre); });
    visitTubes(scene, area, [&](const ellery::TubeGrid::Entry &entry) {
        const TubeMark &mark = scene.mark(entry.tube);
        QString line = u"tube "_s + place(view.toView(double(entry.x), double(entry.y)));
        if (mark.isOpen())
            line += u" open"_s;
        else if (art.detail() == TubeArt::Detail::Full)
            line += u" '%1' %2"_s.arg(mark.symbol.text()).arg(fromColourRef(mark.colour).name());
        else
            line += u" "_s + fromColourRef(mark.colour).name();
        lines << (scene.isSelected(entry.tube) ? line + u" selected"_s : line);
    });
    return lines;
}

} // namespace brannock
