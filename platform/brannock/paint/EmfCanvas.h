#pragma once
#include <cstdint>
#include <map>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace brannock {

/// Records an enhanced metafile in memory. This header does not include the library, whose headers conflict with
/// others. Lengths and positions are pixels, with fractions; colours are 0x00BBGGRR.
class EmfCanvas
{
public:
    struct Point
    {
        double x, y;
    };
    struct Pen
    {
        bool visible = true;
        uint32_t colour = 0;
        double width = 1;
        auto operator<=>(const Pen &) const = default;
    };
    struct Brush
    {
        bool visible = false;
        uint32_t colour = 0;
        auto operator<=>(const Brush &) const = default;
    };
    struct Font
    {
        std::u16string family;
        double size = 10; ///< pixels
        int weight = 400;
        bool italic = false;
        double angle = 0; ///< degrees, counter-clockwise
        auto operator<=>(const Font &) const = default;
    };
    /// A segment of a path, from the end of the previous one.
    struct PathStep
    {
        enum Kind { Move, Line, Curve } kind;
        Point points[3]; ///< Move and Line use the first
    };

    EmfCanvas(double width, double height, double pixelsPerInch, const std::u16string &title);
    ~EmfCanvas();
    EmfCanvas(const EmfCanvas &) = delete;
    EmfCanvas &operator=(const EmfCanvas &) = delete;

    void setPen(const Pen &pen);
    void setBrush(const Brush &brush);
    void ellipse(Point topLeft, Point bottomRight);
    void rectangle(Point topLeft, Point bottomRight);
    void polyline(const std::vector<Point> &points);
    void polygon(const std::vector<Point> &points, bool winding);
    void path(const std::vector<PathStep> &steps, bool winding);
    /// Draws text from a position on the base line; advances: width of each character.
    void text(Point start, const std::u16string &text, const std::vector<double> &advances, const Font &font,
              uint32_t colour);

    /// Draws a picture, stretched to the rectangle. rows: bottom-up, three bytes per pixel (blue, green, red), each row
    /// padded to a multiple of four bytes.
    void image(Point topLeft, Point bottomRight, int width, int height, std::string rows);

    /// Ends the recording. Returns an empty string if it failed.
    std::string finish();

private:
    using Handle = unsigned int;
    Handle penHandle(const Pen &pen);
    Handle brushHandle(const Brush &brush);
    Handle fontHandle(const Font &font);
    void select(Handle &current, Handle wanted);

    struct Image;
    std::string withImages(const std::string &recorded) const;
    std::string imageRecord(const Image &image) const;

    struct Stream;
    Stream *m_stream;
    Handle m_context = 0;
    std::map<Pen, Handle> m_pens;
    std::map<Brush, Handle> m_brushes;
    std::map<Font, Handle> m_fonts;
    Handle m_pen = 0;
    Handle m_brush = 0;
    Handle m_font = 0;
    int m_winding = -1;
    int64_t m_textColour = -1;
    std::vector<Image> m_images; ///< in the order of their placeholders in the recording
    double m_deviceScale = 1;    ///< device pixels per recorded unit
};

} // namespace brannock
