#include "TubesheetMap.h"

#include <cmath>
#include <QApplication>
#include <QContextMenuEvent>
#include <QMouseEvent>
#include <QWheelEvent>

namespace brannock {

using namespace Qt::StringLiterals;

/// Where tubes are smaller than this, a click need not hit them exactly.
static constexpr double kSmallestTarget = 4; // pixels

int TubesheetMap::tubeAt(const QPointF &pos) const
{
    const QPointF map = m_view.toMap(pos);
    const double reach = std::max(m_scene.radius(), std::min(m_scene.pitch() / 2, kSmallestTarget / m_view.scale));
    return m_scene.grid().nearest(map.x(), map.y(), reach);
}

TubesheetMap::SelectMode TubesheetMap::modeFor(Qt::KeyboardModifiers modifiers, SelectMode plain)
{
    if (modifiers & Qt::ControlModifier)
        return SelectMode::Toggle;
    return modifiers & Qt::ShiftModifier ? SelectMode::Add : plain;
}

void TubesheetMap::setDragMode(DragMode mode)
{
    cancelDrag();
    m_dragMode = mode;
    updateShape();
}

void TubesheetMap::updateShape()
{
    if (m_drag == Drag::Pan)
        setCursor(Qt::ClosedHandCursor);
    else if (m_spaceDown || m_dragMode == DragMode::Pan)
        setCursor(Qt::OpenHandCursor);
    else if (m_dragMode == DragMode::Rectangle)
        unsetCursor();
    else
        setCursor(Qt::CrossCursor);
}

void TubesheetMap::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::BackButton)
        return previousView();
    if (event->button() == Qt::ForwardButton)
        return nextView();
    if (m_pressed || m_drag != Drag::None || m_scene.isEmpty())
        return;
    if (event->button() == Qt::MiddleButton || (event->button() == Qt::LeftButton && m_spaceDown)) {
        m_spaceUsed = m_spaceDown;
        startDrag(event);
        m_drag = Drag::Pan;
        updateShape();
    } else if (event->button() == Qt::LeftButton) {
        startDrag(event);
        m_pressed = true;
    }
}

void TubesheetMap::startDrag(QMouseEvent *event)
{
    m_pressPos = event->position();
    m_pressModifiers = event->modifiers();
    m_pressView = m_view;
}

void TubesheetMap::mouseMoveEvent(QMouseEvent *event)
{
    const QPointF pos = event->position();
    const double moved = (pos - m_pressPos).manhattanLength();
    if (m_pressed && m_drag == Drag::None && moved >= QApplication::startDragDistance()) {
        static constexpr Drag kDrags[] = {Drag::Rectangle, Drag::Lasso, Drag::Zoom, Drag::Pan};
        m_drag = m_pressModifiers & Qt::AltModifier ? Drag::Lasso : kDrags[int(m_dragMode)];
        setHovered(-1, pos);
        m_band = m_drag == Drag::Lasso ? QPolygonF{m_pressPos} : QPolygonF();
        updateShape();
    }
    if (m_drag != Drag::None)
        continueDrag(pos);
    else if (event->buttons() == Qt::NoButton)
        setHovered(tubeAt(pos), pos);
}

void TubesheetMap::continueDrag(const QPointF &pos)
{
    if (m_drag == Drag::Pan) {
        // Whole device pixels, so that the picture can be shifted instead of painted.
        const double ratio = devicePixelRatioF();
        const QPointF by = (pos - m_pressPos) * ratio;
        MapView view = m_pressView;
        view.panBy(QPointF(std::round(by.x()), std::round(by.y())) / ratio);
        m_fitted = false;
        applyView(view, m_view != m_pressView);
        return;
    }
    const QRegion before = bandRegion();
    if (m_drag == Drag::Lasso)
        m_band.append(pos);
    else
        m_band = QPolygonF(QRectF(m_pressPos, pos).normalized());
    m_bandCountRect = QRectF();
    if (m_drag != Drag::Zoom) {
        const qsizetype count = tubesInBand().size();
        m_bandCount = count == 1 ? u"1 tube"_s : u"%1 tubes"_s.arg(count);
        m_bandCountRect = countRect(m_bandCount, font(), pos, m_view.size);
    }
    update(before | bandRegion());
}

