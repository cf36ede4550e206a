#include "SpriteAtlas.h"

#include <cmath>
#include <cstring>

namespace brannock {

/// 64 MB of pixels: about 100,000 looks at a usual size.
static constexpr size_t kMostPixels = size_t(16) << 20;

/// Blends source (premultiplied) over an opaque pixel, two channels at a time.
static inline quint32 blended(quint32 source, quint32 below)
{
    const quint32 keep = 255 - (source >> 24);
    quint32 odd = (below & 0xFF00FF) * keep;
    odd = ((odd + ((odd >> 8) & 0xFF00FF) + 0x800080) >> 8) & 0xFF00FF;
    quint32 even = ((below >> 8) & 0xFF) * keep;
    even = (even + (even >> 8) + 0x80) & 0xFF00;
    return 0xFF000000 | (source + (odd | even));
}

/// Runs are about a dozen pixels long; the call of memcpy() would take longer than the copying.
static inline void copyRun(quint32 *target, const quint32 *source, int count)
{
    constexpr int kStep = 4;
    if (count < kStep) {
        for (int i = 0; i < count; ++i)
            target[i] = source[i];
        return;
    }
    int i = 0;
    for (; i + kStep <= count; i += kStep)
        std::memcpy(target + i, source + i, kStep * sizeof(quint32));
    // The remaining pixels, together with some already copied.
    std::memcpy(target + count - kStep, source + count - kStep, kStep * sizeof(quint32));
}

void SpriteAtlas::prepare(const MapScene &scene, const TubeArt &art, std::optional<QRgb> ground)
{
    if (m_tile > 0 && m_art == art && m_ground == ground && m_generation == scene.looksGeneration()) {
        m_slots.resize(scene.numLooks(), -1);
        return;
    }
    m_art = art;
    m_ground = ground;
    m_generation = scene.looksGeneration();
    // The tile has the parity of the disc, so that the centre is not between two pixels.
    m_tile = 2 * int(std::ceil(art.reach())) + int(art.diameter()) % 2;
    m_used = 0;
    m_slots.assign(scene.numLooks(), -1);
    m_lines.clear();
    m_pixels.clear();
}

bool SpriteAtlas::make(const MapScene &scene, quint32 look)
{
    if (m_pixels.size() + size_t(m_tile) * size_t(m_tile) > kMostPixels)
        return false;
    QImage picture(m_tile, m_tile, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    m_art.paintTube(painter, QPointF(m_tile / 2.0, m_tile / 2.0), scene.markOfLook(look), look & 1);
    painter.end();
    m_slots[look] = m_used++;
    store(picture);
    return true;
}

void SpriteAtlas::store(const QImage &picture)
{
    for (int y = 0; y < m_tile; ++y) {
        const auto *pixels = reinterpret_cast<const QRgb *>(picture.constScanLine(y));
        int first = 0;
        int end = m_tile;
        while (first < end && qAlpha(pixels[first]) == 0)
            ++first;
        while (end > first && qAlpha(pixels[end - 1]) == 0)
            --end;
        if (m_ground) {
            storeOnGround(pixels, first, end);
            continue;
        }
        int solid = first;
        while (solid < end && qAlpha(pixels[solid]) != 255)
            ++solid;
        int trail = solid;
        while (trail < end && qAlpha(pixels[trail]) == 255)
            ++trail;
        m_lines.push_back({quint16(first), quint16(solid - first), quint16(trail - solid), quint16(end - trail),
                           quint32(m_pixels.size())});
        m_pixels.insert(m_pixels.end(), pixels + first, pixels + end);
    }
}

void SpriteAtlas::storeOnGround(const QRgb *pixels, int first, int end)
{
    m_lines.push_back({quint16(first), 0, quint16(end - first), 0, quint32(m_pixels.size())});
    for (int i = first; i < end; ++i)
        m_pixels.push_back(blended(pixels[i], *m_ground));
}

void SpriteAtlas::put(QImage &image, const QRect &clip, int x, int y, quint32 look) const
{
    const Line *lines = &m_lines[size_t(m_slots[look]) * size_t(m_tile)];
    const int firstLine = std::max(0, clip.top() - y);
    const int endLine = std::min(m_tile, clip.bottom() + 1 - y);
    // A picture at the edge of the clip is copied pixel by pixel (slow path).
    const bool inside = x >= clip.left() && x + m_tile <= clip.right() + 1;
    const qsizetype stride = image.bytesPerLine();
    uchar *row = image.bits() + qsizetype(y + firstLine) * stride;
    for (int i = firstLine; i < endLine; ++i, row += stride) {
        const Line &line = lines[i];
        const quint32 *source = m_pixels.data() + line.pixels;
        const int at = x + line.skip;
        auto *target = reinterpret_cast<quint32 *>(row);
        if (!inside) {
            for (int k = 0; k < line.lead + line.solid + line.trail; ++k) {
                if (at + k >= clip.left() && at + k <= clip.right())
                    target[at + k] = blended(source[k], target[at + k]);
            }
            continue;
        }
        target += at;
        for (int k = 0; k < line.lead; ++k)
            target[k] = blended(source[k], target[k]);
        source += line.lead;
        target += line.lead;
        copyRun(target, source, line.solid);
        source += line.solid;
        target += line.solid;
        for (int k = 0; k < line.trail; ++k)
            target[k] = blended(source[k], target[k]);
    }
}

} // namespace brannock
