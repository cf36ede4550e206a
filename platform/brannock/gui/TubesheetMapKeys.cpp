#include "TubesheetMap.h"

#include <cmath>
#include <QKeyEvent>

namespace brannock {

namespace {

/// Finds the nearest tube in a direction of the screen; a sideways offset counts as additional distance.
class Neighbour
{
public:
    Neighbour(const MapScene &scene, const MapView &view, int from, const QPointF &direction)
        : m_scene(scene)
        , m_from(view.toView(scene.position(from)))
        , m_view(view)
        , m_direction(direction)
    {
    }

    int find(int from) const
    {
        const QPointF at = m_scene.position(from);
        // The next tube is nearly always one pitch away; the search widens only across gaps.
        for (double radius = 2.2; radius <= 1024; radius *= 4) {
            int best = -1;
            double bestCost = 0;
            for (const qint32 tube : m_scene.grid().within(at.x(), at.y(), radius * m_scene.pitch())) {
                const double cost = tube == from ? -1 : costOf(tube);
                if (cost >= 0 && (best < 0 || cost < bestCost)) {
                    best = tube;
                    bestCost = cost;
                }
            }
            if (best >= 0)
                return best;
        }
        return -1;
    }

private:
    double costOf(int tube) const
    {
        const QPointF way = m_view.toView(m_scene.position(tube)) - m_from;
        const double along = QPointF::dotProduct(way, m_direction);
        const double aside = std::abs(way.x() * m_direction.y() - way.y() * m_direction.x());
        return along > 0 && aside <= along * 2 ? along + 2 * aside : -1;
    }

    const MapScene &m_scene;
    QPointF m_from;
    const MapView &m_view;
    QPointF m_direction;
};

QPointF directionOf(int key)
{
    switch (key) {
    case Qt::Key_Left:
        return {-1, 0};
    case Qt::Key_Right:
        return {1, 0};
    case Qt::Key_Up:
        return {0, -1};
    case Qt::Key_Down:
        return {0, 1};
    default:
        return {};
    }
}

} // namespace

void TubesheetMap::setCursorTube(int tube)
{
    if ((tube == m_marks.cursor && m_marks.isCursorNamed) || tube >= m_scene.numTube())
        return;
    const QRegion before = m_marks.region();
    m_marks.cursor = std::max(tube, -1);
    m_marks.isCursorNamed = true;
    updateCard();
    update(before | m_marks.region());
    ensureVisible(m_marks.cursor);
    updateAccessibility();
    if (m_marks.cursor >= 0) {
        announceCursor();
        Q_EMIT hovered(m_marks.cursor);
    }
}

bool TubesheetMap::moveCursor(int key)
{
    const QPointF direction = directionOf(key);
    if (direction.isNull() || m_scene.isEmpty())
        return false;
    setHovered(-1);
    if (m_marks.cursor < 0) {
        const double everywhere = m_scene.bounds().width() + m_scene.bounds().height();
        setCursorTube(m_scene.grid().nearest(view().centre.x(), view().centre.y(), everywhere));
        return true;
    }
    const int next = Neighbour(m_scene, view(), m_marks.cursor, direction).find(m_marks.cursor);
    if (next >= 0)
        setCursorTube(next);
    return true;
}

bool TubesheetMap::viewKey(QKeyEvent *event)
{
    const QPointF direction = directionOf(event->key());
    if (!direction.isNull() && !m_scene.isEmpty()) {
        const double step = event->modifiers() & Qt::ShiftModifier ? 0.5 : 0.1;
        const QPointF by(-direction.x() * width() * step, -direction.y() * height() * step);
        if (m_viewport.panBy(wholePixels(by, devicePixelRatioF())))
            viewMoved();
        return true;
    }
    switch (event->key()) {
    case Qt::Key_Plus:
    case Qt::Key_Equal:
        zoomIn();
        return true;
    case Qt::Key_Minus:
        zoomOut();
        return true;
    case Qt::Key_Home:
    case Qt::Key_F:
        fit();
        return true;
    case Qt::Key_Backspace:
        event->modifiers() & Qt::ShiftModifier ? nextView() : previousView();
        return true;
    default:
        return false;
    }
}

void TubesheetMap::toggleCursor()
{
    if (m_marks.cursor < 0)
        return;
    m_selectsAtCursor = true;
    Q_EMIT selectionWanted({m_marks.cursor}, SelectMode::Toggle);
}

void TubesheetMap::keyPressEvent(QKeyEvent *event)
{
    const auto held = event->modifiers() & ~(Qt::KeypadModifier | Qt::ShiftModifier);
    if (event->key() == Qt::Key_Escape && (m_tool || m_press)) {
        const MapView before = view();
        if (m_tool)
            m_tool->takeBack();
        cancelDrag();
        if (view() != before)
            viewMoved();
        return;
    }
    const int from = m_marks.cursor;
    if (held == Qt::AltModifier && moveCursor(event->key())) {
        if (event->modifiers() & Qt::ShiftModifier)
            Q_EMIT selectionWanted({from, m_marks.cursor}, SelectMode::Add);
        return;
    }
    if (held != Qt::NoModifier)
        return event->ignore();
    if (event->key() == Qt::Key_Space) {
        if (!event->isAutoRepeat()) {
            m_space = Space::Down;
            updateShape();
        }
        return;
    }
    if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && m_marks.cursor >= 0) {
        Q_EMIT tubeActivated(m_marks.cursor);
        return;
    }
    if (!viewKey(event))
        event->ignore();
}

void TubesheetMap::keyReleaseEvent(QKeyEvent *event)
{
    if (event->key() != Qt::Key_Space || event->isAutoRepeat())
        return event->ignore();
    // Space alone selects at the cursor. If it was held while dragging, it has moved the map instead.
    if (m_space == Space::Down)
        toggleCursor();
    m_space = Space::Up;
    updateShape();
}

void TubesheetMap::focusInEvent(QFocusEvent *)
{
    update();
}

void TubesheetMap::focusOutEvent(QFocusEvent *)
{
    m_space = Space::Up;
    if (m_tool)
        cancelDrag();
    updateShape();
    update();
}

} // namespace brannock
