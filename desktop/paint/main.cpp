#include <cstdio>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

using namespace Qt::StringLiterals;

/// arvo-make-icons FOLDER DRAWING.svg...: paints each drawing in the sizes that desktops use, into the folders of an
/// icon theme. Used by the build.
int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    for (const QString &drawing : arguments.mid(2)) {
        QSvgRenderer renderer(drawing);
        const QString name = QFileInfo(drawing).completeBaseName();
        const QString context = name == u"arvo"_s ? u"apps"_s : u"mimetypes"_s;
        for (const int side : {16, 22, 24, 32, 48, 64, 128, 256}) {
            QImage picture(side, side, QImage::Format_ARGB32);
            picture.fill(Qt::transparent);
            QPainter painter(&picture);
            renderer.render(&painter);
            painter.end();
            const QString folder = u"%1/%2x%2/%3"_s.arg(arguments.value(1), QString::number(side), context);
            if (!renderer.isValid() || !QDir().mkpath(folder) || !picture.save(folder + u'/' + name + u".png"_s)) {
                std::fprintf(stderr, "%s cannot be painted\n", qUtf8Printable(drawing));
                return 1;
            }
        }
    }
    return 0;
}
