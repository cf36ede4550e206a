#pragma once
#include <QSize>

class QWidget;

namespace tarnwick {

/// The wanted size of a window that has not been shown yet, made smaller where the window with its frame would not fit
/// on the screen.
QSize sizeOnScreen(const QWidget &window, const QSize &wanted);
/// Makes a shown window smaller and moves it, so that its whole frame is on the screen. Leaves one alone that fills the
/// screen by itself.
void moveOntoScreen(QWidget &window);

} // namespace tarnwick
