#pragma once
#include "MapViewport.h"

#include <brannock/paint/MapOverlay.h>

namespace brannock {

/// Marks painted over the map: the tube under the pointer and the tube of the keyboard's cursor, each with a ring, the
/// names of row and column on the rulers, and a card that names the tube.
class MapMarks
{
public:
    /// Both must live as long as this object.
    MapMarks(const MapScene &scene, const MapViewport &viewport)
        : m_scene(scene)
        , m_viewport(viewport)
    {
    }

    int hovered = -1;          ///< tube under the pointer, or -1
    int cursor = -1;           ///< tube of the keyboard's cursor, or -1
    bool isCursorNamed = true; ///< the card may name the cursor's tube

    /// The tube that the card names, or -1.
    int namedTube() const;
    /// Shows the card beside its tube.
    void showCard(const TubeTip &card, const QFont &font);
    void hideCard() { m_cardRect = QRectF(); }

    /// The area painted by paint().
    QRegion region() const;
    void paint(QPainter &painter, const QFont &font, const QPalette &palette) const;

private:
    double ringRadius() const;
    QPointF posOf(int tube) const { return m_viewport.view().toView(m_scene.position(tube)); }
    QList<MapRulers::Label> labels() const;
    void paintLabels(QPainter &painter, const QPalette &palette) const;

    const MapScene &m_scene;
    const MapViewport &m_viewport;
    TubeTip m_card;
    QRectF m_cardRect;
};

} // namespace brannock
