#pragma once
#include <QIcon>

namespace app {

/// The pictures of buttons: thin lines in the colour of the palette's text, sharp at any scale, right in light and
/// dark.
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

/// The program's own picture: a tubesheet with marked tubes.
QIcon programIcon();

} // namespace app
