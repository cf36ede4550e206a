#include "SpriteAtlas.h"

#include <cmath>

namespace brannock {

/// 64 MB of pixels: some 40,000 looks at a usual size.
static constexpr qint64 kMaxPixels = qint64(16) << 20;
static constexpr int kWidth = 2048;

void SpriteAtlas::prepare(const MapScene &scene, const TubeArt &art)
{
    if (m_tile > 0 && m_art == art && m_generation == scene.looksGeneration()) {
        m_slots.resize(scene.numLooks(), -1);
        return;
    }
    m_art = art;
    m_generation = scene.looksGeneration();
    // Even and odd discs need tiles of the same parity, or the middle would fall between two pixels.
    m_tile = 2 * int(std::ceil(art.reach())) + int(art.diameter()) % 2;
    m_columns = std::max(1, kWidth / m_tile);
    m_used = 0;
    m_slots.assign(scene.numLooks(), -1);
}

bool SpriteAtlas::grow(int slot)
{
    const int rows = slot / m_columns + 1;
    const QSize needed(m_columns * m_tile, rows * m_tile);
    if (qint64(needed.width()) * needed.height() > kMaxPixels)
        return false;
    if (m_pixmap.width() >= needed.width() && m_pixmap.height() >= needed.height())
        return true;
    QPixmap larger(needed.width(), std::max(needed.height(), m_used > 0 ? needed.height() * 3 / 2 : 0));
    larger.fill(Qt::transparent);
    if (m_used > 0) {
        QPainter painter(&larger);
        painter.setCompositionMode(QPainter::CompositionMode_Source);
        painter.drawPixmap(0, 0, m_pixmap);
    }
    m_pixmap = larger;
    return true;
}

QRectF SpriteAtlas::source(quint32 look) const
{
    const int slot = m_slots[look];
    return QRectF(slot % m_columns * m_tile, slot / m_columns * m_tile, m_tile, m_tile);
}

bool SpriteAtlas::ensure(const MapScene &scene, quint32 look)
{
    if (m_slots[look] >= 0)
        return true;
    if (!grow(m_used))
        return false;
    m_slots[look] = m_used++;
    const QRectF place = source(look);
    QPainter painter(&m_pixmap);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.fillRect(place, Qt::transparent);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setClipRect(place);
    m_art.paintTube(painter, place.center(), scene.markOfLook(look), look & 1);
    return true;
}

} // namespace brannock
