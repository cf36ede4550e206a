#pragma once
#include "MapView.h"
#include "SpriteAtlas.h"

#include <QStringList>

namespace brannock {

/// Paints the tubesheet of a scene: the sheet, the watermark, stay rods and tubes, but not the surroundings and rulers.
/// Used for screen, printer, PDF, SVG, bitmap and metafile. Only what overlaps the exposed rectangle is painted.
class MapPainter
{
public:
    /// For screens: paints onto an image of Format_RGB32 in its own pixels; view.size must fit into it. Tubes are
    /// aligned to whole pixels, with as much detail as is visible. exposed is filled with the background first; nothing
    /// outside is changed.
    void paint(QImage &image, const MapScene &scene, const MapView &view, const QRect &exposed,
               const QColor &background);
    /// Paints only these tubes over the existing picture. Correct if each new look covers the old one (see
    /// MapScene::Change).
    void paintTubes(QImage &image, const MapScene &scene, const MapView &view, const QList<qint32> &tubes);

    /// For printers and files: paints everything as shapes and text in full detail.
    static void paint(QPainter &painter, const MapScene &scene, const MapView &view, const QRectF &exposed);

    /// On the screen: the pixel corner or pixel centre at which the tube is centred.
    static QPointF pixelPosition(const MapScene &scene, const MapView &view, int tube);
    /// On the screen: bounding rectangle of the tube's picture.
    static QRectF tubeRect(const MapScene &scene, const MapView &view, int tube);

    /// Describes what paint() would paint on an image, or as vectors, one line per item in painting order; for tests
    /// and debugging.
    static QStringList describe(const MapScene &scene, const MapView &view, const QRectF &exposed, bool vectors);

    const SpriteAtlas &atlas() const { return m_atlas; }

private:
    /// Centre of a tube to be painted. In pixels: twice the coordinate, so that pixel centres are whole numbers.
    struct Placed
    {
        int x2;
        int y2;
        quint32 look;
    };
    void paintPlaced(QImage &image, const MapScene &scene, const TubeArt &art, const QRect &clip);
    void paintBand(QImage &image, const MapScene &scene, const MapView &view, const QRect &band,
                   const QColor &background);

    /// True if only the plain sheet is below these tubes.
    bool standOnPlainSheet(const MapScene &scene) const;

    /// The sheet's edge in the view, calculated once for many bands and patches.
    const QPolygonF &outlineOf(const MapScene &scene, const MapView &view);

    QPolygonF m_outlinePoints;
    MapView m_outlineView;
    QPolygonF m_outline;
    SpriteAtlas m_atlas;
    SpriteAtlas m_plainAtlas; ///< for tubes on the plain sheet
    std::vector<Placed> m_placed;
};

} // namespace brannock
