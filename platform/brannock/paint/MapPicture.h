#pragma once
#include "LegendTable.h"
#include "MapScene.h"

#include <QFont>
#include <QImage>
#include <QMarginsF>
#include <tarnwick/base/Error.h>

namespace brannock {

/// A picture that cannot be painted: it is too large, or has no size.
class PictureError : public tarnwick::FileError
{
public:
    using FileError::FileError;
};

/// Content of a picture beside the map itself.
struct PictureContent
{
    QString title; ///< may have several lines
    QFont titleFont = QFont(QStringLiteral("Times New Roman"), 14);
    QString subtitle; ///< below the title in its frame; may have several lines
    QFont subtitleFont = QFont(QStringLiteral("Times New Roman"), 10);
    QList<LegendRow> legend;
    QString modelText;            ///< see modelText()
    bool isStandardTitle = false; ///< true if the title is the default one for pages without their own
    QString documentName;         ///< title inside the file if the picture has none
    QString footer;
    QString signatures; ///< in the footer, on the right
    QFont footerFont = QFont(QStringLiteral("Times New Roman"), 8);
    QMarginsF margins = QMarginsF(0.5, 0.5, 0.5, 0.5); ///< in inches
    bool titleRect = true;                             ///< frame around the title, the legend, the map
    bool legendRect = true;
    bool mapRect = true;
    int xOrientation = 1; ///< -1: flipped, as on screen
    int yOrientation = 1;
};

/// "Model %S (%D tubes)\n%D open tubes\n"
QString modelText(const ellery::SteamGen &steamGen, const ellery::TubeStates &tubes);

/// A picture of the map on one page: title, tubesheet with rulers, legend, model text and footer. One layout and one
/// painter serve bitmaps, PDF, SVG, printer, preview and metafile. The legend is placed beside or below the map,
/// whichever leaves the map larger; nothing overlaps.
class MapPicture
{
public:
    /// Positions on the page in the painter's units; empty rectangles for missing parts.
    struct Layout
    {
        QRectF title;    ///< including the subtitle
        QRectF subtitle; ///< the lower part of the title
        QRectF map;
        QRectF legend;
        QRectF model;
        QRectF footer;
        QRectF signatures; ///< the right part of the footer, or a separate line above it
        bool legendBelow = false;
        int legendPixels = 0;  ///< font size of the legend
        double titleScale = 1; ///< less than 1 if the title's font was reduced to fit
    };

    /// Titles and signatures that are too long for any page end in "...".
    MapPicture(const MapScene &scene, const PictureContent &content);

    /// dpi: painter's units per inch
    Layout layout(const QRectF &page, double dpi) const;
    /// Paints the page, but not the paper's background.
    void paint(QPainter &painter, const QRectF &page, double dpi) const;

    /// Legend entries of further pages, for devices with several pages, if the first page does not have room for all.
    /// Empty if it has.
    QList<QList<LegendRow>> furtherPages(const QRectF &page, double dpi) const;
    /// Paints one of the further pages.
    void paintFurther(QPainter &painter, const QRectF &page, double dpi, const QList<LegendRow> &rows) const;

    /// Renders a page of that size in inches.
    QImage toImage(const QSizeF &inches, int dpi) const;
    /// Writes the picture in the format of the file's extension: emf, pdf, svg, bmp, png or jpg (dpi is used for images
    /// only). Throws PictureError, and tarnwick::FileError for other extensions and if the file cannot be written; an
    /// existing file is then unchanged.
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
    /// Places title and footer in the layout. Returns the rest of the page.
    QRectF placeAround(Layout &layout, const QRectF &page, double dpi) const;
    /// Places title and footer on a further page. Returns the room for its entries.
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
