#include "TubeArt.h"

#include <cmath>
#include <QFontMetricsF>
#include <QPaintEngine>
#include <QPainterPath>

namespace brannock {

using namespace Qt::StringLiterals;

namespace {

constexpr double kDiameterPerPitch = 0.86;
/// Less than half a pitch beyond the neighbour's disc: halos may touch each other but never cover a neighbour.
constexpr double kHaloPerPitch = 0.56;
constexpr int kDotPixels = 4;    // discs up to this diameter are dots without outline
constexpr int kSymbolPixels = 8; // minimum diameter at which a letter is readable

constexpr double kReferenceSize = 128;

QFont symbolFont()
{
    QFont font(QStringList{u"DejaVu Sans"_s, u"Lucida Sans Unicode"_s, u"Segoe UI Symbol"_s});
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

/// Bounding box of a symbol's ink at the reference size, relative to the start of its base line.
struct Glyph
{
    QPainterPath path;
    QRectF ink;
};

const Glyph &glyphOf(ellery::Symbol symbol)
{
    static QHash<ellery::Symbol, Glyph> glyphs;
    auto found = glyphs.find(symbol);
    if (found == glyphs.end()) {
        QFont font = symbolFont();
        font.setPixelSize(int(kReferenceSize));
        Glyph glyph;
        glyph.path.addText(0, 0, font, symbol.text());
        glyph.ink = glyph.path.boundingRect();
        found = glyphs.insert(symbol, glyph);
    }
    return *found;
}

/// Font size at which the symbol fills a circle of this radius: all letters get the same height, wide ones are smaller.
double fittingSize(const QRectF &ink, double radius)
{
    static const double letterHeight = glyphOf(ellery::Symbol(u'H')).ink.height();
    const double byHeight = radius * 1.2 / std::max(letterHeight, 1.0);
    const double halfDiagonal = std::hypot(ink.width(), ink.height()) / 2;
    const double byCircle = halfDiagonal > 0 ? radius * 0.88 / halfDiagonal : byHeight;
    return kReferenceSize * std::min(byHeight, byCircle);
}

bool wantsText(const QPainter &painter)
{
    // Printers and files keep symbols as text; on pixel devices outlines are used, which can be centred exactly.
    return painter.paintEngine() && painter.paintEngine()->type() != QPaintEngine::Raster;
}

} // namespace

void paintSymbol(QPainter &painter, const QPointF &centre, double radius, ellery::Symbol symbol, const QColor &colour)
{
    const Glyph &glyph = glyphOf(symbol);
    const double size = fittingSize(glyph.ink, radius);
    const double factor = size / kReferenceSize;
    const QPointF start = centre - glyph.ink.center() * factor;
    if (wantsText(painter)) {
        QFont font = symbolFont();
        // Only point sizes can be fractional.
        font.setPointSizeF(std::max(0.1, size * 72 / std::max(1, painter.device()->logicalDpiY())));
        painter.setFont(font);
        painter.setPen(colour);
        painter.drawText(start, symbol.text());
        return;
    }
    QTransform place = QTransform::fromTranslate(start.x(), start.y());
    place.scale(factor, factor);
    painter.fillPath(place.map(glyph.path), colour);
}

TubeArt::TubeArt(const MapOptions &options, double pitch, double diameter, Detail detail)
    : m_options(options)
    , m_diameter(diameter)
    , m_halo(std::max(pitch * kHaloPerPitch, diameter / 2 + 0.5))
    , m_detail(detail)
{
}

TubeArt TubeArt::forPixels(const MapOptions &options, double pitch)
{
    const double diameter = std::max(1.0, std::floor(pitch * kDiameterPerPitch + 0.25));
    const Detail detail = diameter <= kDotPixels ? Detail::Dot : diameter < kSymbolPixels ? Detail::Disc : Detail::Full;
    return TubeArt(options, pitch, diameter, detail);
}

TubeArt TubeArt::forVectors(const MapOptions &options, double pitch)
{
    return TubeArt(options, pitch, pitch * kDiameterPerPitch, Detail::Full);
}

QColor TubeArt::openRing() const
{
    return mixed(fromColourRef(m_options.fillColour), fromColourRef(m_options.mapColour), 0.42);
}

QColor TubeArt::openFilling() const
{
    return mixed(fromColourRef(m_options.mapColour), inkOn(fromColourRef(m_options.fillColour)), 0.7);
}

void TubeArt::paintTube(QPainter &painter, const QPointF &centre, const TubeMark &mark, bool selected) const
{
    if (m_detail == Detail::Dot) {
        paintDot(painter, centre, mark, selected);
        return;
    }
    if (selected)
        paintHalo(painter, centre);
    const bool open = mark.isOpen();
    const QColor colour = fromColourRef(mark.colour);
    const QColor select = fromColourRef(m_options.selectColour);
    const QColor ink = fromColourRef(m_options.fillColour);
    const double width = std::max(m_detail == Detail::Full ? 1.0 : 0.8, m_diameter * 0.055);
    QColor filling = open ? openFilling() : colour;
    if (open && selected)
        filling = mixed(filling, select, 0.25);
    const QColor edge = open ? openRing() : mixed(colour, ink, 0.5);
    painter.setPen(QPen(edge, width));
    painter.setBrush(filling);
    const double radius = (m_diameter - width) / 2;
    painter.drawEllipse(centre, radius, radius);
    if (!open && m_detail == Detail::Full)
        paintSymbol(painter, centre, radius - width / 2, mark.symbol, inkOn(colour));
}

void TubeArt::paintHalo(QPainter &painter, const QPointF &centre) const
{
    const QColor select = fromColourRef(m_options.selectColour);
    painter.setPen(Qt::NoPen);
    painter.setBrush(select);
    painter.drawEllipse(centre, m_halo, m_halo);
}

void TubeArt::paintDot(QPainter &painter, const QPointF &centre, const TubeMark &mark, bool selected) const
{
    const auto square = [&](double size, const QColor &colour) {
        painter.fillRect(QRectF(centre.x() - size / 2, centre.y() - size / 2, size, size), colour);
    };
    const bool open = mark.isOpen();
    const QColor ink = fromColourRef(m_options.fillColour);
    const QColor map = fromColourRef(m_options.mapColour);
    if (selected)
        square(std::max(m_diameter + 2, std::floor(2 * m_halo)), fromColourRef(m_options.selectColour));
    const QColor colour = open ? mixed(map, ink, 0.22) : fromColourRef(mark.colour);
    if (m_diameter < 3) {
        square(m_diameter, colour);
        return;
    }
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    painter.drawEllipse(centre, m_diameter / 2, m_diameter / 2);
}

void TubeArt::paintStayRod(QPainter &painter, const QPointF &centre) const
{
    const QColor ink = fromColourRef(m_options.fillColour);
    const QColor metal = mixed(ink, fromColourRef(m_options.mapColour), 0.55);
    const double radius = m_diameter * 0.36;
    painter.setPen(Qt::NoPen);
    painter.setBrush(metal);
    painter.drawEllipse(centre, radius, radius);
    if (m_detail != Detail::Full)
        return;
    // A slot, as on a tie bolt, distinguishes the rod from a tube.
    painter.setPen(QPen(mixed(metal, fromColourRef(m_options.mapColour), 0.75), std::max(1.0, m_diameter * 0.08)));
    const double reach = radius * 0.55;
    painter.drawLine(centre - QPointF(reach, 0), centre + QPointF(reach, 0));
    painter.drawLine(centre - QPointF(0, reach), centre + QPointF(0, reach));
}

} // namespace brannock
