#pragma once
#include <QSize>

class QWidget;

namespace tarnwick {

/// The wanted size of a window that was not shown yet, reduced if the window with its frame would not fit on the
/// screen.
QSize sizeOnScreen(const QWidget &window, const QSize &wanted);
/// Resizes and moves a shown window so that its whole frame is on the screen. A maximised or full-screen window is not
/// changed.
void moveOntoScreen(QWidget &window);

} // namespace tarnwick
