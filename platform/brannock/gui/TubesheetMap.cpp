#include "TubesheetMap.h"

#include <brannock/paint/WindowPixels.h>
#include <cmath>
#include <QAccessible>
#include <QPaintEvent>

namespace brannock {

using namespace Qt::StringLiterals;

/// Zoom steps within this time are one movement.
static constexpr int kZoomingMs = 150;
static constexpr double kZoomStep = 1.25;

TubesheetMap::TubesheetMap(QWidget *parent)
    : QWidget(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAccessibleName(u"Tubesheet map"_s);
    m_viewport.reset(size(), m_viewport.rulers());
    m_zooming.setSingleShot(true);
    m_zooming.setInterval(kZoomingMs);
    connect(&m_zooming, &QTimer::timeout, this,
            [this] { m_cache.update(m_scene, view().scaled(devicePixelRatioF()), palette().color(QPalette::Window)); });
    updateAccessibility();
}

void TubesheetMap::setSteamGen(const ellery::SteamGen *steamGen, const ellery::TubeStates *tubes)
{
    cancelDrag();
    m_steamGen = tubes ? steamGen : nullptr;
    m_tubes = tubes;
    m_marks.hovered = -1;
    m_marks.cursor = -1;
    sceneChanged();
    m_viewport.reset(size(), makeRulers());
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
    updateAccessibility();
}

MapRulers TubesheetMap::makeRulers() const
{
    QFont font = this->font();
    font.setPointSize(m_scene.options.displayTick());
    return MapRulers(m_scene, font);
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
    const QRegion before = m_marks.region();
    const double ratio = devicePixelRatioF();
    for (const QRect &rect : m_cache.patch(m_scene, change)) {
        const QRectF logical(rect.x() / ratio, rect.y() / ratio, rect.width() / ratio, rect.height() / ratio);
        update(logical.toAlignedRect());
    }
    if (change.selection) {
        followSelection();
        if (m_marks.cursor >= 0)
            announceSelection();
    }
    updateCard();
    update(before | m_marks.region());
    updateAccessibility();
}

void TubesheetMap::setOptions(const MapOptions &options)
{
    if (m_scene.options == options)
        return;
    m_scene.options = options;
    m_cache.invalidate();
    m_viewport.setRulers(makeRulers());
    update();
}

void TubesheetMap::viewMoved()
{
    updateCard();
    update();
    Q_EMIT viewChanged();
}

void TubesheetMap::setView(const MapView &view)
{
    if (m_viewport.setView(view))
        viewMoved();
}

void TubesheetMap::fit()
{
    if (m_viewport.fit())
        viewMoved();
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
    if (m_viewport.zoomAt(pos, factor))
        viewMoved();
}

void TubesheetMap::zoomTo(const QRectF &mapRect)
{
    if (m_viewport.zoomTo(mapRect))
        viewMoved();
}

void TubesheetMap::ensureVisible(int tube)
{
    if (tube >= 0 && tube < m_scene.numTube() && m_viewport.reveal(m_scene.position(tube), devicePixelRatioF()))
        viewMoved();
}

void TubesheetMap::previousView()
{
    if (m_viewport.goBack())
        viewMoved();
}

void TubesheetMap::nextView()
{
    if (m_viewport.goForward())
        viewMoved();
}

void TubesheetMap::setXOrientation(int orientation)
{
    if (m_viewport.setOrientation(orientation < 0 ? -1 : 1, yOrientation()))
        viewMoved();
}

void TubesheetMap::setYOrientation(int orientation)
{
    if (m_viewport.setOrientation(xOrientation(), orientation < 0 ? -1 : 1))
        viewMoved();
}

void TubesheetMap::resizeEvent(QResizeEvent *)
{
    m_viewport.setSize(size());
    updateCard();
}

void TubesheetMap::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        m_viewport.setRulers(makeRulers());
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange)
        update();
    QWidget::changeEvent(event);
}

/// While zooming, each picture is shown once, so it is painted directly into the window and not cached: at 3840 pixels
/// caching would take half of the frame time. After the last step the cached picture is updated.
bool TubesheetMap::paintZoomed(QPainter &painter, const QRegion &region, const MapView &pixelView)
{
    if (!m_zooming.isActive() && !m_cache.isOtherScale(pixelView))
        return false;
    if (region != QRegion(rect())) // only a part, or another widget is over the map
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
    const MapView pixelView = view().scaled(devicePixelRatioF());
    if (!paintZoomed(painter, event->region(), pixelView))
        paintCached(painter, event->region(), pixelView);
    const QColor strip = palette().color(QPalette::Window);
    m_viewport.rulers().paint(painter, m_viewport.rulerLayout(), MapRulers::Colours::of(m_scene.options, strip),
                              event->region());
    m_marks.paint(painter, font(), palette());
    if (m_tool)
        m_tool->paint(painter, palette());
    if (hasFocus()) {
        painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(rect().adjusted(1, 1, -1, -1));
    }
}

void TubesheetMap::announceCursor()
{
    QAccessibleEvent event(this, QAccessible::Focus);
    event.setChild(m_marks.cursor);
    QAccessible::updateAccessibility(&event);
}

void TubesheetMap::announceSelection()
{
    QAccessible::State changed;
    changed.selected = true;
    QAccessibleStateChangeEvent event(this, changed);
    event.setChild(m_marks.cursor);
    QAccessible::updateAccessibility(&event);
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
    if (m_marks.cursor >= 0)
        text += u"; cursor on %1"_s.arg(m_steamGen->tubeName((*m_steamGen)[m_marks.cursor].address));
    setAccessibleDescription(text);
}

} // namespace brannock
