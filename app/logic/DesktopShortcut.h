#pragma once
#include <QString>

namespace app {

/// What a shortcut starts, as machine paths.
struct ShortcutTarget
{
    QString program;
    QString installation; ///< handed to the program in its environment; empty: it finds its own
    QString icon;         ///< a picture file; empty for none
};

/// Puts a shortcut named "ARVO" into a folder (the desktop). Throws tarnwick::FileError. Returns its path.
QString createDesktopShortcut(const QString &folder, const ShortcutTarget &target);

} // namespace app
