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

} // namespace app
