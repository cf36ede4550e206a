#pragma once
#include "TubeArt.h"

#include <optional>
#include <QImage>
#include <vector>

namespace brannock {

/// Pictures of tubes in one size, one for each look, created on first use and copied onto an image. A picture is stored
/// as lines: pixels to blend (smoothed edge), a run to copy, pixels to blend. So drawing thousands of them costs little
/// more than copying their pixels.
class SpriteAtlas
{
public:
    /// Clears the atlas if the size, the options or the numbering of looks has changed. ground: if the background below
    /// the pictures has this one colour, they are stored blended with it and only copied.
    void prepare(const MapScene &scene, const TubeArt &art, std::optional<QRgb> ground = std::nullopt);
    /// Creates the picture of this look if it does not exist. Returns false if the atlas is full.
    bool ensure(const MapScene &scene, quint32 look) { return m_slots[look] >= 0 || make(scene, look); }
    /// Copies the look's picture onto the image (RGB32) with its upper left corner at x, y, within the clip. Call
    /// ensure() first.
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
        quint32 pixels = 0; // index of the first pixel in m_pixels
    };
    bool make(const MapScene &scene, quint32 look);
    void store(const QImage &picture);
    void storeOnGround(const QRgb *pixels, int first, int end);

    TubeArt m_art;
    std::optional<QRgb> m_ground;
    quint32 m_generation = 0;
    int m_tile = 0;
    int m_used = 0;
    std::vector<qint32> m_slots; // by look; -1: not created
    std::vector<Line> m_lines;   // m_tile lines for each slot
    std::vector<quint32> m_pixels;
};

} // namespace brannock
