#pragma once
#include "MapMarks.h"
#include "MapTools.h"

#include <brannock/paint/MapCache.h>
#include <functional>
#include <memory>
#include <QTimer>
#include <QWidget>

namespace brannock {

/// The tubesheet map on the screen: shows the tubes of a steam generator with their symbols, colours and selection.
/// The user moves the view and selects tubes.
///
/// Mouse: a click selects a tube (Ctrl toggles, Shift adds), beside the tubes it deselects; dragging selects by
/// rectangle, with Alt by lasso; the middle button or Space drags the map; the wheel zooms at the pointer; the side
/// buttons go back and forth between views. Keys: arrows move, + and - zoom, Home or F shows the whole map, Backspace
/// the previous view; Alt+arrow moves a cursor from tube to tube, with Shift also selecting them; Space selects or
/// deselects the tube at the cursor, Return activates it.
///
/// The widget does not change the selection itself, but emits selectionWanted(). Call refresh() after a change of the
/// states of the tubes.
class TubesheetMap : public QWidget
{
    Q_OBJECT
public:
    using SelectMode = ellery::SelectMode;
    /// Action of dragging with the left button. Modifiers and the middle button work in all modes.
    enum class DragMode { Rectangle, Lasso, Zoom, Pan };
    Q_ENUM(DragMode)

    explicit TubesheetMap(QWidget *parent = nullptr);

    /// Shows a component. Both must outlive their use here; null for an empty map.
    void setSteamGen(const ellery::SteamGen *steamGen, const ellery::TubeStates *tubes = nullptr);
    const ellery::SteamGen *steamGen() const { return m_steamGen; }
    /// Shows other states of the same tubes, which must outlive their use here.
    void setTubes(const ellery::TubeStates *tubes);
    /// Call after marks or selection have changed: repaints the changed tubes. If the tubes differ, all are taken over.
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
    /// Zooms around a position of the widget.
    void zoomAt(const QPointF &pos, double factor);
    /// Shows a rectangle in map coordinates.
    void zoomTo(const QRectF &mapRect);
    /// Moves the view to a tube that is not visible, without changing the scale.
    void ensureVisible(int tube);
    void previousView();
    void nextView();
    bool hasPreviousView() const { return m_viewport.canGoBack(); }
    bool hasNextView() const { return m_viewport.canGoForward(); }
    /// 1 or -1 (flipped). The commands for the previous and next view do not change them.
    int xOrientation() const { return view().xOrientation; }
    int yOrientation() const { return view().yOrientation; }
    void setXOrientation(int orientation);
    void setYOrientation(int orientation);

    // Pointer and selection.
    /// Switches the card with information on the tube under the pointer.
    void setTubeTip(bool on);
    bool hasTubeTip() const { return m_tubeTip; }
    /// Hides the card while a dialog is open.
    void setTipHidden(bool hidden);
    /// Sets a function that returns further lines of the card for a tube (the fill that marked it, its last indication,
    /// repairs).
    void setTipText(std::function<QStringList(int tube)> text) { m_tipText = std::move(text); }
    void setDragMode(DragMode mode);
    DragMode dragMode() const { return m_dragMode; }
    /// Tube at a position of the widget, or -1.
    int tubeAt(const QPointF &pos) const;
    /// Position of a tube in the widget.
    QPointF posOf(int tube) const { return view().toView(m_scene.position(tube)); }
    int hoveredTube() const { return m_marks.hovered; }
    int cursorTube() const { return m_marks.cursor; }
    /// What is known about a tube: its name, its symbol and selection, then the further lines of the card.
    QStringList tubeLines(int tube) const;
    void setCursorTube(int tube);

    QSize sizeHint() const override { return QSize(900, 640); }
    QSize minimumSizeHint() const override { return QSize(160, 120); }

Q_SIGNALS:
    /// Emitted after a double click or Return.
    void tubeActivated(int tube);
    /// Emitted if the user selects tubes. mode: how they change the selection.
    void selectionWanted(const QList<qint32> &tubes, ellery::SelectMode mode);
    /// Emitted if the tube under the pointer or the cursor has changed; -1: none.
    void hovered(int tube);
    /// tube: -1 beside the tubes.
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
    /// Press of the left button in progress.
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
    /// Hides the cursor's card after a change of the selection that was not made with the cursor.
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
    // Tell screen readers that the cursor has moved, or that the selection of its tube may have changed.
    void announceCursor();
    void announceSelection();

    const ellery::SteamGen *m_steamGen = nullptr;
    const ellery::TubeStates *m_tubes = nullptr;
    MapScene m_scene;
    MapViewport m_viewport{m_scene};
    MapCache m_cache;
    QTimer m_zooming; // active during a series of zoom steps

    MapMarks m_marks{m_scene, m_viewport};
    bool m_tubeTip = false;
    bool m_tipHidden = false;
    std::function<QStringList(int)> m_tipText;
    bool m_selectsAtCursor = false; // the next change of the selection is made with the cursor

    DragMode m_dragMode = DragMode::Rectangle;
    std::optional<Press> m_press;
    std::unique_ptr<MapTool> m_tool; // during a drag
    Space m_space = Space::Up;
};

} // namespace brannock
