#include "LineIcon.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QSvgRenderer>

using namespace Qt::StringLiterals;

namespace app {

namespace {

/// Drawn on a square of 24 units.
QByteArray shapes(Picture picture)
{
    switch (picture) {
    case Picture::Undo:
        return "<path d='M8 5 L4 9.5 L8 14 M4 9.5 H14.5 A5 5 0 0 1 14.5 19.5 H8'/>";
    case Picture::Redo:
        return "<path d='M16 5 L20 9.5 L16 14 M20 9.5 H9.5 A5 5 0 0 0 9.5 19.5 H16'/>";
    case Picture::ZoomIn:
        return "<circle cx='10.5' cy='10.5' r='6.5'/><path d='M15.3 15.3 L21 21 M10.5 7.5 V13.5 M7.5 10.5 H13.5'/>";
    case Picture::ZoomOut:
        return "<circle cx='10.5' cy='10.5' r='6.5'/><path d='M15.3 15.3 L21 21 M7.5 10.5 H13.5'/>";
    case Picture::Fit:
        return "<path d='M4 9 V4 H9 M15 4 H20 V9 M20 15 V20 H15 M9 20 H4 V15'/><circle cx='12' cy='12' r='3.5'/>";
    case Picture::PreviousView:
        return "<path d='M14.5 5 L7.5 12 L14.5 19'/>";
    case Picture::NextView:
        return "<path d='M9.5 5 L16.5 12 L9.5 19'/>";
    case Picture::FindTube:
        return "<circle cx='12' cy='12' r='5'/><path d='M12 2.5 V7 M12 17 V21.5 M2.5 12 H7 M17 12 H21.5'/>";
    case Picture::FlipHorizontal:
        return "<path d='M12 3 V21' stroke-dasharray='2.5 2.5'/><path d='M9 7 V17 H3 Z M15 7 V17 H21 Z'/>";
    case Picture::FlipVertical:
        return "<path d='M3 12 H21' stroke-dasharray='2.5 2.5'/><path d='M7 9 H17 V3 Z M7 15 H17 V21 Z'/>";
    case Picture::FloatingId:
        return "<path d='M3.5 4.5 H20.5 V15.5 H12 L8 20 V15.5 H3.5 Z M7.5 8.5 H16.5 M7.5 11.5 H13'/>";
    case Picture::FullScreen:
        return "<path d='M4 9 V4 H9 M15 4 H20 V9 M20 15 V20 H15 M9 20 H4 V15'/>";
    case Picture::SelectRectangle:
        return "<path d='M4 4 H16 V9.5 M4 4 V16 H9.5' stroke-dasharray='2.6 2.4'/>"
               "<path d='M11.5 11.5 L20.5 15 L16.5 16.5 L15 20.5 Z'/>";
    case Picture::Lasso:
        return "<path d='M7.2 16.2 C2.5 13.5 2.6 6.5 8.5 4.6 C14.5 2.8 21.5 5.5 21 10.5 C20.5 15.5 13 16.8 8.6 15.2' "
               "stroke-dasharray='3.2 2.2'/><path d='M7.5 14.5 A1.8 1.8 0 1 1 7.4 14.5 M7.6 18 C7.6 19.6 6.6 20.6 5 "
               "21'/>";
    case Picture::ZoomRectangle:
        return "<path d='M3 3.5 H15 M3 3.5 V14.5 H7 M15 3.5 V6' stroke-dasharray='2.6 2.2'/>"
               "<circle cx='13.5' cy='13' r='5'/><path d='M17.3 16.8 L21.5 21'/>";
    case Picture::MoveMap:
        return "<path d='M12 3 V21 M3 12 H21 M9.5 5.5 L12 3 L14.5 5.5 M9.5 18.5 L12 21 L14.5 18.5 M5.5 9.5 L3 12 L5.5 "
               "14.5 M18.5 9.5 L21 12 L18.5 14.5'/>";
    case Picture::Edit:
        return "<path d='M5 19 L6 14.8 L15.8 5 L19 8.2 L9.2 18 Z M13.6 7.2 L16.8 10.4'/>";
    case Picture::Symbol:
        return "<circle cx='12' cy='12' r='8.5'/><path d='M8.5 16 L12 7.5 L15.5 16 M9.7 13.2 H14.3'/>";
    case Picture::Up:
        return "<path d='M12 19 V5 M6 11 L12 5 L18 11'/>";
    case Picture::Down:
        return "<path d='M12 5 V19 M6 13 L12 19 L18 13'/>";
    case Picture::Delete:
        return "<path d='M4.5 7 H19.5 M9.5 7 V4 H14.5 V7 M6.5 7 L7.5 20 H16.5 L17.5 7 M10.3 11 V16 M13.7 11 V16'/>";
    case Picture::Solo:
        return "<path d='M2.5 12 C6 6.5 9 5.5 12 5.5 S18 6.5 21.5 12 C18 17.5 15 18.5 12 18.5 S6 17.5 2.5 12 Z'/>"
               "<circle cx='12' cy='12' r='3'/>";
    case Picture::All:
        return "<path d='M4 6 L6 8 L9 4.5 M12 6.5 H20.5 M4 12 L6 14 L9 10.5 M12 12.5 H20.5 M4 18 L6 20 L9 16.5 "
               "M12 18.5 H20.5'/>";
    case Picture::Swap:
        return "<path d='M4 8 H19 M15 4 L19 8 L15 12 M20 16 H5 M9 12 L5 16 L9 20'/>";
    }
    return {};
}

class LineIconEngine : public QIconEngine
{
public:
    explicit LineIconEngine(Picture picture)
        : m_picture(picture)
    {
    }

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State) override
    {
        const QPalette palette = QGuiApplication::palette();
        const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
        const QByteArray colour = palette.color(group, QPalette::ButtonText).name().toLatin1();
        QSvgRenderer renderer(QByteArray("<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 24 24'><g fill='none' "
                                         "stroke='" +
                                         colour +
                                         "' stroke-width='1.7' stroke-linecap='round' stroke-linejoin='round'>" +
                                         shapes(m_picture) + "</g></svg>"));
        painter->setRenderHint(QPainter::Antialiasing);
        renderer.render(painter, rect);
    }

    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap picture(size);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return picture;
    }

    QIconEngine *clone() const override { return new LineIconEngine(m_picture); }

private:
    Picture m_picture;
};

} // namespace

QIcon lineIcon(Picture picture)
{
    return QIcon(new LineIconEngine(picture));
}

QIcon programIcon()
{
    QSvgRenderer drawing(u":/arvo/arvo.svg"_s);
    QIcon icon;
    for (const int side : {16, 24, 32, 48, 64, 128, 256}) {
        QPixmap picture(side, side);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        drawing.render(&painter);
        painter.end();
        icon.addPixmap(picture);
    }
    return icon;
}

} // namespace app
