#pragma once
#include <QColor>

class QPalette;
class QWidget;

namespace app {

/// Of a text that stands where something can be put: weaker than a text, and readable under every palette. The role
/// that palettes have for it is often left at what a light one needs.
QColor hintColour(const QPalette &palette);
/// Gives the placeholder of a field that colour, now and after every change of the palette.
void keepHintReadable(QWidget *field);

} // namespace app
