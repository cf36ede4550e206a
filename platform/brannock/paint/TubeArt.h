#pragma once
#include "MapScene.h"

#include <QColor>
#include <QPainter>

namespace brannock {

/// How single tubes, stay rods and symbols are drawn at one size, on any device. Lengths are in the painter's units.
///
///  - An open tube is a ring with a light filling, a marked one a disc in its colour with the symbol on it, black or
///  white.
///  - A selected tube lies on a ring in the select colour that reaches to its neighbours, so that selected tubes form
///  an area.
///  - The smaller the tubes, the less is drawn: first the symbols go, then the outlines.
class TubeArt
{
public:
    /// How much of a tube is drawn.
    enum class Detail { Dot, Disc, Full };

    TubeArt() = default;
    /// pitch: distance of neighbouring tubes in the painter's units
    TubeArt(const MapOptions &options, double pitch, double diameter, Detail detail);
    /// For screens, where the unit is a device pixel: whole diameters, and detail as it can still be seen.
    static TubeArt forPixels(const MapOptions &options, double pitch);
    /// For devices of high resolution and for drawings that may be enlarged: full detail at any size.
    static TubeArt forVectors(const MapOptions &options, double pitch);

    double diameter() const { return m_diameter; }
    Detail detail() const { return m_detail; }
    /// How far from a tube's centre its picture reaches, the mark of selected tubes included.
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

/// Draws a symbol centred (by its ink, not by its advance) within a circle of this radius.
void paintSymbol(QPainter &painter, const QPointF &centre, double radius, char16_t symbol, const QColor &colour);

} // namespace brannock
