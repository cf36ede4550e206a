#include "TubesheetMap.h"

#include <brannock/paint/WindowPixels.h>
#include <cmath>
#include <QPaintEvent>

namespace brannock {

using namespace Qt::StringLiterals;

/// Turns of the wheel closer to each other than this are one step of the view history.
static constexpr qint64 kJoinedMs = 700;
/// Steps of zooming this close to each other are one movement.
static constexpr int kZoomingMs = 150;
static constexpr double kZoomStep = 1.25;
static constexpr double kLargestPitch = 320; // pixels

TubesheetMap::TubesheetMap(QWidget *parent)
    : QWidget(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAccessibleName(u"Tubesheet map"_s);
    m_view.size = size();
    m_history.clear(m_view);
    m_zooming.setSingleShot(true);
    m_zooming.setInterval(kZoomingMs);
    connect(&m_zooming, &QTimer::timeout, this,
            [this] { m_cache.update(m_scene, m_view.scaled(devicePixelRatioF()), palette().color(QPalette::Window)); });
    updateAccessibility();
}

void TubesheetMap::setSteamGen(const ellery::SteamGen *steamGen, const ellery::TubeStates *tubes)
{
    cancelDrag();
    m_steamGen = tubes ? steamGen : nullptr;
    m_tubes = tubes;
    m_hovered = -1;
    m_cursor = -1;
    sceneChanged();
    m_view = fittedView();
    m_fitted = true;
    m_history.clear(m_view);
    updateRulers();
    update();
    Q_EMIT hovered(-1);
    Q_EMIT viewChanged();
}

void TubesheetMap::sceneChanged()
{
    if (m_steamGen) {
        m_scene.setModel(*m_steamGen, *m_tubes);
    } else {
        const MapOptions options = m_scene.options;
        m_scene.clear();
        m_scene.options = options;
    }
    m_cache.invalidate();
    QFont font = this->font();
    font.setPointSize(m_scene.options.displayTickSize);
    m_rulers = MapRulers(m_scene, font);
    updateAccessibility();
}

void TubesheetMap::setTubes(const ellery::TubeStates *tubes)
{
    m_tubes = tubes;
    refresh();
}

void TubesheetMap::refresh()
{
    if (!m_steamGen)
        return;
    if (m_steamGen->numTube() != m_scene.numTube()) {
        setSteamGen(m_steamGen, m_tubes);
        return;
    }
    const MapScene::Change change = m_scene.update(*m_tubes);
    if (change.tubes.isEmpty())
        return;
    const QRegion before = hoverRegion();
    const double ratio = devicePixelRatioF();
    for (const QRect &rect : m_cache.patch(m_scene, change)) {
        const QRectF logical(rect.x() / ratio, rect.y() / ratio, rect.width() / ratio, rect.height() / ratio);
        update(logical.toAlignedRect());
    }
    if (change.selection)
        followSelection();
    updateTip();
    update(before | hoverRegion());
    updateAccessibility();
}

void TubesheetMap::setOptions(const MapOptions &options)
{
    if (m_scene.options == options)
        return;
    m_scene.options = options;
    m_cache.invalidate();
    QFont font = this->font();
    font.setPointSize(options.displayTickSize);
    m_rulers = MapRulers(m_scene, font);
    refit();
    updateRulers();
    update();
}

void TubesheetMap::setWatermark(const QString &text)
{
    m_scene.watermark = text;
    m_cache.invalidate();
    update();
}

MapView TubesheetMap::fittedView() const
{
    MapView view = m_view;
    view.size = size();
    const QMarginsF room = m_rulers.margins() + QMarginsF(4, 4, 4, 4);
    view.fit(m_scene.bounds(), room);
    return view;
}

void TubesheetMap::refit()
{
    if (!m_fitted)
        return;
    m_view = fittedView();
    m_history.replace(m_view);
}

void TubesheetMap::boundScale(MapView &view, const QPointF &anchor) const
{
    const double smallest = fittedView().scale / 2;
    const double largest = std::max(smallest, kLargestPitch / m_scene.pitch());
    view.zoomAt(anchor, std::clamp(view.scale, smallest, largest) / view.scale);
}

void TubesheetMap::applyView(const MapView &view, bool joined)
{
    if (view == m_view)
        return;
    m_view = view;
    m_history.add({m_view, m_fitted}, joined);
    viewMoved();
}

void TubesheetMap::viewMoved()
{
    updateRulers();
    updateTip();
    update();
    Q_EMIT viewChanged();
}

void TubesheetMap::setView(const MapView &view)
{
    MapView bounded = view;
    bounded.size = size();
    if (!(bounded.scale > 0) || !std::isfinite(bounded.scale))
        return;
    boundScale(bounded, QRectF(QPointF(0, 0), bounded.size).center());
    m_fitted = false;
    applyView(bounded);
}

void TubesheetMap::fit()
{
    m_fitted = true;
    applyView(fittedView());
}

void TubesheetMap::zoomIn()
{
    zoomAt(rect().toRectF().center(), kZoomStep);
}

void TubesheetMap::zoomOut()
{
    zoomAt(rect().toRectF().center(), 1 / kZoomStep);
}

void TubesheetMap::zoomAt(const QPointF &pos, double factor)
{
    if (m_scene.isEmpty() || !(factor > 0))
        return;
    MapView view = m_view;
    view.zoomAt(pos, factor);
    boundScale(view, pos);
    m_fitted = false;
    const bool joined = m_sinceZoom.isValid() && m_sinceZoom.elapsed() < kJoinedMs;
    m_sinceZoom.start();
    applyView(view, joined);
}

void TubesheetMap::zoomTo(const QRectF &mapRect)
{
    if (m_scene.isEmpty() || !(mapRect.width() > 0) || !(mapRect.height() > 0))
        return;
    MapView view = m_view;
    view.fit(mapRect, m_rulers.margins());
    boundScale(view, rect().toRectF().center());
    m_fitted = false;
    applyView(view);
}

void TubesheetMap::ensureVisible(int tube)
{
    if (tube < 0 || tube >= m_scene.numTube())
        return;
    const double room = m_scene.pitch() * m_view.scale;
    const QMarginsF margins = m_rulers.margins();
    const QRectF inside = rect().toRectF().marginsRemoved(margins).adjusted(room, room, -room, -room);
    const QPointF at = posOf(tube);
    if (inside.contains(at) || inside.isEmpty())
        return;
    const double ratio = devicePixelRatioF();
    const auto whole = [ratio](double length) { return std::round(length * ratio) / ratio; };
    MapView view = m_view;
    view.panBy({whole(std::clamp(at.x(), inside.left(), inside.right()) - at.x()),
                whole(std::clamp(at.y(), inside.top(), inside.bottom()) - at.y())});
    m_fitted = false;
    applyView(view);
}

void TubesheetMap::previousView()
{
    if (!m_history.canGoBack())
        return;
    showStep(m_history.back());
}

void TubesheetMap::nextView()
{
    if (!m_history.canGoForward())
        return;
    showStep(m_history.forward());
}

void TubesheetMap::showStep(const ViewHistory::Step &step)
{
    m_sinceZoom.invalidate();
    m_fitted = step.isFitted;
    m_view = m_fitted ? fittedView() : step.view;
    m_history.replace(m_view);
    viewMoved();
}

void TubesheetMap::setXOrientation(int orientation)
{
    setOrientation(orientation < 0 ? -1 : 1, m_view.yOrientation);
}

void TubesheetMap::setYOrientation(int orientation)
{
    setOrientation(m_view.xOrientation, orientation < 0 ? -1 : 1);
}

void TubesheetMap::setOrientation(int x, int y)
{
    if (x == m_view.xOrientation && y == m_view.yOrientation)
        return;
    m_view.xOrientation = x;
    m_view.yOrientation = y;
    m_history.setOrientation(x, y);
    refit(); // the rulers stay on their sides
    viewMoved();
}

void TubesheetMap::updateRulers()
{
    m_rulerLayout = m_rulers.layout(m_scene, m_view);
}

void TubesheetMap::resizeEvent(QResizeEvent *)
{
    m_view.size = size();
    m_history.setSize(m_view.size);
    refit();
    updateRulers();
    updateTip();
}

void TubesheetMap::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        QFont font = this->font();
        font.setPointSize(m_scene.options.displayTickSize);
        m_rulers = MapRulers(m_scene, font);
        refit();
        updateRulers();
    }
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange)
        update();
    QWidget::changeEvent(event);
}

