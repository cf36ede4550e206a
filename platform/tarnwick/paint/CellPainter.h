#pragma once
#include <QFont>
#include <QFontMetricsF>

#include <array>

class QPainter;

namespace tarnwick {

/// Paints the texts of table cells in one font. Texts of printable ASCII are measured from a table of widths and each
/// text is laid out once, because a printed list has millions of cells and their layout takes most of the time.
class CellPainter
{
public:
    /// Kerning is turned off, so that the width of a text is the sum of the widths of its characters.
    explicit CellPainter(QFont font);

    const QFont &font() const { return m_font; }
    double lineHeight() const { return m_metrics.height(); }
    /// In the painter's units.
    double width(const QString &text) const;
    /// Paints one line of text into a cell; the painter must have this font. A text wider than the cell is condensed,
    /// and if that is not enough, cut. Returns true if it was cut. margin: on both sides of the text.
    bool paint(QPainter &painter, const QRectF &cell, const QString &text, Qt::Alignment align, double margin) const;

private:
    QFont m_font;
    QFontMetricsF m_metrics;
    std::array<double, 128> m_widths; ///< by character; those of control characters are not used
};

} // namespace tarnwick
