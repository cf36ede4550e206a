#pragma once
#include "MapView.h"
#include "SpriteAtlas.h"

#include <QStringList>

namespace brannock {

/// Paints the tubesheet of a scene: the sheet itself, watermark, stay rods and tubes; not the surroundings and not the rulers.
/// The same for screen, printer, PDF, SVG, bitmap and metafile. Only what reaches into the exposed rectangle is painted.
class MapPainter
{
public:
    /// Pixels: the painter's units are the pixels of a raster device; tubes are put on whole pixels from prepared pictures.
    /// Vectors: any device and unit; everything is drawn as shapes and text, at full detail.
    enum class Target { Pixels, Vectors };

    /// What was painted.
    struct Result {
        int tubes = 0;
        int sprites = 0; ///< of them from prepared pictures
        bool symbols = false;
    };

    Result paint(QPainter &painter, const MapScene &scene, const MapView &view, const QRectF &exposed, Target target);
    /// Paints only these tubes, over what is there; for Pixels. Right when each look covers the one before (see MapScene::Change).
    void paintTubes(QPainter &painter, const MapScene &scene, const MapView &view, const QList<qint32> &tubes);

    /// Where the tube stands in the viewport for Pixels: the pixel corner (or pixel middle) its picture is put on.
    static QPointF pixelPosition(const MapScene &scene, const MapView &view, int tube);
    /// The rectangle of the viewport that the tube's picture may touch.
    static QRectF tubeRect(const MapScene &scene, const MapView &view, int tube);

    /// What paint() would paint, one line each in the order of painting; for tests and for looking at.
    static QStringList describe(const MapScene &scene, const MapView &view, const QRectF &exposed, Target target);

    const SpriteAtlas &atlas() const { return m_atlas; }

private:
    struct Placed {
        QPointF centre;
        quint32 look;
    };
    static TubeArt artFor(const MapScene &scene, const MapView &view, Target target);
    static std::vector<Placed> collect(const MapScene &scene, const MapView &view, const QRectF &exposed, const TubeArt &art,
                                       Target target);
    void paintPlaced(QPainter &painter, const MapScene &scene, const TubeArt &art, const std::vector<Placed> &placed,
                     Target target, Result &result);
    int paintSprites(QPainter &painter, const MapScene &scene, const std::vector<Placed> &placed);

    SpriteAtlas m_atlas;
    std::vector<QPainter::PixmapFragment> m_fragments;
};

} // namespace brannock
