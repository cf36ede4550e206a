#pragma once
#include <QString>

namespace app {

/// Target of a shortcut, as machine paths.
struct ShortcutTarget
{
    QString program;
    QString installation; ///< value of PALOMINE_DIR for the program; empty: the program searches
    QString icon;         ///< picture file; empty for none
};

/// Creates a shortcut named "ARVO" in a folder (the desktop). Throws tarnwick::FileError. Returns its path.
QString createDesktopShortcut(const QString &folder, const ShortcutTarget &target);

} // namespace app
