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

/// The names of rows and columns beside the tubesheet, with a tick mark for each line of tubes. The rulers stand at the
/// sheet's left and lower edge; where that edge is out of view they stay at the viewport's own edge, on a strip of
/// their own. Labels thin out (every 2nd, 5th, 10th, ...) so that they never overlap.
class MapRulers
{
public:
    /// What a label stands on: those of rows and columns that end within the tubesheet may be on it or on its edge.
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
        QPolygonF sheet; ///< its outline, where labels may stand on it; else empty
        std::vector<QLineF> marks;
        QRectF upright;             ///< strip of the ruler on the left; empty without one
        QRectF level;               ///< strip of the ruler below
        bool uprightPinned = false; ///< held at the viewport's edge, over the sheet
        bool levelPinned = false;
    };
    struct Colours
    {
        QColor tick;
        QColor strip;   ///< behind a pinned ruler
        QColor onSheet; ///< of labels on the tubesheet

        /// The tick colour of the options, as it can be read on the surroundings and on the tubesheet.
        static Colours of(const MapOptions &options, const QColor &surroundings);
    };

    MapRulers() = default;
    /// device: what the text is measured for; null for the screen.
    MapRulers(const MapScene &scene, const QFont &font, const QPaintDevice *device = nullptr);

    /// Room to leave beside the sheet, in the painter's units.
    QMarginsF margins() const;
    Layout layout(const MapScene &scene, const MapView &view) const;
    void paint(QPainter &painter, const Layout &layout, const Colours &colours, const QRegion &exposed) const;

    /// The label of the tube's row or column at its place on the ruler, whether it is among the thinned ones or not. An
    /// empty text when the axis has no straight ruler, no such label, or the place is out of view.
    Label labelOf(const MapScene &scene, const MapView &view, const Layout &layout, ellery::Axis axis, int tube) const;
    const QFont &font() const { return m_font; }

private:
    struct AxisText
    {
        std::vector<double> widths; // of each tick's label
        double widest = 0;
    };
    void placeStrips(const MapScene &scene, const MapView &view, Layout &layout) const;
    void layoutStraight(const TickAxis &axis, ellery::Axis kind, const AxisText &text, const MapView &view,
                        Layout &layout) const;
    void layoutAskew(const TickAxis &axis, ellery::Axis kind, const AxisText &text, const MapScene &scene,
                     const MapView &view, Layout &layout) const;
    QRectF labelRect(const Layout &layout, bool vertical, double place, double width) const;

    QFont m_font;
    double m_height = 0; // of a line of text
    double m_tick = 0;   // length of a mark
    double m_gap = 0;
    AxisText m_rows;
    AxisText m_cols;
};

/// Which of the ticks get a label: all, or those whose number is a multiple of 2, 5, 10, ..., so that neighbours keep
/// apart by at least `room`, and the first and last where they fit. places: position of each tick along the ruler,
/// rising or falling.
std::vector<bool> thinnedLabels(const std::vector<Tick> &ticks, const std::vector<double> &places, double room);

} // namespace brannock
