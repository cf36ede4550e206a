#include "MapPreviewDlg.h"

#include <QGuiApplication>
#include <QPrinter>
#include <QScreen>

using namespace Qt::StringLiterals;

namespace app {

MapPreviewDlg::MapPreviewDlg(QPrinter &printer, const std::function<void(QPrinter &)> &paint, QWidget *parent)
    : QPrintPreviewDialog(&printer, parent, Qt::Window)
{
    setObjectName(u"mapPreview"_s);
    setWindowTitle(u"Map Print Preview"_s);
    connect(this, &QPrintPreviewDialog::paintRequested, this, [paint](QPrinter *device) { paint(*device); });
    // Large enough to read the legend, smaller than the window.
    resize(QGuiApplication::primaryScreen()->availableSize() * 0.8);
}

} // namespace app
