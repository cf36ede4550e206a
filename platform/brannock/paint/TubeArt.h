#pragma once
#include "MapScene.h"

#include <QColor>
#include <QPainter>

namespace brannock {

/// Draws single tubes, stay rods and symbols in one size, on any device. Lengths are in the painter's units.
///
///  - An open tube is a ring with a light filling; a marked tube is a disc in its colour with its symbol, black or
///  white.
///  - A selected tube has a ring in the select colour that reaches its neighbours, so that selected tubes form
///  an area.
///  - The smaller the tubes, the less is drawn: first without symbols, then without outlines.
class TubeArt
{
public:
    /// Level of detail of a tube.
    enum class Detail { Dot, Disc, Full };

    TubeArt() = default;
    /// pitch: distance between neighbouring tubes in the painter's units
    TubeArt(const MapOptions &options, double pitch, double diameter, Detail detail);
    /// For screens, where the unit is a device pixel: whole diameters, and as much detail as is visible.
    static TubeArt forPixels(const MapOptions &options, double pitch);
    /// For high-resolution devices and drawings that may be enlarged: full detail in any size.
    static TubeArt forVectors(const MapOptions &options, double pitch);

    double diameter() const { return m_diameter; }
    Detail detail() const { return m_detail; }
    /// Radius of a tube's picture, including the ring of selected tubes.
    double reach() const { return m_halo + 0.5; }

    void paintTube(QPainter &painter, const QPointF &centre, const TubeMark &mark, bool selected) const;
    void paintStayRod(QPainter &painter, const QPointF &centre) const;

    QColor openRing() const;
    QColor openFilling() const;

    bool operator==(const TubeArt &) const = default;

private:
    void paintDot(QPainter &painter, const QPointF &centre, const TubeMark &mark, bool selected) const;
    void paintHalo(QPainter &painter, const QPointF &centre) const;

    MapOptions m_options;
    double m_diameter = 1;
    double m_halo = 1; // radius
    Detail m_detail = Detail::Dot;
};

/// Draws a symbol within a circle of this radius, centred by its ink instead of its advance.
void paintSymbol(QPainter &painter, const QPointF &centre, double radius, ellery::Symbol symbol, const QColor &colour);

} // namespace brannock
