#pragma once
#include <QString>

namespace app {

/// Puts a shortcut named "ARVO" to this program into a folder (the desktop). Throws tarnwick::FileError. Returns its
/// path.
QString createDesktopShortcut(const QString &folder, const QString &program);

} // namespace app
