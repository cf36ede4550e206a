#include "TubesheetMap.h"

#include <cmath>
#include <QApplication>
#include <QContextMenuEvent>
#include <QMouseEvent>
#include <QWheelEvent>

namespace brannock {

using namespace Qt::StringLiterals;

/// If tubes are smaller than this, a click near them counts.
static constexpr double kSmallestTarget = 4; // pixels

int TubesheetMap::tubeAt(const QPointF &pos) const
{
    const QPointF map = view().toMap(pos);
    const double reach = std::max(m_scene.radius(), std::min(m_scene.pitch() / 2, kSmallestTarget / view().scale));
    return m_scene.grid().nearest(map.x(), map.y(), reach);
}

TubesheetMap::SelectMode TubesheetMap::modeFor(Qt::KeyboardModifiers modifiers)
{
    if (modifiers & Qt::ControlModifier)
        return SelectMode::Toggle;
    return modifiers & Qt::ShiftModifier ? SelectMode::Add : SelectMode::Replace;
}

void TubesheetMap::setDragMode(DragMode mode)
{
    cancelDrag();
    m_dragMode = mode;
    updateShape();
}

void TubesheetMap::updateShape()
{
    const std::optional<Qt::CursorShape> ofTool = m_tool ? m_tool->cursor() : std::nullopt;
    if (ofTool)
        setCursor(*ofTool);
    else if (m_space != Space::Up || m_dragMode == DragMode::Pan)
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
    if (m_press || m_tool || m_scene.isEmpty())
        return;
    const bool isSpace = m_space != Space::Up;
    if (event->button() == Qt::MiddleButton || (event->button() == Qt::LeftButton && isSpace)) {
        if (isSpace)
            m_space = Space::Used;
        m_tool = std::make_unique<PanTool>(m_viewport, event->position(), devicePixelRatioF());
        updateShape();
    } else if (event->button() == Qt::LeftButton) {
        m_press = Press{event->position(), event->modifiers()};
    }
}

std::unique_ptr<MapTool> TubesheetMap::toolFor(const Press &press)
{
    switch (press.modifiers & Qt::AltModifier ? DragMode::Lasso : m_dragMode) {
    case DragMode::Lasso:
        return std::make_unique<LassoTool>(m_scene, m_viewport, press.pos, font());
    case DragMode::Zoom:
        return std::make_unique<ZoomTool>(m_viewport, press.pos);
    case DragMode::Pan:
        return std::make_unique<PanTool>(m_viewport, press.pos, devicePixelRatioF());
    case DragMode::Rectangle:
        break;
    }
    return std::make_unique<RectangleTool>(m_scene, m_viewport, press.pos, font());
}

void TubesheetMap::mouseMoveEvent(QMouseEvent *event)
{
    const QPointF pos = event->position();
    if (m_press && !m_tool && (pos - m_press->pos).manhattanLength() >= QApplication::startDragDistance()) {
        m_tool = toolFor(*m_press);
        setHovered(-1);
        updateShape();
    }
    if (m_tool)
        moveTool(pos);
    else if (event->buttons() == Qt::NoButton)
        setHovered(tubeAt(pos));
}

void TubesheetMap::moveTool(const QPointF &pos)
{
    const QRegion before = m_tool->region();
    const MapView viewBefore = view();
    m_tool->moveTo(pos);
    update(before | m_tool->region());
    if (view() != viewBefore)
        viewMoved();
}

void TubesheetMap::mouseReleaseEvent(QMouseEvent *event)
{
    // A tool that the left button did not start ends when neither of the buttons that may have started it is down.
    const bool ends = m_tool && !m_press && !(event->buttons() & (Qt::LeftButton | Qt::MiddleButton));
    if (event->button() != Qt::LeftButton && !ends)
        return;
    const bool isClick = m_press && !m_tool;
    if (m_tool)
        finishTool(event->position(), event->modifiers());
    m_press.reset();
    if (isClick)
        click(event->position(), event->modifiers());
}

void TubesheetMap::finishTool(const QPointF &pos, Qt::KeyboardModifiers modifiers)
{
    moveTool(pos);
    const MapTool::Result wanted = m_tool->result();
    cancelDrag();
    if (wanted.area)
        zoomTo(*wanted.area);
    if (wanted.tubes)
        Q_EMIT selectionWanted(*wanted.tubes, modeFor(modifiers));
    setHovered(tubeAt(pos));
}

void TubesheetMap::cancelDrag()
{
    if (m_tool)
        update(m_tool->region());
    m_tool.reset();
    m_press.reset();
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
    Q_EMIT selectionWanted({tube}, modeFor(modifiers));
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
    if (delta == 0 || m_tool)
        return event->ignore();
    // One notch is 120; touch pads send many small steps.
    zoomAt(event->position(), std::pow(1.25, delta / 120));
    setHovered(tubeAt(event->position()));
    event->accept();
}

void TubesheetMap::leaveEvent(QEvent *)
{
    setHovered(-1);
}

void TubesheetMap::contextMenuEvent(QContextMenuEvent *event)
{
    cancelDrag();
    if (event->reason() == QContextMenuEvent::Keyboard && m_marks.cursor >= 0) {
        Q_EMIT contextMenuRequested(mapToGlobal(posOf(m_marks.cursor).toPoint()), m_marks.cursor);
        return;
    }
    Q_EMIT contextMenuRequested(event->globalPos(), tubeAt(event->pos()));
}

} // namespace brannock
