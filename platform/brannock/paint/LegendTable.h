#pragma once
#include "MapColours.h"

#include <ellery/TubeStates.h>
#include <QFont>
#include <QList>
#include <QPainter>
#include <QString>

namespace brannock {

/// One line of a picture's legend.
struct LegendRow
{
    ellery::TubeMark mark;
    QString type;
    QString description;
    int tubes = 0;
    int hits = 0;
    bool shown = true; ///< hidden entries are listed with a remark
};

/// The legend in pictures and on paper: columns TYPE, DESCRIPTION, TUBES and HITS in "Courier New". Descriptions that
/// are too long are elided. If rows do not fit, a last line shows their number.
class LegendTable
{
public:
    /// pixelSize: font size in the painter's units
    LegendTable(const QList<LegendRow> &rows, int pixelSize);

    double rowHeight() const { return m_row; }
    /// Width in which no description is cut, and the minimum that shows the beginning of each.
    double fullWidth() const { return widthWith(m_longest); }
    double leastWidth() const { return widthWith(std::min(m_longest, 12)); }
    /// Height of the heading and all rows.
    double fullHeight() const { return m_row * double(m_rows.size() + 1) + m_row * 0.4; }
    /// Number of lines below the heading that fit into this height.
    int linesWithin(double height) const;
    /// Number of rows shown in this height; one fewer if a line is needed for the number of hidden rows.
    int rowsWithin(double height) const;

    void paint(QPainter &painter, const QRectF &rect, const MapOptions &options) const;
    /// The texts of the rows as painted, one line each; for tests.
    QStringList texts(double width, double height) const;

private:
    struct Columns
    {
        double symbol, type, description, tubes, hits, end;
    };
    double widthWith(int descriptionChars) const;
    Columns columns(double left, double width) const;
    /// Limits the description to this many characters; the remark on a hidden entry is never cut.
    static QString descriptionOf(const LegendRow &row, qsizetype room);
    qsizetype descriptionRoom(const Columns &columns) const;
    void paintHeading(QPainter &painter, const Columns &columns, double top) const;
    void paintRow(QPainter &painter, const Columns &columns, double top, const LegendRow &row,
                  const MapOptions &options) const;

    QList<LegendRow> m_rows;
    QFont m_font;
    double m_char = 0;
    double m_row = 0;
    int m_typeChars = 0;
    int m_numberChars = 0;
    int m_longest = 0;
};

} // namespace brannock