QList<qint32> TubesheetMap::tubesInBand() const
{
    if (m_drag == Drag::Lasso) {
        QList<QPointF> points;
        for (const QPointF &point : m_band)
            points.append(m_view.toMap(point));
        return m_scene.grid().inPolygon(points);
    }
    const QRectF area = m_view.toMap(m_band.boundingRect());
    return m_scene.grid().inRect(area.left(), area.top(), area.right(), area.bottom());
}

void TubesheetMap::mouseReleaseEvent(QMouseEvent *event)
{
    const bool panEnds = m_drag == Drag::Pan && !m_pressed && !(event->buttons() & (Qt::LeftButton | Qt::MiddleButton));
    if (event->button() != Qt::LeftButton && !panEnds)
        return;
    if (m_drag != Drag::None)
        finishDrag(event->position(), event->modifiers());
    else if (m_pressed)
        click(event->position(), event->modifiers());
    m_pressed = false;
}

void TubesheetMap::finishDrag(const QPointF &pos, Qt::KeyboardModifiers modifiers)
{
    continueDrag(pos);
    const Drag drag = m_drag;
    const QRectF area = m_view.toMap(m_band.boundingRect());
    const QList<qint32> tubes = drag == Drag::Rectangle || drag == Drag::Lasso ? tubesInBand() : QList<qint32>();
    cancelDrag();
    if (drag == Drag::Zoom)
        zoomTo(area);
    else if (drag != Drag::Pan)
        Q_EMIT selectionWanted(tubes, modeFor(modifiers, SelectMode::Replace));
    setHovered(tubeAt(pos), pos);
}

void TubesheetMap::cancelDrag()
{
    update(bandRegion());
    m_drag = Drag::None;
    m_pressed = false;
    m_band.clear();
    m_bandCountRect = QRectF();
    updateShape();
}

void TubesheetMap::click(const QPointF &pos, Qt::KeyboardModifiers modifiers)
{
    const int tube = tubeAt(pos);
    if (tube < 0) {
        if (!(modifiers & (Qt::ControlModifier | Qt::ShiftModifier)))
            Q_EMIT selectionWanted({}, SelectMode::Replace);
        return;
    }
    setCursorTube(-1);
    Q_EMIT selectionWanted({tube}, modeFor(modifiers, SelectMode::Replace));
    Q_EMIT tubeClicked(tube, modifiers);
}

void TubesheetMap::mouseDoubleClickEvent(QMouseEvent *event)
{
    const int tube = tubeAt(event->position());
    if (event->button() == Qt::LeftButton && tube >= 0 && !(event->modifiers() & Qt::ControlModifier))
        Q_EMIT tubeActivated(tube);
    else
        mousePressEvent(event);
}

void TubesheetMap::wheelEvent(QWheelEvent *event)
{
    const double delta = event->angleDelta().y() != 0 ? event->angleDelta().y() : event->angleDelta().x();
    if (delta == 0 || m_drag != Drag::None)
        return event->ignore();
    // One notch is 120; touch pads send many small steps.
    zoomAt(event->position(), std::pow(1.25, delta / 120));
    setHovered(tubeAt(event->position()), event->position());
    event->accept();
}

void TubesheetMap::leaveEvent(QEvent *)
{
    setHovered(-1, {});
}

void TubesheetMap::contextMenuEvent(QContextMenuEvent *event)
{
    cancelDrag();
    if (event->reason() == QContextMenuEvent::Keyboard && m_cursor >= 0) {
        Q_EMIT contextMenuRequested(mapToGlobal(posOf(m_cursor).toPoint()), m_cursor);
        return;
    }
    Q_EMIT contextMenuRequested(event->globalPos(), tubeAt(event->pos()));
}

} // namespace brannock
