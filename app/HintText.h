#pragma once
#include <QColor>

class QPalette;
class QWidget;

namespace app {

/// Colour of a placeholder text: weaker than a text, but readable with every palette. The palette role for it often has
/// a colour that suits light palettes only.
QColor hintColour(const QPalette &palette);
/// Sets this colour for the placeholder of a field, now and after each change of the palette.
void keepHintReadable(QWidget *field);

} // namespace app
