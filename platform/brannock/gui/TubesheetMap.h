#pragma once
#include "ViewHistory.h"

#include <brannock/paint/MapCache.h>
#include <brannock/paint/MapOverlay.h>
#include <brannock/paint/MapRulers.h>
#include <functional>
#include <QElapsedTimer>
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
    void setWatermark(const QString &text);
    const MapScene &scene() const { return m_scene; }

    // View.
    const MapView &view() const { return m_view; }
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
    bool hasPreviousView() const { return m_history.canGoBack(); }
    bool hasNextView() const { return m_history.canGoForward(); }
    /// 1 or -1 (flipped). Previous and next view leave them as they are.
    int xOrientation() const { return m_view.xOrientation; }
    int yOrientation() const { return m_view.yOrientation; }
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
    QPointF posOf(int tube) const { return m_view.toView(m_scene.position(tube)); }
    int hoveredTube() const { return m_hovered; }
    int cursorTube() const { return m_cursor; }
    void setCursorTube(int tube);

    QSize sizeHint() const override { return QSize(900, 640); }
    QSize minimumSizeHint() const override { return QSize(160, 120); }

Q_SIGNALS:
    void tubeClicked(int tube, Qt::KeyboardModifiers modifiers);
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
    enum class Drag { None, Rectangle, Lasso, Zoom, Pan };

    // View.
    void applyView(const MapView &view, bool joined = false);
    void setOrientation(int x, int y);
    void viewMoved();
    void showStep(const ViewHistory::Step &step);
    MapView fittedView() const;
    /// After what a fitted view depends on has changed; does nothing for a view of the user's.
    void refit();
    void boundScale(MapView &view, const QPointF &anchor) const;
    void updateRulers();
    void sceneChanged();
    bool paintZoomed(QPainter &painter, const QRegion &region, const MapView &pixelView);
    void paintCached(QPainter &painter, const QRegion &region, const MapView &pixelView);

    // Overlay.
    void setHovered(int tube, const QPointF &pointer);
    void updateTip();
    /// The tube that the card names, or -1.
    int tipTube() const;
    /// After a change of the selection that the cursor had no part in: the cursor's card goes with the selection.
    void followSelection();
    QRegion hoverRegion() const;
    QRegion bandRegion() const;
    void paintOverlay(QPainter &painter);
    void paintRulerMarks(QPainter &painter);
    QList<MapRulers::Label> hoverLabels() const;
    double ringRadius() const;

    // Mouse.
    void startDrag(QMouseEvent *event);
    void continueDrag(const QPointF &pos);
    void finishDrag(const QPointF &pos, Qt::KeyboardModifiers modifiers);
    void cancelDrag();
    void click(const QPointF &pos, Qt::KeyboardModifiers modifiers);
    QList<qint32> tubesInBand() const;
    static SelectMode modeFor(Qt::KeyboardModifiers modifiers, SelectMode plain);
    void updateShape();

    // Keyboard.
    bool moveCursor(int key);
    bool viewKey(QKeyEvent *event);
    void toggleCursor();
    void updateAccessibility();

    const ellery::SteamGen *m_steamGen = nullptr;
    const ellery::TubeStates *m_tubes = nullptr;
    MapScene m_scene;
    MapCache m_cache;
    MapView m_view;
    bool m_fitted = true; // the view follows the widget's size
    ViewHistory m_history;
    QElapsedTimer m_sinceZoom;
    QTimer m_zooming; // active while steps of zooming follow each other
    MapRulers m_rulers;
    MapRulers::Layout m_rulerLayout;

    bool m_tubeTip = false;
    bool m_tipHidden = false;
    bool m_cursorTip = true;        // the card may name the cursor's tube
    bool m_selectsAtCursor = false; // the change of the selection is the cursor's own
    std::function<QStringList(int)> m_tipText;
    int m_hovered = -1;
    int m_cursor = -1;
    QPointF m_pointer;
    TubeTip m_tip;
    QRectF m_tipRect;

    DragMode m_dragMode = DragMode::Rectangle;
    Drag m_drag = Drag::None;
    bool m_pressed = false; // left button down, not yet moved far enough for a drag
    QPointF m_pressPos;
    Qt::KeyboardModifiers m_pressModifiers;
    MapView m_pressView;
    QPolygonF m_band;
    QString m_bandCount;
    QRectF m_bandCountRect;
    bool m_spaceDown = false;
    bool m_spaceUsed = false;
    bool m_showFocus = false;
};

} // namespace brannock
