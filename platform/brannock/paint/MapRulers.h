#pragma once
#include "MapScene.h"
#include "MapView.h"

#include <QFont>
#include <QLineF>
#include <QPolygonF>
#include <QRegion>

class QPainter;
class QPaintDevice;

namespace brannock {

/// Rulers with the names of rows and columns beside the tubesheet, and a tick mark for each line of tubes. They are at
/// the sheet's left and lower edge; if that edge is not visible, they are at the viewport's edge on a strip of their
/// own. Labels are thinned out (every 2nd, 5th, 10th, ...) so that they never overlap.
class MapRulers
{
public:
    /// Background of a label. Labels of rows and columns that end within the tubesheet may be on it or on its edge.
    enum class Ground { Beside, Sheet, Edge };
    struct Label
    {
        QString text;
        QRectF rect;
        ellery::Axis axis = ellery::Axis::Row;
        int number = 0;
        Ground ground = Ground::Beside;
    };
    struct Layout
    {
        std::vector<Label> labels;
        QPolygonF sheet; ///< outline, if labels may be placed on it; else empty
        std::vector<QLineF> marks;
        QRectF upright;             ///< strip of the left ruler; empty if there is none
        QRectF level;               ///< strip of the lower ruler
        bool uprightPinned = false; ///< at the viewport's edge, over the sheet
        bool levelPinned = false;
    };
    struct Colours
    {
        QColor tick;
        QColor strip;   ///< background of a pinned ruler
        QColor onSheet; ///< of labels on the tubesheet

        /// The tick colour of the options, adjusted to be readable on the surroundings and on the tubesheet.
        static Colours of(const MapOptions &options, const QColor &surroundings);
    };

    MapRulers() = default;
    /// device: used to measure the text; null for the screen.
    MapRulers(const MapScene &scene, const QFont &font, const QPaintDevice *device = nullptr);

    /// Space needed beside the sheet, in the painter's units.
    QMarginsF margins() const;
    Layout layout(const MapScene &scene, const MapView &view) const;
    void paint(QPainter &painter, const Layout &layout, const Colours &colours, const QRegion &exposed) const;

    /// The label of the tube's row or column at its position on the ruler, even if it was thinned out. Empty text if
    /// the axis has no straight ruler or no such label, or the position is not visible.
    Label labelOf(const MapScene &scene, const MapView &view, const Layout &layout, ellery::Axis axis, int tube) const;
    const QFont &font() const { return m_font; }

private:
    struct AxisText
    {
        std::vector<double> widths; // width of each tick's label
        double widest = 0;
    };
    void placeStrips(const MapScene &scene, const MapView &view, Layout &layout) const;
    void layoutStraight(const TickAxis &axis, ellery::Axis kind, const AxisText &text, const MapView &view,
                        Layout &layout) const;
    void layoutAskew(const TickAxis &axis, ellery::Axis kind, const AxisText &text, const MapScene &scene,
                     const MapView &view, Layout &layout) const;
    QRectF labelRect(const Layout &layout, bool vertical, double place, double width) const;

    QFont m_font;
    double m_height = 0; // height of a line of text
    double m_tick = 0;   // length of a mark
    double m_gap = 0;
    AxisText m_rows;
    AxisText m_cols;
};

/// Selects the ticks that get a label: all, or those whose number is a multiple of 2, 5, 10, ..., so that neighbours
/// are at least `room` apart; also the first and last if they fit. places: position of each tick along the ruler,
/// ascending or descending.
std::vector<bool> thinnedLabels(const std::vector<Tick> &ticks, const std::vector<double> &places, double room);

} // namespace brannock
