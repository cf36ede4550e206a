#include "EmfDevice.h"
#include "MapPicture.h"

#include <QBuffer>
#include <QFileInfo>
#include <QPdfWriter>
#include <QSvgGenerator>
#include <tarnwick/FileWriter.h>

namespace brannock {

using namespace Qt::StringLiterals;

namespace {

constexpr int kPdfDpi = 1200;
constexpr int kSvgDpi = 96;
/// Fine enough for hinted letter widths; the coordinates of a large sheet still fit into 16-bit numbers.
constexpr int kEmfDpi = 192;
/// Larger images are refused: a typing error would use all memory.
constexpr qint64 kMostPixels = qint64(1) << 28;

QRectF pageRect(const QSizeF &inches, int dpi)
{
    return QRectF(QPointF(0, 0), inches * dpi);
}

QByteArray pdf(const MapPicture &picture, const QSizeF &inches, const QString &title)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setResolution(kPdfDpi);
    writer.setTitle(title);
    writer.setCreator(u"ARVO"_s);
    // A custom page size keeps width and height as they are, without an orientation.
    writer.setPageLayout(QPageLayout(QPageSize(inches, QPageSize::Inch, QString(), QPageSize::ExactMatch),
                                     QPageLayout::Portrait, QMarginsF(0, 0, 0, 0)));
    QPainter painter;
    if (painter.begin(&writer)) {
        const QRectF page = pageRect(inches, kPdfDpi);
        picture.paint(painter, page, kPdfDpi);
        for (const QList<LegendRow> &rows : picture.furtherPages(page, kPdfDpi)) {
            if (!writer.newPage())
                break;
            picture.paintFurther(painter, page, kPdfDpi, rows);
        }
        painter.end();
    }
    return bytes;
}

// QSvgGenerator writes font names into attributes without escaping, and fonts can come from a header file.
QFont plainFont(QFont font)
{
    QStringList families = font.families();
    for (QString &family : families)
        family.removeIf([](QChar c) { return c.category() == QChar::Other_Control || u"<>&\"'"_s.contains(c); });
    font.setFamilies(families);
    return font;
}

PictureContent withPlainFonts(PictureContent content)
{
    for (QFont *font : {&content.titleFont, &content.subtitleFont, &content.footerFont})
        *font = plainFont(*font);
    return content;
}

/// Removes characters that XML cannot represent, such as control characters: with one of them no program opens the
/// file.
QByteArray validXml(const QByteArray &utf8)
{
    QString text = QString::fromUtf8(utf8);
    text.removeIf([](QChar c) {
        const bool isSpace = c == u'\t' || c == u'\n' || c == u'\r';
        return (c < u' ' && !isSpace) || c == u'\uFFFE' || c == u'\uFFFF';
    });
    return text.toUtf8();
}

QByteArray svg(const MapPicture &picture, const QSizeF &inches, const QString &title)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QSvgGenerator generator;
    generator.setOutputDevice(&buffer);
    generator.setResolution(kSvgDpi);
    const QRectF page = pageRect(inches, kSvgDpi);
    generator.setSize(page.size().toSize());
    generator.setViewBox(page);
    generator.setTitle(title.toHtmlEscaped()); // QSvgGenerator does not escape it
    QPainter painter;
    if (painter.begin(&generator)) {
        painter.fillRect(page, Qt::white);
        picture.paint(painter, page, kSvgDpi);
        painter.end();
    }
    return validXml(bytes);
}

QByteArray emf(const MapPicture &picture, const QSizeF &inches, const QString &title)
{
    EmfDevice device(inches, kEmfDpi, title);
    const QRectF page = pageRect(inches, kEmfDpi);
    QPainter painter;
    if (painter.begin(&device)) {
        painter.fillRect(page, Qt::white);
        picture.paint(painter, page, kEmfDpi);
        painter.end();
    }
    return device.bytes();
}

} // namespace

QImage MapPicture::toImage(const QSizeF &inches, int dpi) const
{
    const QSize size = (inches * dpi).toSize();
    if (size.isEmpty() || qint64(size.width()) * size.height() > kMostPixels)
        return QImage();
    QImage image(size, QImage::Format_RGB32);
    if (image.isNull())
        return image;
    image.setDotsPerMeterX(int(dpi / 0.0254));
    image.setDotsPerMeterY(int(dpi / 0.0254));
    image.fill(Qt::white);
    QPainter painter(&image);
    paint(painter, image.rect(), dpi);
    return image;
}

void MapPicture::save(const QString &path, const QSizeF &inches, int dpi) const
{
    const QString ending = QFileInfo(path).suffix().toLower();
    const QString heading = m_content.title.section(u'\n', 0, 0).trimmed();
    const bool isNamed = !heading.isEmpty() && !m_content.isStandardTitle;
    const QString title = isNamed || m_content.documentName.isEmpty() ? heading : m_content.documentName;
    QByteArray bytes;
    if (ending == u"emf") {
        bytes = emf(*this, inches, title);
    } else if (ending == u"pdf") {
        bytes = pdf(*this, inches, title);
    } else if (ending == u"svg") {
        bytes = svg(MapPicture(m_scene, withPlainFonts(m_content)), inches, title);
    } else if (ending == u"png" || ending == u"bmp" || ending == u"jpg") {
        const QImage image = toImage(inches, dpi);
        if (image.isNull())
            throw PictureError(path, 0, u"the picture is too large or has no size."_s);
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        image.save(&buffer, ending.toLatin1().constData());
    } else {
        throw tarnwick::FileError(path, 0, u"pictures are written as .emf, .pdf, .svg, .bmp, .png or .jpg."_s);
    }
    if (bytes.isEmpty())
        throw PictureError(path, 0, u"the picture could not be made."_s);
    tarnwick::writeFileAtomically(path, bytes);
}

} // namespace brannock
