#pragma once
#include "TubeArt.h"

#include <optional>
#include <QImage>
#include <vector>

namespace brannock {

/// Pictures of tubes at one size in pixels, one for each look, made when first asked for, and put onto an image. A
/// picture is kept as its lines: some pixels to blend (the smoothed edge), a run to copy, some to blend; so putting
/// thousands of them costs little more than copying their pixels.
class SpriteAtlas
{
public:
    /// Throws everything away when the size, the options or the numbering of looks has changed. ground: when everything
    /// below the pictures is of this colour, they are kept as they look on it, and putting one is nothing but copying.
    void prepare(const MapScene &scene, const TubeArt &art, std::optional<QRgb> ground = std::nullopt);
    /// Makes the picture of this look if there is none yet. False when the atlas is full.
    bool ensure(const MapScene &scene, quint32 look) { return m_slots[look] >= 0 || make(scene, look); }
    /// Puts the look's picture onto the image (RGB32), its upper left corner at x, y, within the clip. Only after
    /// ensure().
    void put(QImage &image, const QRect &clip, int x, int y, quint32 look) const;

    /// Width and height of every picture in pixels. The tube's centre is in the middle.
    int tile() const { return m_tile; }
    int count() const { return m_used; }

private:
    struct Line
    {
        quint16 skip = 0;
        quint16 lead = 0;
        quint16 solid = 0;
        quint16 trail = 0;
        quint32 pixels = 0; // place of the first in m_pixels
    };
    bool make(const MapScene &scene, quint32 look);
    void store(const QImage &picture);
    void storeOnGround(const QRgb *pixels, int first, int end);

    TubeArt m_art;
    std::optional<QRgb> m_ground;
    quint32 m_generation = 0;
    int m_tile = 0;
    int m_used = 0;
    std::vector<qint32> m_slots; // by look, -1: none yet
    std::vector<Line> m_lines;   // m_tile of them for each slot
    std::vector<quint32> m_pixels;
};

} // namespace brannock
