#pragma once
#include "MapView.h"
#include "SpriteAtlas.h"

#include <QStringList>

namespace brannock {

/// Paints the tubesheet of a scene: the sheet itself, watermark, stay rods and tubes; not the surroundings and not the
/// rulers. The same for screen, printer, PDF, SVG, bitmap and metafile. Only what reaches into the exposed rectangle is
/// painted.
class MapPainter
{
public:
    /// For screens: onto an image of Format_RGB32 in its own pixels, whose view.size is at most the image's; tubes
    /// stand on whole pixels, with as much detail as can be seen. exposed is filled with the background first; nothing
    /// else is touched.
    void paint(QImage &image, const MapScene &scene, const MapView &view, const QRect &exposed,
               const QColor &background);
    /// Paints only these tubes over what is there. Right when each look covers the one before (see MapScene::Change).
    void paintTubes(QImage &image, const MapScene &scene, const MapView &view, const QList<qint32> &tubes);

    /// For printers, files and anything else: everything as shapes and text at full detail.
    static void paint(QPainter &painter, const MapScene &scene, const MapView &view, const QRectF &exposed);

    /// On the screen: the pixel corner or pixel middle that the tube is centred on.
    static QPointF pixelPosition(const MapScene &scene, const MapView &view, int tube);
    /// On the screen: the rectangle that the tube's picture may touch.
    static QRectF tubeRect(const MapScene &scene, const MapView &view, int tube);

    /// What paint() would paint on an image or (vectors) by a painter, one line each in the order of painting; for
    /// tests and for looking at.
    static QStringList describe(const MapScene &scene, const MapView &view, const QRectF &exposed, bool vectors);

    const SpriteAtlas &atlas() const { return m_atlas; }

private:
    /// Centre of a tube that is to be painted. On pixels: twice the coordinate, so that middles of pixels are whole
    /// numbers.
    struct Placed
    {
        int x2;
        int y2;
        quint32 look;
    };
    void paintPlaced(QImage &image, const MapScene &scene, const TubeArt &art, const QRect &clip);
    void paintBand(QImage &image, const MapScene &scene, const MapView &view, const QRect &band,
                   const QColor &background);

    /// Whether nothing but the plain sheet is below the tubes placed.
    bool standOnPlainSheet(const MapScene &scene) const;

    /// The sheet's edge in the view, worked out once for many bands and patches.
    const QPolygonF &outlineOf(const MapScene &scene, const MapView &view);

    QPolygonF m_outlinePoints;
    MapView m_outlineView;
    QPolygonF m_outline;
    SpriteAtlas m_atlas;
    SpriteAtlas m_plainAtlas; ///< for tubes on the plain sheet
    std::vector<Placed> m_placed;
};

} // namespace brannock
