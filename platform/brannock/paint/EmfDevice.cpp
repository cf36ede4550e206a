#include "EmfDevice.h"

#include "EmfCanvas.h"
#include "MapColours.h"

#include <cmath>
#include <QFontInfo>
#include <QFontMetricsF>
#include <QImage>
#include <QPaintEngine>
#include <QPainter>
#include <QPainterPath>
#include <QTransform>

namespace brannock {

/// Passes a painter's output to the recorder.
class EmfDevice::Engine : public QPaintEngine
{
public:
    Engine(const QSizeF &size, int dpi, const QString &title)
        // The features declared here prevent QPainter from falling back to images, since shapes are recorded.
        : QPaintEngine(PrimitiveTransform | PixmapTransform | PainterPaths | AlphaBlend | Antialiasing | BrushStroke |
                       ConstantOpacity)
        , m_canvas(size.width(), size.height(), dpi, title.toStdU16String())
        , m_dpi(dpi)
    {
    }

    bool begin(QPaintDevice *) override { return true; }
    bool end() override
    {
        const std::string recorded = m_canvas.finish();
        bytes = QByteArray(recorded.data(), qsizetype(recorded.size()));
        return !bytes.isEmpty();
    }
    Type type() const override { return User; }
    void updateState(const QPaintEngineState &next) override;
    void drawRects(const QRectF *rects, int count) override;
    void drawLines(const QLineF *lines, int count) override;
    void drawEllipse(const QRectF &rect) override;
    void drawPolygon(const QPointF *points, int count, PolygonDrawMode mode) override;
    void drawPath(const QPainterPath &path) override;
    void drawTextItem(const QPointF &at, const QTextItem &item) override;
    void drawPixmap(const QRectF &target, const QPixmap &pixmap, const QRectF &source) override
    {
        drawImage(target, pixmap.toImage(), source, Qt::AutoColor);
    }
    void drawImage(const QRectF &target, const QImage &image, const QRectF &source, Qt::ImageConversionFlags) override;
    using QPaintEngine::drawEllipse;
    using QPaintEngine::drawLines;
    using QPaintEngine::drawPolygon;
    using QPaintEngine::drawRects;

    QByteArray bytes;

private:
    EmfCanvas::Point mapped(const QPointF &point) const
    {
        const QPointF at = m_transform.map(point);
        return {at.x(), at.y()};
    }
    bool isUpright() const { return m_transform.type() <= QTransform::TxScale; }
    double scale() const { return std::sqrt(std::abs(m_transform.determinant())); }

