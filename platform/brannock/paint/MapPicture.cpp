#include "MapPicture.h"

#include "MapPainter.h"
#include "MapRulers.h"

#include <cmath>
#include <limits>
#include <QFontMetricsF>
#include <tarnwick/Format.h>

namespace brannock {

using namespace Qt::StringLiterals;

namespace {

constexpr double kLegendPoints = 9;
constexpr double kLeastLegendPoints = 5.5;
constexpr double kLeastShare = 0.5;
/// More text than the title area of a large sheet holds in the smallest font. Each size that is tried breaks the whole
/// text into lines, which would take a minute for megabytes of text.
constexpr qsizetype kMostTitleText = 20'000;
/// Share of the page's height that the title may use before its font becomes smaller.
constexpr double kTitleShare = 0.3;
constexpr double kLeastTitleScale = 0.3;

int pixels(double points, double dpi)
{
    return std::max(1, int(std::lround(points * dpi / 72)));
}

QFont scaled(QFont font, double dpi, double scale = 1)
{
    font.setPixelSize(pixels((font.pointSizeF() > 0 ? font.pointSizeF() : 10) * scale, dpi));
    return font;
}

/// Height of a text broken into lines of this width.
double heightOf(const QString &text, const QFont &font, double width)
{
    return text.isEmpty() ? 0
                          : QFontMetricsF(font).boundingRect(QRectF(0, 0, width, 1e6), Qt::TextWordWrap, text).height();
}

QFont modelFont(int pixelSize)
{
    QFont font(u"Courier New"_s);
    font.setStyleHint(QFont::Monospace);
    font.setPixelSize(pixelSize);
    return font;
}

double gap(double dpi)
{
    return dpi * 0.1;
}

void frame(QPainter &painter, const QRectF &rect, double dpi)
{
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setPen(QPen(QColor(0x50, 0x50, 0x50), std::max(1.0, std::floor(dpi / 120))));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(rect);
}

} // namespace

QString modelText(const ellery::SteamGen &steamGen, const ellery::TubeStates &tubes)
{
    return tarnwick::format(u"Model %S (%D tubes)\n%D open tubes\n", steamGen.modelName, steamGen.numTube(),
                            tubes.openCount());
}

QFont MapPicture::tickFont(double dpi) const
{
    QFont font(u"Arial"_s);
    font.setPixelSize(pixels(m_scene.options.printTick(), dpi));
    return font;
}

QSizeF MapPicture::modelSize(int pixelSize) const
{
    const QString text = m_content.modelText.trimmed();
    if (text.isEmpty())
        return QSizeF(0, 0);
    const QFontMetricsF metrics(modelFont(pixelSize));
    return metrics.boundingRect(QRectF(0, 0, 1e6, 1e6), Qt::AlignLeft, text).size() +
           QSizeF(pixelSize, pixelSize * 0.6);
}

QMarginsF MapPicture::mapMargins(double dpi) const
{
    return MapRulers(m_scene, tickFont(dpi)).margins() + QMarginsF(1, 1, 1, 1) * gap(dpi);
}

double MapPicture::mapScale(const QRectF &rect, double dpi) const
{
    if (rect.width() <= 0 || rect.height() <= 0)
        return 0;
    MapView view;
    view.size = rect.size();
    view.fit(m_scene.bounds(), mapMargins(dpi));
    return view.scale;
}

double MapPicture::mapHeightFor(double width, double dpi) const
{
    const QRectF bounds = m_scene.bounds();
    const QMarginsF margins = mapMargins(dpi);
    const double room = width - margins.left() - margins.right();
    if (!(bounds.width() > 0) || room <= 0)
        return std::numeric_limits<double>::max();
    return bounds.height() * room / bounds.width() + margins.top() + margins.bottom();
}

/// Places the model text at the bottom of the legend's block and reduces the block to the room for the table.
void MapPicture::placeModel(Layout &layout, QRectF &block, double height) const
{
    if (height <= 0)
        return;
    layout.model = QRectF(block.left(), block.bottom() - height, block.width(), height);
    block.setBottom(layout.model.top());
}

void MapPicture::placeBeside(Layout &layout, const QRectF &body, double dpi) const
{
    for (double points = kLegendPoints;; points -= 0.5) {
        layout.legendPixels = pixels(points, dpi);
        const LegendTable table(m_content.legend, layout.legendPixels);
        const QSizeF model = modelSize(layout.legendPixels);
        const double wanted = m_content.legend.isEmpty() ? 0 : table.fullWidth();
        const double least = m_content.legend.isEmpty() ? 0 : table.leastWidth();
        const double width =
            std::max({std::min(wanted, body.width() * 0.36), std::min(least, body.width() * 0.5), model.width()});
        QRectF block(body.right() - width, body.top(), width, body.height());
        layout.map = body.adjusted(0, 0, -width - gap(dpi), 0);
        layout.map.setHeight(std::min(body.height(), mapHeightFor(layout.map.width(), dpi)));
        placeModel(layout, block, model.height());
        layout.legend = m_content.legend.isEmpty() ? QRectF() : block;
        if (points <= kLeastLegendPoints || table.fullHeight() <= block.height())
            break;
    }
    // A short table gets a short frame, with the model text directly below.
    if (!layout.legend.isEmpty()) {
        const LegendTable table(m_content.legend, layout.legendPixels);
        layout.legend.setHeight(std::min(layout.legend.height(), table.fullHeight()));
    }
    if (!layout.model.isEmpty())
        layout.model.moveTop(layout.legend.isEmpty() ? body.top() : layout.legend.bottom());
    layout.legendBelow = false;
}

void MapPicture::placeBelow(Layout &layout, const QRectF &body, double dpi) const
{
    for (double points = kLegendPoints;; points -= 0.5) {
        layout.legendPixels = pixels(points, dpi);
        const LegendTable table(m_content.legend, layout.legendPixels);
        const QSizeF model = modelSize(layout.legendPixels);
        const double tableHeight = m_content.legend.isEmpty() ? 0 : table.fullHeight();
        const double tableWidth = std::min(table.fullWidth(), body.width());
        // The model text is beside the table if there is room, else below it.
        const bool beside = tableWidth + model.width() <= body.width();
        const double wanted = beside ? std::max(tableHeight, model.height()) : tableHeight + model.height();
        const double mapWish = mapHeightFor(body.width(), dpi);
        const double height = std::min(std::max(body.height() * 0.45, body.height() - mapWish - gap(dpi)), wanted);
        // The map needs no more height than its width allows.
        const double mapHeight = std::min(body.height() - height - gap(dpi), mapWish);
        layout.map = QRectF(body.left(), body.top(), body.width(), mapHeight);
        QRectF block(body.left(), layout.map.bottom() + gap(dpi), tableWidth, height);
        layout.model = QRectF();
        if (beside && model.height() > 0)
            layout.model =
                QRectF(QPointF(m_content.legend.isEmpty() ? block.left() : block.right(), block.top()), model);
        else
            placeModel(layout, block, model.height());
        layout.legend = m_content.legend.isEmpty() ? QRectF() : block;
        if (points <= kLeastLegendPoints || tableHeight <= block.height() + 0.01)
            break;
    }
    layout.legendBelow = true;
}

int MapPicture::rowsShown(const Layout &layout) const
{
    return LegendTable(m_content.legend, layout.legendPixels).rowsWithin(layout.legend.height());
}

void MapPicture::placeTitle(Layout &layout, QRectF &body, double dpi) const
{
    const QString title = m_content.title.trimmed();
    const QString subtitle = m_content.subtitle.trimmed();
    if (title.isEmpty() && subtitle.isEmpty())
        return;
    const double most = body.height() * kTitleShare;
    double upper = 0;
    double lower = 0;
    for (layout.titleScale = 1;; layout.titleScale *= 0.92) {
        upper = heightOf(title, scaled(m_content.titleFont, dpi, layout.titleScale), body.width());
        lower = heightOf(subtitle, scaled(m_content.subtitleFont, dpi, layout.titleScale), body.width());
        if (upper + lower + gap(dpi) <= most || layout.titleScale < kLeastTitleScale)
            break;
    }
    const double height = std::min(upper + lower + gap(dpi), most);
    layout.title = QRectF(body.left(), body.top(), body.width(), height);
    if (lower > 0) {
        const double below = upper > 0 ? std::min(lower + gap(dpi) / 2, height) : height;
        layout.subtitle = QRectF(body.left(), layout.title.bottom() - below, body.width(), below);
    }
    body.setTop(layout.title.bottom() + gap(dpi));
}

void MapPicture::placeFooter(Layout &layout, QRectF &body, double dpi) const
{
    const QString footer = m_content.footer.simplified();
    const QString signatures = m_content.signatures.trimmed();
    if (footer.isEmpty() && signatures.isEmpty())
        return;
    const QFontMetricsF metrics(scaled(m_content.footerFont, dpi));
    const double height = metrics.height();
    const auto takeLine = [&] {
        body.setBottom(body.bottom() - height);
        return QRectF(body.left(), body.bottom(), body.width(), height);
    };
    if (!footer.isEmpty())
        layout.footer = takeLine();
    if (!signatures.isEmpty()) {
        // A little more than measured, so that rounding does not cut the last letter.
        const double width = metrics.horizontalAdvance(signatures) + height * 0.2;
        const double free = body.width() - metrics.horizontalAdvance(footer) - height;
        if (!footer.isEmpty() && width <= free) {
            layout.footer.setWidth(body.width() - width);
            layout.signatures = QRectF(layout.footer.right(), layout.footer.top(), width, height);
        } else {
            layout.signatures = takeLine();
        }
    }
    body.setBottom(body.bottom() - gap(dpi));
}

QRectF MapPicture::placeAround(Layout &layout, const QRectF &page, double dpi) const
{
    QRectF body = page.marginsRemoved(m_content.margins * dpi);
    placeTitle(layout, body, dpi);
    placeFooter(layout, body, dpi);
    return body;
}

MapPicture::MapPicture(const MapScene &scene, const PictureContent &content)
    : m_scene(scene)
    , m_content(content)
{
    for (QString *text : {&m_content.title, &m_content.subtitle, &m_content.signatures}) {
        *text = text->trimmed();
        if (text->size() > kMostTitleText)
            *text = text->first(kMostTitleText) + u" ...";
    }
}

MapPicture::Layout MapPicture::layout(const QRectF &page, double dpi) const
{
    Layout common;
    const QRectF body = placeAround(common, page, dpi);
    if (m_content.legend.isEmpty() && m_content.modelText.trimmed().isEmpty()) {
        common.map = body;
        return common;
    }
    Layout beside = common;
    placeBeside(beside, body, dpi);
    Layout below = common;
    placeBelow(below, body, dpi);
    const double besideScale = mapScale(beside.map, dpi);
    const double belowScale = mapScale(below.map, dpi);
    // A complete legend is preferred to a larger map, as long as the map does not become too small.
    const int gain = rowsShown(below) - rowsShown(beside);
    if (gain > 0 && belowScale > besideScale * kLeastShare)
        return below;
    if (gain < 0 && besideScale > belowScale * kLeastShare)
        return beside;
    return belowScale > besideScale ? below : beside;
}

void MapPicture::paintMap(QPainter &painter, const QRectF &rect, double dpi) const
{
    if (rect.width() < 2 || rect.height() < 2)
        return;
    const MapRulers rulers(m_scene, tickFont(dpi));
    MapView view;
    view.size = rect.size();
    view.xOrientation = m_content.xOrientation;
    view.yOrientation = m_content.yOrientation;
    view.fit(m_scene.bounds(), mapMargins(dpi));
    painter.save();
    painter.translate(rect.topLeft());
    const QRectF all(QPointF(0, 0), rect.size());
    MapPainter::paint(painter, m_scene, view, all);
    rulers.paint(painter, rulers.layout(m_scene, view), MapRulers::Colours::of(m_scene.options, Qt::white),
                 all.toAlignedRect());
    painter.restore();
}

void MapPicture::paintTitle(QPainter &painter, const Layout &at, double dpi) const
{
    if (at.title.isEmpty())
        return;
    if (m_content.titleRect)
        frame(painter, at.title, dpi);
    painter.setPen(Qt::black);
    const int flags = int(Qt::AlignCenter) | Qt::TextWordWrap;
    QRectF upper = at.title;
    if (!at.subtitle.isEmpty()) {
        upper.setBottom(at.subtitle.top());
        painter.setFont(scaled(m_content.subtitleFont, dpi, at.titleScale));
        painter.drawText(at.subtitle, flags, m_content.subtitle.trimmed());
    }
    painter.setFont(scaled(m_content.titleFont, dpi, at.titleScale));
    painter.drawText(upper, flags, m_content.title.trimmed());
}

void MapPicture::paintFooter(QPainter &painter, const Layout &at, double dpi) const
{
    const QFont font = scaled(m_content.footerFont, dpi);
    const QFontMetricsF metrics(font);
    painter.setFont(font);
    painter.setPen(Qt::black);
    const auto line = [&](const QRectF &rect, Qt::Alignment align, const QString &text) {
        if (!rect.isEmpty())
            painter.drawText(rect, int(align | Qt::AlignVCenter) | Qt::TextSingleLine,
                             metrics.elidedText(text, Qt::ElideRight, rect.width()));
    };
    line(at.footer, Qt::AlignLeft, m_content.footer.simplified());
    line(at.signatures, Qt::AlignRight, m_content.signatures.trimmed());
}

QRectF MapPicture::placeFurther(Layout &layout, const QRectF &page, double dpi) const
{
    QRectF body = placeAround(layout, page, dpi);
    // Minimum height, so that large margins do not give one page per entry.
    body.setHeight(std::max(body.height(), 2 * dpi));
    return body;
}

QList<QList<LegendRow>> MapPicture::furtherPages(const QRectF &page, double dpi) const
{
    const Layout first = layout(page, dpi);
    const qsizetype shown = first.legend.isEmpty() ? 0 : rowsShown(first);
    const qsizetype count = m_content.legend.size();
    if (shown == count)
        return {};
    Layout further;
    const double height = placeFurther(further, page, dpi).height();
    const int fit = std::max(1, LegendTable({}, pixels(kLegendPoints, dpi)).linesWithin(height));
    QList<QList<LegendRow>> pages;
    for (qsizetype at = shown; at < count; at += fit)
        pages.append(m_content.legend.mid(at, fit));
    return pages;
}

void MapPicture::paintFurther(QPainter &painter, const QRectF &page, double dpi, const QList<LegendRow> &rows) const
{
    Layout at;
    QRectF block = placeFurther(at, page, dpi);
    const LegendTable table(rows, pixels(kLegendPoints, dpi));
    block.setSize(QSizeF(std::min(block.width(), table.fullWidth()), std::min(block.height(), table.fullHeight())));
    painter.save();
    paintTitle(painter, at, dpi);
    table.paint(painter, block, m_scene.options);
    if (m_content.legendRect)
        frame(painter, block, dpi);
    paintFooter(painter, at, dpi);
    painter.restore();
}

void MapPicture::paint(QPainter &painter, const QRectF &page, double dpi) const
{
    const Layout at = layout(page, dpi);
    painter.save();
    paintMap(painter, at.map, dpi);
    if (m_content.mapRect)
        frame(painter, at.map, dpi);
    paintTitle(painter, at, dpi);
    if (!at.legend.isEmpty()) {
        LegendTable(m_content.legend, at.legendPixels).paint(painter, at.legend, m_scene.options);
        if (m_content.legendRect)
            frame(painter, at.legend, dpi);
    }
    painter.setPen(Qt::black);
    if (!at.model.isEmpty()) {
        painter.setFont(modelFont(at.legendPixels));
        const double pad = at.legendPixels * 0.5;
        painter.drawText(at.model.adjusted(pad, pad / 2, 0, 0), Qt::AlignLeft | Qt::AlignTop,
                         m_content.modelText.trimmed());
    }
    paintFooter(painter, at, dpi);
    painter.restore();
}

} // namespace brannock
