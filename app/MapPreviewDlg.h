#pragma once
#include <functional>
#include <QPrintPreviewDialog>

namespace app {

/// Print preview of the map.
class MapPreviewDlg : public QPrintPreviewDialog
{
    Q_OBJECT
public:
    /// paint: paints the page on the given device.
    MapPreviewDlg(QPrinter &printer, const std::function<void(QPrinter &)> &paint, QWidget *parent);
};

} // namespace app
