#pragma once
#include <functional>
#include <QPrintPreviewDialog>

namespace app {

/// Shows the map as it will be printed.
class MapPreviewDlg : public QPrintPreviewDialog
{
    Q_OBJECT
public:
    /// paint: puts the page on the device given
    MapPreviewDlg(QPrinter &printer, const std::function<void(QPrinter &)> &paint, QWidget *parent);
};

} // namespace app
