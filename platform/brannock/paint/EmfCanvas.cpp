// The only source that includes the libEMF header, which defines thousands of macros and is therefore the last include.
#include "EmfCanvas.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>

#include <libEMF/emf.h>
#undef min
#undef max

namespace brannock {

namespace {

/// Recorded units per pixel, for positions between pixels.
constexpr int kUnits = 8;
constexpr double kHundredthsOfMm = 2540; // per inch

int units(double pixels)
{
    return int(std::lround(pixels * kUnits));
}

POINT toPoint(EmfCanvas::Point point)
{
    return {units(point.x), units(point.y)};
}

std::vector<POINT> toPoints(const std::vector<EmfCanvas::Point> &points)
{
    std::vector<POINT> converted;
    converted.reserve(points.size());
    for (const EmfCanvas::Point &point : points)
        converted.push_back(toPoint(point));
    return converted;
}

const WCHAR *wide(const std::u16string &text)
{
    return reinterpret_cast<const WCHAR *>(text.c_str());
}

} // namespace

/// A file in memory, since the library only writes files.
struct EmfCanvas::Stream
{
    char *bytes = nullptr;
    size_t size = 0;
    FILE *file = open_memstream(&bytes, &size);
    ~Stream()
    {
        if (file)
            fclose(file);
        free(bytes);
    }
};

struct EmfCanvas::Image
{
    int left, top, right, bottom; ///< recorded units
    int width, height;            ///< pixels
    std::string rows;
};

EmfCanvas::EmfCanvas(double width, double height, double pixelsPerInch, const std::u16string &title)
    : m_stream(new Stream)
{
    if (!m_stream->file)
        return;
    const auto frame = [pixelsPerInch](double pixels) {
        return int(std::lround(pixels / pixelsPerInch * kHundredthsOfMm));
    };
    const RECT size = {0, 0, frame(width), frame(height)};
    // Program and title, each followed by a zero, and a final zero.
    const std::u16string description = u"ARVO" + std::u16string(1, u'\0') + title + std::u16string(2, u'\0');
    m_context = CreateEnhMetaFileWithFILEW(0, m_stream->file, &size, wide(description));
    if (!m_context)
        return;
    // The frame in pixels of the reference device in the metafile's header.
    const auto onDevice = [this](double inches, int pixels, int millimetres) {
        return int(
            std::lround(inches * 25.4 * GetDeviceCaps(m_context, pixels) / GetDeviceCaps(m_context, millimetres)));
    };
    SetMapMode(m_context, MM_ANISOTROPIC);
    SetWindowExtEx(m_context, units(width), units(height), nullptr);
    const int deviceWidth = onDevice(width / pixelsPerInch, HORZRES, HORZSIZE);
    SetViewportExtEx(m_context, deviceWidth, onDevice(height / pixelsPerInch, VERTRES, VERTSIZE), nullptr);
    m_deviceScale = double(deviceWidth) / units(width);
    SetBkMode(m_context, TRANSPARENT);
    SetTextAlign(m_context, TA_LEFT | TA_BASELINE);
}

EmfCanvas::~EmfCanvas()
{
    finish();
    delete m_stream;
}

std::string EmfCanvas::finish()
{
    if (!m_context)
        return {};
    const HDC context = std::exchange(m_context, 0);
    try {
        const HENHMETAFILE metafile = CloseEnhMetaFileWithFILE(context);
        DeleteEnhMetaFile(metafile);
    } catch (const std::runtime_error &) {
        return {}; // the library throws if it cannot write
    }
    // The library went back to complete the header; a memory stream's size is its current position.
    fseek(m_stream->file, 0, SEEK_END);
    fflush(m_stream->file);
    return withImages(std::string(m_stream->bytes, m_stream->size));
}

// Offsets in the file format, from the start of a record.
namespace emf {

constexpr uint32_t kSetPixelRecord = 15;
constexpr uint32_t kStretchBitsRecord = 81;
constexpr size_t kFileSize = 48; // in the header
constexpr uint32_t kRecordBytes = 80;
constexpr uint32_t kBitmapInfoBytes = 40;
constexpr uint32_t kCopyPixels = 0x00CC0020;

uint32_t number(const std::string &bytes, size_t at)
{
    uint32_t value = 0;
    for (size_t i = 0; i < sizeof value; ++i)
        value |= uint32_t(uint8_t(bytes[at + i])) << (8 * i);
    return value;
}

void append(std::string &bytes, uint32_t value)
{
    for (size_t i = 0; i < sizeof value; ++i)
        bytes += char(value >> (8 * i) & 0xFF);
}

} // namespace emf

std::string EmfCanvas::imageRecord(const Image &image) const
{
    const auto device = [this](int unit) { return uint32_t(int(std::lround(unit * m_deviceScale))); };
    std::string record;
    const auto size = uint32_t(emf::kRecordBytes + emf::kBitmapInfoBytes + image.rows.size());
    for (const uint32_t field : {emf::kStretchBitsRecord,
                                 size,
                                 device(image.left),
                                 device(image.top),
                                 device(image.right),
                                 device(image.bottom),
                                 uint32_t(image.left),
                                 uint32_t(image.top),
                                 0U,
                                 0U,
                                 uint32_t(image.width),
                                 uint32_t(image.height),
                                 emf::kRecordBytes,
                                 emf::kBitmapInfoBytes,
                                 emf::kRecordBytes + emf::kBitmapInfoBytes,
                                 uint32_t(image.rows.size()),
                                 0U,
                                 emf::kCopyPixels,
                                 uint32_t(image.right - image.left),
                                 uint32_t(image.bottom - image.top)})
        emf::append(record, field);
    constexpr uint32_t kPlanesAndBits = 1 | 24 << 16;
    for (const uint32_t field : {emf::kBitmapInfoBytes, uint32_t(image.width), uint32_t(image.height), kPlanesAndBits,
                                 0U, uint32_t(image.rows.size()), 0U, 0U, 0U, 0U})
        emf::append(record, field);
    return record + image.rows;
}

// Replaces the placeholder pixels by the pictures.
std::string EmfCanvas::withImages(const std::string &recorded) const
{
    if (m_images.empty())
        return recorded;
    std::string whole;
    size_t next = 0;
    for (size_t at = 0; at + 8 <= recorded.size();) {
        const size_t size = emf::number(recorded, at + 4);
        if (size < 8 || at + size > recorded.size())
            return {};
        if (emf::number(recorded, at) == emf::kSetPixelRecord && next < m_images.size())
            whole += imageRecord(m_images[next++]);
        else
            whole.append(recorded, at, size);
        at += size;
    }
    std::string fileSize;
    emf::append(fileSize, uint32_t(whole.size()));
    return whole.replace(emf::kFileSize, fileSize.size(), fileSize);
}

// The library's function for pictures does nothing. A SetPixel record, used for nothing else, is recorded as a
// placeholder that keeps the order.
void EmfCanvas::image(Point topLeft, Point bottomRight, int width, int height, std::string rows)
{
    if (!m_context || width <= 0 || height <= 0)
        return;
    m_images.push_back({units(topLeft.x), units(topLeft.y), units(bottomRight.x), units(bottomRight.y), width, height,
                        std::move(rows)});
    SetPixel(m_context, m_images.back().left, m_images.back().top, 0);
}

void EmfCanvas::select(Handle &current, Handle wanted)
{
    if (current == wanted)
        return;
    SelectObject(m_context, wanted);
    current = wanted;
}

EmfCanvas::Handle EmfCanvas::penHandle(const Pen &pen)
{
    if (!pen.visible)
        return GetStockObject(NULL_PEN);
    Handle &handle = m_pens[pen];
    if (!handle)
        handle = CreatePen(PS_SOLID, std::max(1, units(pen.width)), pen.colour);
    return handle;
}

EmfCanvas::Handle EmfCanvas::brushHandle(const Brush &brush)
{
    if (!brush.visible)
        return GetStockObject(NULL_BRUSH);
    Handle &handle = m_brushes[brush];
    if (!handle)
        handle = CreateSolidBrush(brush.colour);
    return handle;
}

EmfCanvas::Handle EmfCanvas::fontHandle(const Font &font)
{
    Handle &handle = m_fonts[font];
    if (!handle) {
        LOGFONTW log = {};
        log.lfHeight = -std::max(1, units(font.size));
        log.lfEscapement = log.lfOrientation = int(std::lround(font.angle * 10));
        log.lfWeight = font.weight;
        log.lfItalic = font.italic;
        log.lfCharSet = DEFAULT_CHARSET;
        font.family.copy(reinterpret_cast<char16_t *>(log.lfFaceName), LF_FACESIZE - 1);
        handle = CreateFontIndirectW(&log);
    }
    return handle;
}

void EmfCanvas::setPen(const Pen &pen)
{
    if (m_context)
        select(m_pen, penHandle(pen));
}

void EmfCanvas::setBrush(const Brush &brush)
{
    if (m_context)
        select(m_brush, brushHandle(brush));
}

void EmfCanvas::ellipse(Point topLeft, Point bottomRight)
{
    if (m_context)
        Ellipse(m_context, units(topLeft.x), units(topLeft.y), units(bottomRight.x), units(bottomRight.y));
}

void EmfCanvas::rectangle(Point topLeft, Point bottomRight)
{
    if (m_context)
        Rectangle(m_context, units(topLeft.x), units(topLeft.y), units(bottomRight.x), units(bottomRight.y));
}

void EmfCanvas::polyline(const std::vector<Point> &points)
{
    if (m_context && points.size() >= 2)
        Polyline(m_context, toPoints(points).data(), int(points.size()));
}

void EmfCanvas::polygon(const std::vector<Point> &points, bool winding)
{
    if (!m_context || points.size() < 2)
        return;
    if (std::exchange(m_winding, int(winding)) != int(winding))
        SetPolyFillMode(m_context, winding ? WINDING : ALTERNATE);
    Polygon(m_context, toPoints(points).data(), int(points.size()));
}

void EmfCanvas::path(const std::vector<PathStep> &steps, bool winding)
{
    if (!m_context || steps.empty())
        return;
    if (std::exchange(m_winding, int(winding)) != int(winding))
        SetPolyFillMode(m_context, winding ? WINDING : ALTERNATE);
    BeginPath(m_context);
    for (const PathStep &step : steps) {
        const POINT points[3] = {toPoint(step.points[0]), toPoint(step.points[1]), toPoint(step.points[2])};
        if (step.kind == PathStep::Move)
            MoveToEx(m_context, points[0].x, points[0].y, nullptr);
        else if (step.kind == PathStep::Line)
            LineTo(m_context, points[0].x, points[0].y);
        else
            PolyBezierTo(m_context, points, 3);
    }
    EndPath(m_context);
    StrokeAndFillPath(m_context);
}

void EmfCanvas::text(Point start, const std::u16string &text, const std::vector<double> &advances, const Font &font,
                     uint32_t colour)
{
    if (!m_context || text.empty() || advances.size() != text.size())
        return;
    select(m_font, fontHandle(font));
    if (std::exchange(m_textColour, int64_t(colour)) != int64_t(colour))
        SetTextColor(m_context, colour);
    // The rounding error is carried over to the next advance, so that long lines do not drift.
    std::vector<INT> dx;
    dx.reserve(advances.size());
    double end = 0;
    int placed = 0;
    for (const double advance : advances) {
        end += advance;
        dx.push_back(units(end) - placed);
        placed += dx.back();
    }
    ExtTextOutW(m_context, units(start.x), units(start.y), 0, nullptr, wide(text), UINT(text.size()), dx.data());
}

} // namespace brannock
