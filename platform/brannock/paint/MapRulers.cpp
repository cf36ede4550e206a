#include "MapRulers.h"

#include <array>
#include <cmath>
#include <QFontMetricsF>
#include <QMarginsF>
#include <QPainter>
#include <QPainterPath>

namespace brannock {

using ellery::Axis;

namespace {

/// Marks closer than this share of the text height would merge into a bar.
constexpr double kClosestMarks = 0.25;

const TickAxis *straightAxis(const MapScene &scene, bool vertical)
{
    for (const TickAxis *axis : {&scene.rows(), &scene.cols()}) {
        if (axis->straight && axis->vertical == vertical && !axis->ticks.empty())
            return axis;
    }
    return nullptr;
}

/// Tries one step. Returns an empty list if labels would be too close or hardly any would remain.
std::vector<bool> withStep(const std::vector<Tick> &ticks, const std::vector<double> &places, double room, int step)
{
    std::vector<bool> chosen(ticks.size(), false);
    size_t count = 0;
    double last = 0;
    for (size_t i = 0; i < ticks.size(); ++i) {
        if (ticks[i].number % step != 0)
            continue;
        if (count > 0 && std::abs(places[i] - last) < room)
            return {};
        chosen[i] = true;
        last = places[i];
        ++count;
    }
    return count * size_t(step) * 2 >= ticks.size() ? chosen : std::vector<bool>();
}

void addEnds(std::vector<bool> &chosen, const std::vector<double> &places, double room)
{
    const size_t count = chosen.size();
    const auto free = [&](size_t at) {
        for (size_t i = 0; i < count; ++i) {
            if (chosen[i] && std::abs(places[i] - places[at]) < room)
                return false;
        }
        return true;
    };
    for (const size_t end : {size_t(0), count - 1}) {
        if (!chosen[end] && free(end))
            chosen[end] = true;
    }
}

} // namespace

std::vector<bool> thinnedLabels(const std::vector<Tick> &ticks, const std::vector<double> &places, double room)
{
    static constexpr std::array kSteps = {1, 2, 5, 10, 20, 25, 50, 100, 200, 250, 500, 1000};
    if (ticks.empty())
        return {};
    std::vector<bool> chosen;
    for (const int step : kSteps) {
        chosen = withStep(ticks, places, room, step);
        if (!chosen.empty())
            break;
    }
    chosen.resize(ticks.size(), false);
    addEnds(chosen, places, room);
    return chosen;
}

MapRulers::MapRulers(const MapScene &scene, const QFont &font, const QPaintDevice *device)
    : m_font(font)
{
    const QFontMetricsF metrics =
        device ? QFontMetricsF(font, const_cast<QPaintDevice *>(device)) : QFontMetricsF(font);
    m_height = metrics.height();
    m_tick = m_height * 0.35;
    m_gap = m_height * 0.25;
    const auto measure = [&](const TickAxis &axis, AxisText &text) {
        for (const Tick &tick : axis.ticks) {
            text.widths.push_back(metrics.horizontalAdvance(tick.label));
            text.widest = std::max(text.widest, text.widths.back());
        }
    };
    measure(scene.rows(), m_rows);
    measure(scene.cols(), m_cols);
}

QMarginsF MapRulers::margins() const
{
    const double upright = std::max(m_rows.widest, m_cols.widest) + m_tick + 3 * m_gap;
    const double level = m_height + m_tick + 3 * m_gap;
    return {upright, 2 * m_gap, 2 * m_gap, level};
}

void MapRulers::placeStrips(const MapScene &scene, const MapView &view, Layout &layout) const
{
    const QRectF sheet = view.toView(scene.bounds());
    const QMarginsF room = margins();
    const double width = view.size.width();
    const double height = view.size.height();
    if (straightAxis(scene, false)) {
        const double top = std::min(sheet.bottom(), height - room.bottom());
        layout.levelPinned = sheet.bottom() > height - room.bottom() + 0.5;
        layout.level = QRectF(0, top, width, room.bottom());
    }
    if (straightAxis(scene, true)) {
        const double left = std::max(sheet.left() - room.left(), 0.0);
        layout.uprightPinned = sheet.left() - room.left() < -0.5;
        const double bottom = layout.levelPinned ? layout.level.top() : height;
        layout.upright = QRectF(left, 0, room.left(), bottom);
    }
}

QRectF MapRulers::labelRect(const Layout &layout, bool vertical, double place, double width) const
{
    if (vertical) {
        const double right = layout.upright.right() - m_tick - 2 * m_gap;
        return QRectF(right - width, place - m_height / 2, width, m_height);
    }
    return QRectF(place - width / 2, layout.level.top() + m_tick + 2 * m_gap, width, m_height);
}

/// The range of a ruler on which labels may be placed.
static std::pair<double, double> stretch(const MapRulers::Layout &layout, const MapView &view, bool vertical)
{
    if (vertical)
        return {0, layout.upright.bottom()};
    return {layout.uprightPinned ? layout.upright.right() : 0, view.size.width()};
}

void MapRulers::layoutStraight(const TickAxis &axis, Axis kind, const AxisText &text, const MapView &view,
                               Layout &layout) const
{
    const bool vertical = axis.vertical;
    std::vector<double> places;
    places.reserve(axis.ticks.size());
    for (const Tick &tick : axis.ticks) {
        const QPointF point = view.toView(tick.pos, tick.pos);
        places.push_back(vertical ? point.y() : point.x());
    }
    const std::vector<bool> labelled =
        thinnedLabels(axis.ticks, places, vertical ? m_height : text.widest + m_height * 0.5);
    const double span = std::abs(places.back() - places.front());
    const bool allMarks = span >= kClosestMarks * m_height * double(places.size());
    const auto [low, high] = stretch(layout, view, vertical);
    const double base = vertical ? layout.upright.right() - m_gap : layout.level.top() + m_gap;
    for (size_t i = 0; i < places.size(); ++i) {
        if (places[i] < low || places[i] > high || !(labelled[i] || allMarks))
            continue;
        const double length = labelled[i] ? m_tick : m_tick * 0.5;
        layout.marks.push_back(vertical ? QLineF(base - length, places[i], base, places[i])
                                        : QLineF(places[i], base, places[i], base + length));
        const QRectF rect = labelRect(layout, vertical, places[i], text.widths[i]);
        const bool fits =
            vertical ? rect.top() >= low && rect.bottom() <= high : rect.left() >= low && rect.right() <= high;
        if (labelled[i] && fits)
            layout.labels.push_back({axis.ticks[i].label, rect, kind, axis.ticks[i].number});
    }
}

static MapRulers::Ground groundOf(const QRectF &label, const QPolygonF &sheet)
{
    int inside = 0;
    for (const QPointF &corner : {label.topLeft(), label.topRight(), label.bottomLeft(), label.bottomRight()})
        inside += sheet.containsPoint(corner, Qt::WindingFill) ? 1 : 0;
    return inside == 0 ? MapRulers::Ground::Beside : inside == 4 ? MapRulers::Ground::Sheet : MapRulers::Ground::Edge;
}

void MapRulers::layoutAskew(const TickAxis &axis, Axis kind, const AxisText &text, const MapScene &scene,
                            const MapView &view, Layout &layout) const
{
    const auto crowded = [&](const QRectF &rect) {
        return std::any_of(layout.labels.begin(), layout.labels.end(), [&](const Label &label) {
            return label.rect.adjusted(-m_gap, 0, m_gap, 0).intersects(rect);
        });
    };
    const QRectF viewport(QPointF(0, 0), view.size);
    QPolygonF sheet;
    for (const QPointF &point : scene.outline())
        sheet.append(view.toView(point));
    for (size_t i = 0; i < axis.ticks.size(); ++i) {
        const Tick &tick = axis.ticks[i];
        const QPointF outward(tick.outward.x() * view.xOrientation, -tick.outward.y() * view.yOrientation);
        const double width = text.widths[i];
        const double half = std::abs(outward.x()) * width / 2 + std::abs(outward.y()) * m_height / 2;
        const QPointF centre = view.toView(tick.at) + outward * (scene.pitch() * view.scale * 0.7 + m_gap + half);
        const QRectF rect(centre.x() - width / 2, centre.y() - m_height / 2, width, m_height);
        if (viewport.contains(rect) && !crowded(rect))
            layout.labels.push_back({tick.label, rect, kind, tick.number, groundOf(rect, sheet)});
    }
    layout.sheet = sheet;
}

MapRulers::Layout MapRulers::layout(const MapScene &scene, const MapView &view) const
{
    Layout layout;
    placeStrips(scene, view, layout);
    const auto place = [&](const TickAxis &axis, Axis kind, const AxisText &text) {
        if (axis.ticks.empty())
            return;
        if (axis.straight)
            layoutStraight(axis, kind, text, view, layout);
        else
            layoutAskew(axis, kind, text, scene, view, layout);
    };
    place(scene.rows(), Axis::Row, m_rows);
    place(scene.cols(), Axis::Col, m_cols);
    return layout;
}

static QPainterPath sheetPath(const MapRulers::Layout &layout)
{
    QPainterPath path;
    path.addPolygon(layout.sheet);
    path.closeSubpath();
    return path;
}

MapRulers::Colours MapRulers::Colours::of(const MapOptions &options, const QColor &surroundings)
{
    constexpr double kTextContrast = 4.5;
    const QColor tick = fromColourRef(options.tickColour);
    return {readable(tick, surroundings, kTextContrast), surroundings,
            readable(tick, fromColourRef(options.mapColour), kTextContrast)};
}

void MapRulers::paint(QPainter &painter, const Layout &layout, const Colours &colours, const QRegion &exposed) const
{
    painter.save();
    for (const auto &[strip, pinned] :
         {std::pair(layout.level, layout.levelPinned), {layout.upright, layout.uprightPinned}}) {
        if (pinned && exposed.intersects(strip.toAlignedRect()))
            painter.fillRect(strip, colours.strip);
    }
    painter.setPen(QPen(mixed(colours.tick, colours.strip, 0.35), std::max(1.0, m_height * 0.06)));
    painter.setRenderHint(QPainter::Antialiasing, false);
    for (const QLineF &mark : layout.marks) {
        if (exposed.intersects(QRectF(mark.p1(), mark.p2()).adjusted(-1, -1, 1, 1).toAlignedRect()))
            painter.drawLine(mark);
    }
    painter.setFont(m_font);
    const auto draw = [&](const Label &label, const QColor &colour) {
        painter.setPen(colour);
        painter.drawText(label.rect, Qt::AlignCenter | Qt::TextDontClip, label.text);
    };
    for (const Label &label : layout.labels) {
        if (!exposed.intersects(label.rect.toAlignedRect()))
            continue;
        const bool isOnEdge = label.ground == Ground::Edge && colours.tick != colours.onSheet;
        draw(label, label.ground == Ground::Sheet ? colours.onSheet : colours.tick);
        if (!isOnEdge)
            continue;
        painter.save();
        painter.setClipPath(sheetPath(layout), Qt::IntersectClip);
        draw(label, colours.onSheet);
        painter.restore();
    }
    painter.restore();
}

MapRulers::Label MapRulers::labelOf(const MapScene &scene, const MapView &view, const Layout &layout, Axis axis,
                                    int tube) const
{
    const TickAxis &ticks = axis == Axis::Row ? scene.rows() : scene.cols();
    if (!ticks.straight || tube < 0)
        return {};
    const auto &address = scene.tube(tube).address;
    const int number = axis == Axis::Row ? address.row : address.col;
    const QPointF position = scene.position(tube);
    const double pos = ticks.vertical ? position.y() : position.x();
    size_t best = ticks.ticks.size();
    for (size_t i = 0; i < ticks.ticks.size(); ++i) {
        const bool nearer =
            best == ticks.ticks.size() || std::abs(ticks.ticks[i].pos - pos) < std::abs(ticks.ticks[best].pos - pos);
        if (ticks.ticks[i].number == number && nearer)
            best = i;
    }
    if (best == ticks.ticks.size())
        return {};
    const QPointF point = view.toView(ticks.ticks[best].pos, ticks.ticks[best].pos);
    const double place = ticks.vertical ? point.y() : point.x();
    const auto [low, high] = stretch(layout, view, ticks.vertical);
    if (place < low || place > high)
        return {};
    const auto &widths = axis == Axis::Row ? m_rows.widths : m_cols.widths;
    return {ticks.ticks[best].label, labelRect(layout, ticks.vertical, place, widths[best]), axis, number};
}

} // namespace brannock