/// A step of zooming is shown once, so it is painted into the window and not kept: at 3840 pixels keeping it would take
/// the time of every second frame. When no further step comes the kept picture is made right.
bool TubesheetMap::paintZoomed(QPainter &painter, const QRegion &region, const MapView &pixelView)
{
    if (!m_zooming.isActive() && !m_cache.isOtherScale(pixelView))
        return false;
    if (region != QRegion(rect())) // only a part, or something lies over the map
        return false;
    QImage pixels = windowPixels(painter, rect());
    if (pixels.isNull())
        return false;
    m_cache.paintAside(pixels, m_scene, pixelView, palette().color(QPalette::Window));
    m_zooming.start();
    return true;
}

void TubesheetMap::paintCached(QPainter &painter, const QRegion &region, const MapView &pixelView)
{
    const double ratio = devicePixelRatioF();
    m_cache.update(m_scene, pixelView, palette().color(QPalette::Window));
    const QImage picture = m_cache.image();
    painter.save();
    painter.scale(1 / ratio, 1 / ratio);
    for (const QRect &rect : region) {
        const QRect pixels =
            QRectF(rect.x() * ratio, rect.y() * ratio, rect.width() * ratio, rect.height() * ratio).toAlignedRect() &
            picture.rect();
        painter.drawImage(pixels.topLeft(), picture, pixels);
    }
    painter.restore();
}

void TubesheetMap::paintEvent(QPaintEvent *event)
{
    QPainter painter(this);
    const MapView pixelView = m_view.scaled(devicePixelRatioF());
    if (!paintZoomed(painter, event->region(), pixelView))
        paintCached(painter, event->region(), pixelView);
    const QColor strip = palette().color(QPalette::Window);
    m_rulers.paint(painter, m_rulerLayout, MapRulers::Colours::of(m_scene.options, strip), event->region());
    paintOverlay(painter);
}

void TubesheetMap::updateAccessibility()
{
    if (!m_steamGen) {
        setAccessibleDescription(u"No steam generator"_s);
        return;
    }
    QString text = u"Model %1: %2 tubes, %3 with symbols, %4 open, %5 selected"_s.arg(m_steamGen->modelName)
                       .arg(m_steamGen->numTube())
                       .arg(m_tubes->symbolCount())
                       .arg(m_tubes->openCount())
                       .arg(m_tubes->selectedCount());
    if (m_cursor >= 0) {
        const auto &address = (*m_steamGen)[m_cursor].address;
        text += u"; cursor on %1"_s.arg(m_steamGen->tubeName(address.row, address.col, address.sec));
    }
    setAccessibleDescription(text);
}

} // namespace brannock
