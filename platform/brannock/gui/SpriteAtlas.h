#pragma once
#include "TubeArt.h"

#include <QPixmap>
#include <vector>

namespace brannock {

/// Pictures of tubes at one size, one for each look, made when first asked for. They stand beside each other in one pixmap, so
/// that thousands are painted in one call.
class SpriteAtlas
{
public:
    /// Throws everything away when the size, the options or the numbering of looks has changed.
    void prepare(const MapScene &scene, const TubeArt &art);
    /// Makes the picture of this look if there is none yet. False when the atlas is full.
    bool ensure(const MapScene &scene, quint32 look);

    const QPixmap &pixmap() const { return m_pixmap; }
    /// Where the look's picture stands in the pixmap, in pixels. Only after ensure().
    QRectF source(quint32 look) const;
    /// Width and height of every picture in pixels. The tube's centre is in the middle.
    int tile() const { return m_tile; }
    int count() const { return m_used; }

private:
    bool grow(int slot);

    TubeArt m_art;
    quint32 m_generation = 0;
    int m_tile = 0;
    int m_columns = 0;
    int m_used = 0;
    QPixmap m_pixmap;
    std::vector<qint32> m_slots; // by look, -1: none yet
};

} // namespace brannock
