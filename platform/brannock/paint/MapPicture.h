#pragma once
#include "LegendTable.h"
#include "MapScene.h"

#include <QFont>
#include <QImage>
#include <QMarginsF>
#include <tarnwick/Error.h>

namespace brannock {

/// A picture that cannot be painted at all: it is too large, or has no size.
class PictureError : public tarnwick::FileError
{
public:
    using FileError::FileError;
};

/// Everything a picture of the map shows beside the map itself.
struct PictureContent
{
    QString title; ///< may have several lines
    QFont titleFont = QFont(QStringLiteral("Times New Roman"), 14);
    QString subtitle; ///< below the title, in the same frame; may have several lines
    QFont subtitleFont = QFont(QStringLiteral("Times New Roman"), 10);
    QList<LegendRow> legend;
    QString modelText;            ///< see modelText()
    bool isStandardTitle = false; ///< the title is that of every page without one of its own
    QString documentName;         ///< what the file calls itself inside when it has no title of its own
    QString footer;
    QString signatures; ///< in the footer, on the right
    QFont footerFont = QFont(QStringLiteral("Times New Roman"), 8);
    QMarginsF margins = QMarginsF(0.5, 0.5, 0.5, 0.5); ///< inches
    bool titleRect = true;                             ///< a frame round the title, the legend, the map
    bool legendRect = true;
    bool mapRect = true;
    int xOrientation = 1; ///< -1: flipped, as on the screen
    int yOrientation = 1;
};

/// "Model %S (%D tubes)\n%D open tubes\n"
QString modelText(const ellery::SteamGen &steamGen, const ellery::TubeStates &tubes);

/// A whole picture of the map: title, tubesheet with its rulers, legend, model line and footer on one page. One layout
/// and one painter for bitmaps, PDF, SVG, printer, preview and metafile. The legend stands beside the map or below it,
/// whichever leaves the map larger; nothing overlaps.
class MapPicture
{
public:
    /// Where things stand on the page, in the painter's units; empty rectangles for what there is not.
    struct Layout
    {
        QRectF title;    ///< with the subtitle
        QRectF subtitle; ///< the lower part of the title
        QRectF map;
        QRectF legend;
        QRectF model;
        QRectF footer;
        QRectF signatures; ///< the right part of the footer, or a line of its own above it
        bool legendBelow = false;
        int legendPixels = 0;  ///< size of the legend's letters
        double titleScale = 1; ///< less than 1: the title's letters had to become smaller to fit
    };

    /// Titles and signatures longer than any page has room for end in "...".
    MapPicture(const MapScene &scene, const PictureContent &content);

    /// dpi: painter's units per inch
    Layout layout(const QRectF &page, double dpi) const;
    /// Paints the page; the paper itself is left as it is.
    void paint(QPainter &painter, const QRectF &page, double dpi) const;

    /// The entries of further pages, for devices that have them: a legend that finds no room for all its entries goes
    /// on there. None when the first page has them all.
    QList<QList<LegendRow>> furtherPages(const QRectF &page, double dpi) const;
    /// Paints one of these.
    void paintFurther(QPainter &painter, const QRectF &page, double dpi, const QList<LegendRow> &rows) const;

    /// A page of that many inches.
    QImage toImage(const QSizeF &inches, int dpi) const;
    /// Writes the picture in the form that the file's ending asks for: emf, pdf, svg, bmp, png or jpg (dpi counts for
    /// images only). Throws PictureError, and tarnwick::FileError for other endings and when the file cannot be
    /// written; an older file is then still there.
    void save(const QString &path, const QSizeF &inches = QSizeF(11, 8.5), int dpi = 150) const;

private:
    void placeTitle(Layout &layout, QRectF &body, double dpi) const;
    void placeFooter(Layout &layout, QRectF &body, double dpi) const;
    void paintTitle(QPainter &painter, const Layout &layout, double dpi) const;
    void paintFooter(QPainter &painter, const Layout &layout, double dpi) const;
    void placeBeside(Layout &layout, const QRectF &body, double dpi) const;
    void placeBelow(Layout &layout, const QRectF &body, double dpi) const;
    void placeModel(Layout &layout, QRectF &block, double height) const;
    QSizeF modelSize(int pixelSize) const;
    int rowsShown(const Layout &layout) const;
    /// What title and footer leave of the page, which are placed in the layout.
    QRectF placeAround(Layout &layout, const QRectF &page, double dpi) const;
    /// The same for a further page: the room for its entries.
    QRectF placeFurther(Layout &layout, const QRectF &page, double dpi) const;
    QMarginsF mapMargins(double dpi) const;
    double mapHeightFor(double width, double dpi) const;
    double mapScale(const QRectF &rect, double dpi) const;
    QFont tickFont(double dpi) const;
    void paintMap(QPainter &painter, const QRectF &rect, double dpi) const;

    MapScene m_scene;
    PictureContent m_content;
};

} // namespace brannock
