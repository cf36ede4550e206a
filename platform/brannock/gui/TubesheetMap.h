#pragma once
#include "MapMarks.h"
#include "MapTools.h"

#include <brannock/paint/MapCache.h>
#include <functional>
#include <memory>
#include <QTimer>
#include <QWidget>

namespace brannock {

/// The tubesheet map on the screen: shows a steam generator's tubes with their symbols, colours and selection, lets the
/// user move about and select tubes.
///
/// Mouse: a click selects a tube (Ctrl toggles, Shift adds), on free ground it deselects; dragging selects by
/// rectangle, with Alt by lasso; the middle button or Space drags the map; the wheel zooms at the pointer; the side
/// buttons go back and forth between views. Keys: arrows move, + and - zoom, Home or F shows everything, Backspace the
/// previous view; Alt+arrow leads a cursor from tube to tube, with Shift selecting them on its way, Space selects or
/// deselects there, Return activates the tube.
///
/// The widget changes nothing itself: it tells which tubes the user wants to select. Call refresh() after a change of
/// the tubes' states.
class TubesheetMap : public QWidget
{
    Q_OBJECT
public:
    using SelectMode = ellery::SelectMode;
    /// What dragging with the left button does; modifiers and the middle button work in all of them.
    enum class DragMode { Rectangle, Lasso, Zoom, Pan };
    Q_ENUM(DragMode)

    explicit TubesheetMap(QWidget *parent = nullptr);

    /// Shows all of a component. Neither is owned; null for an empty map.
    void setSteamGen(const ellery::SteamGen *steamGen, const ellery::TubeStates *tubes = nullptr);
    const ellery::SteamGen *steamGen() const { return m_steamGen; }
    /// Shows other states of the same tubes. Not owned.
    void setTubes(const ellery::TubeStates *tubes);
    /// Marks or selection have changed: repaints the tubes concerned. Other tubes than before: takes them all over.
    void refresh();
    void setOptions(const MapOptions &options);
    const MapOptions &options() const { return m_scene.options; }
    const MapScene &scene() const { return m_scene; }

    // View.
    const MapView &view() const { return m_viewport.view(); }
    void setView(const MapView &view);
    void fit();
    void zoomIn();
    void zoomOut();
    /// Zooms so that this place of the widget stays where it is.
    void zoomAt(const QPointF &pos, double factor);
    /// A rectangle in map coordinates.
    void zoomTo(const QRectF &mapRect);
    /// Brings a tube into view when it is not, without changing the scale.
    void ensureVisible(int tube);
    void previousView();
    void nextView();
    bool hasPreviousView() const { return m_viewport.canGoBack(); }
    bool hasNextView() const { return m_viewport.canGoForward(); }
    /// 1 or -1 (flipped). Previous and next view leave them as they are.
    int xOrientation() const { return view().xOrientation; }
    int yOrientation() const { return view().yOrientation; }
    void setXOrientation(int orientation);
    void setYOrientation(int orientation);

    // Pointer and selection.
    /// The card that names the tube under the pointer.
    void setTubeTip(bool on);
    bool hasTubeTip() const { return m_tubeTip; }
    /// Hides the card, whatever is under the pointer: a dialog stands over the map.
    void setTipHidden(bool hidden);
    /// Further lines of the card for a tube (the fill that marked it, its last indication, repairs).
    void setTipText(std::function<QStringList(int tube)> text) { m_tipText = std::move(text); }
    void setDragMode(DragMode mode);
    DragMode dragMode() const { return m_dragMode; }
    /// The tube at this place of the widget, or -1.
    int tubeAt(const QPointF &pos) const;
    /// Where the tube stands in the widget.
    QPointF posOf(int tube) const { return view().toView(m_scene.position(tube)); }
    int hoveredTube() const { return m_marks.hovered; }
    int cursorTube() const { return m_marks.cursor; }
    void setCursorTube(int tube);

    QSize sizeHint() const override { return QSize(900, 640); }
    QSize minimumSizeHint() const override { return QSize(160, 120); }

Q_SIGNALS:
    /// Double click or Return.
    void tubeActivated(int tube);
    /// The user wants these tubes to join the selection in this way.
    void selectionWanted(const QList<qint32> &tubes, ellery::SelectMode mode);
    /// The tube under the pointer or the keyboard's cursor; -1: none.
    void hovered(int tube);
    /// tube: -1 on free ground
    void contextMenuRequested(const QPoint &globalPos, int tube);
    void viewChanged();

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;

private:
    /// The left button is down.
    struct Press
    {
        QPointF pos;
        Qt::KeyboardModifiers modifiers;
    };
    enum class Space { Up, Down, Used };

    // View.
    void viewMoved();
    void sceneChanged();
    MapRulers makeRulers() const;
    bool paintZoomed(QPainter &painter, const QRegion &region, const MapView &pixelView);
    void paintCached(QPainter &painter, const QRegion &region, const MapView &pixelView);

    // Marks over the map.
    void setHovered(int tube);
    void updateCard();
    /// After a change of the selection that the cursor had no part in: the cursor's card goes with the selection.
    void followSelection();

    // Mouse.
    std::unique_ptr<MapTool> toolFor(const Press &press);
    void moveTool(const QPointF &pos);
    void finishTool(const QPointF &pos, Qt::KeyboardModifiers modifiers);
    void cancelDrag();
    void click(const QPointF &pos, Qt::KeyboardModifiers modifiers);
    static SelectMode modeFor(Qt::KeyboardModifiers modifiers);
    void updateShape();

    // Keyboard.
    bool moveCursor(int key);
    bool viewKey(QKeyEvent *event);
    void toggleCursor();
    void updateAccessibility();

    const ellery::SteamGen *m_steamGen = nullptr;
    const ellery::TubeStates *m_tubes = nullptr;
    MapScene m_scene;
    MapViewport m_viewport{m_scene};
    MapCache m_cache;
    QTimer m_zooming; // active while steps of zooming follow each other

    MapMarks m_marks{m_scene, m_viewport};
    bool m_tubeTip = false;
    bool m_tipHidden = false;
    std::function<QStringList(int)> m_tipText;
    bool m_selectsAtCursor = false; // the next change of the selection is the cursor's own

    DragMode m_dragMode = DragMode::Rectangle;
    std::optional<Press> m_press;
    std::unique_ptr<MapTool> m_tool; // while the mouse drags
    Space m_space = Space::Up;
    bool m_showFocus = false;
};

} // namespace brannock
