#pragma once
#include <QString>

namespace app {

/// Absolute path of a project folder; for a project file, of its folder.
QString projectFolder(const QString &argument);

/// Title of the main window.
QString windowTitle(const QString &projectFolder, const QString &projectName, bool minimised);
inline constexpr const char16_t *kTitleAtCreation = u"Palomine ARVO";

} // namespace app