    EmfCanvas m_canvas;
    QTransform m_transform;
    double m_opacity = 1;
    uint32_t m_textColour = 0;
    int m_dpi;
};

namespace {

uint32_t colourOf(const QColor &colour)
{
    return toColourRef(mixed(Qt::white, QColor(colour.rgb()), colour.alphaF())).value();
}

} // namespace

void EmfDevice::Engine::updateState(const QPaintEngineState &next)
{
    const DirtyFlags dirty = next.state();
    if (dirty & DirtyTransform)
        m_transform = next.transform();
    if (dirty & DirtyOpacity)
        m_opacity = next.opacity();
    if (dirty & (DirtyPen | DirtyTransform)) {
        const QPen pen = next.pen();
        EmfCanvas::Pen wanted;
        wanted.visible = pen.style() != Qt::NoPen;
        wanted.colour = colourOf(pen.color());
        wanted.width = pen.isCosmetic() ? std::max(1.0, pen.widthF()) : pen.widthF() * scale();
        m_canvas.setPen(wanted);
        m_textColour = wanted.colour;
    }
    if (dirty & DirtyBrush) {
        const QBrush brush = next.brush();
        m_canvas.setBrush({brush.style() != Qt::NoBrush, colourOf(brush.color())});
    }
}

void EmfDevice::Engine::drawRects(const QRectF *rects, int count)
{
    for (int i = 0; i < count; ++i) {
        if (isUpright())
            m_canvas.rectangle(mapped(rects[i].topLeft()), mapped(rects[i].bottomRight()));
        else
            QPaintEngine::drawRects(&rects[i], 1);
    }
}

void EmfDevice::Engine::drawLines(const QLineF *lines, int count)
{
    for (int i = 0; i < count; ++i)
        m_canvas.polyline({mapped(lines[i].p1()), mapped(lines[i].p2())});
}

void EmfDevice::Engine::drawEllipse(const QRectF &rect)
{
    if (isUpright())
        m_canvas.ellipse(mapped(rect.topLeft()), mapped(rect.bottomRight()));
    else
        QPaintEngine::drawEllipse(rect);
}

void EmfDevice::Engine::drawPolygon(const QPointF *points, int count, PolygonDrawMode mode)
{
    std::vector<EmfCanvas::Point> corners;
    corners.reserve(size_t(count));
    for (int i = 0; i < count; ++i)
        corners.push_back(mapped(points[i]));
    if (mode == PolylineMode)
        m_canvas.polyline(corners);
    else
        m_canvas.polygon(corners, mode == WindingMode);
}

void EmfDevice::Engine::drawPath(const QPainterPath &path)
{
    using Step = EmfCanvas::PathStep;
    std::vector<Step> steps;
    steps.reserve(size_t(path.elementCount()));
    for (int i = 0; i < path.elementCount(); ++i) {
        const QPainterPath::Element element = path.elementAt(i);
        if (element.isCurveTo() && i + 2 < path.elementCount()) {
            steps.push_back(
                {Step::Curve, {mapped(element), mapped(path.elementAt(i + 1)), mapped(path.elementAt(i + 2))}});
            i += 2;
        } else {
            steps.push_back({element.isMoveTo() ? Step::Move : Step::Line, {mapped(element), {}, {}}});
        }
    }
    m_canvas.path(steps, path.fillRule() == Qt::WindingFill);
}

namespace {

/// Rows in the metafile's order: bottom-up, blue, green, red, each padded to four bytes.
std::string bottomUpRows(const QImage &opaque)
{
    const QImage pixels = opaque.convertToFormat(QImage::Format_BGR888);
    const auto stride = size_t(pixels.width()) * 3;
    std::string rows;
    rows.reserve((stride + 3) * size_t(pixels.height()));
    for (int y = pixels.height() - 1; y >= 0; --y) {
        rows.append(reinterpret_cast<const char *>(pixels.constScanLine(y)), stride);
        rows.append((4 - stride % 4) % 4, '\0');
    }
    return rows;
}

} // namespace

void EmfDevice::Engine::drawImage(const QRectF &target, const QImage &image, const QRectF &source,
                                  Qt::ImageConversionFlags)
{
    // Pictures in a metafile have no transparency, so they are blended with white paper.
    QImage pixels = image.copy(source.toAlignedRect());
    if (!isUpright())
        pixels = pixels.convertToFormat(QImage::Format_ARGB32_Premultiplied)
                     .scaled(target.size().expandedTo(QSizeF(1, 1)).toSize())
                     .transformed(
                         QTransform(m_transform.m11(), m_transform.m12(), m_transform.m21(), m_transform.m22(), 0, 0),
                         Qt::SmoothTransformation);
    else
        pixels = pixels.mirrored(m_transform.m11() < 0, m_transform.m22() < 0);
    QImage paper(pixels.size(), QImage::Format_RGB32);
    if (paper.isNull())
        return;
    paper.fill(Qt::white);
    QPainter painter(&paper);
    painter.setOpacity(m_opacity);
    painter.drawImage(0, 0, pixels);
    painter.end();
    const QRectF at = m_transform.mapRect(target);
    m_canvas.image({at.left(), at.top()}, {at.right(), at.bottom()}, paper.width(), paper.height(),
                   bottomUpRows(paper));
}

void EmfDevice::Engine::drawTextItem(const QPointF &at, const QTextItem &item)
{
    const QFont font = item.font();
    const QString text = item.text();
    EmfCanvas::Font wanted;
    // The first family is the requested one; if the reader does not have it, it selects its own substitute.
    wanted.family = font.families().value(0, font.family()).toStdU16String();
    const double size = font.pixelSize() > 0 ? font.pixelSize() : font.pointSizeF() * m_dpi / 72;
    wanted.size = size * scale();
    wanted.weight = font.bold() ? 700 : 400;
    wanted.italic = font.italic();
    wanted.angle = -std::atan2(m_transform.m12(), m_transform.m11()) * 180 / std::acos(-1.0);
    const QFontMetricsF metrics(font);
    // Metrics of fonts with point sizes use the resolution of the screen.
    const double perUnit = scale() * size / std::max(1.0, QFontInfo(font).pixelSize() * 1.0);
    std::vector<double> advances;
    double before = 0;
    for (qsizetype i = 1; i <= text.size(); ++i) {
        const double width = metrics.horizontalAdvance(text, int(i)) * perUnit;
        advances.push_back(width - before);
        before = width;
    }
    m_canvas.text(mapped(at), text.toStdU16String(), advances, wanted, m_textColour);
}

EmfDevice::EmfDevice(const QSizeF &inches, int dpi, const QString &title)
    : m_engine(std::make_unique<Engine>(inches * dpi, dpi, title))
    , m_size((inches * dpi).toSize())
    , m_dpi(dpi)
{
}

EmfDevice::~EmfDevice() = default;

QPaintEngine *EmfDevice::paintEngine() const
{
    return m_engine.get();
}

QByteArray EmfDevice::bytes() const
{
    return m_engine->bytes;
}

int EmfDevice::metric(PaintDeviceMetric metric) const
{
    switch (metric) {
    case PdmWidth:
        return m_size.width();
    case PdmHeight:
        return m_size.height();
    case PdmWidthMM:
        return int(std::lround(m_size.width() * 25.4 / m_dpi));
    case PdmHeightMM:
        return int(std::lround(m_size.height() * 25.4 / m_dpi));
    case PdmDpiX:
    case PdmDpiY:
    case PdmPhysicalDpiX:
    case PdmPhysicalDpiY:
        return m_dpi;
    case PdmDevicePixelRatio:
        return 1;
    case PdmDevicePixelRatioScaled:
        return int(devicePixelRatioFScale());
    case PdmNumColors:
        return 1 << 24;
    case PdmDepth:
        return 24;
    default:
        return QPaintDevice::metric(metric);
    }
}

} // namespace brannock
