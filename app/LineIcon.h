#pragma once
#include <QIcon>

namespace app {

/// Icons of buttons: thin lines in the text colour of the palette, sharp at any scale.
enum class Picture {
    Undo,
    Redo,
    ZoomIn,
    ZoomOut,
    Fit,
    PreviousView,
    NextView,
    FindTube,
    FlipHorizontal,
    FlipVertical,
    FloatingId,
    FullScreen,
    SelectRectangle,
    Lasso,
    ZoomRectangle,
    MoveMap,
    Edit,
    Symbol,
    Up,
    Down,
    Delete,
    Solo,
    All,
    Swap,
};
QIcon lineIcon(Picture picture);

/// Icon of the program: a tubesheet with marked tubes.
QIcon programIcon();

} // namespace app
