#include "PagePreview.h"

#include <QPainter>

namespace app {

namespace {

constexpr int kDelay = 120; // milliseconds
constexpr int kMargin = 6;

} // namespace

PagePreview::PagePreview(std::function<brannock::MapPicture()> page, const QSizeF &inches, double dpi, QWidget *parent)
    : QWidget(parent)
    , m_page(std::move(page))
    , m_inches(inches)
    , m_dpi(dpi)
{
    setObjectName(QStringLiteral("pagePreview"));
    setAccessibleName(QStringLiteral("Preview of the page"));
    m_delay.setSingleShot(true);
    m_delay.setInterval(kDelay);
    connect(&m_delay, &QTimer::timeout, this, &PagePreview::renew);
}

void PagePreview::renew()
{
    const QSizeF room = QSizeF(size().shrunkBy(QMargins(kMargin, kMargin, kMargin, kMargin))) * devicePixelRatioF();
    const QSizeF pixels = m_inches.scaled(room, Qt::KeepAspectRatio);
    if (pixels.isEmpty())
        return;
    const QSizeF paper = m_inches * m_dpi;
    QImage image(pixels.toSize(), QImage::Format_RGB32);
    image.fill(Qt::white);
    {
        QPainter painter(&image);
        painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
        painter.scale(image.width() / paper.width(), image.height() / paper.height());
        m_page().paint(painter, QRectF(QPointF(0, 0), paper), m_dpi);
    }
    m_picture = QPixmap::fromImage(image);
    m_picture.setDevicePixelRatio(devicePixelRatioF());
    update();
}

void PagePreview::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    if (m_picture.isNull())
        return;
    const QSizeF shown = m_picture.deviceIndependentSize();
    const QPointF at((width() - shown.width()) / 2, (height() - shown.height()) / 2);
    painter.fillRect(QRectF(at + QPointF(3, 3), shown), QColor(0, 0, 0, 60));
    painter.drawPixmap(at, m_picture);
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawRect(QRectF(at, shown));
}

void PagePreview::resizeEvent(QResizeEvent *)
{
    if (m_picture.isNull())
        renew();
    else
        m_delay.start();
}

} // namespace app
