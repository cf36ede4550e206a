#pragma once
#include <QString>
#include <QStringList>

namespace app {

/// Project to open: from the command line, otherwise the one opened last; empty for none.
QString chooseProject(const QString &argument, const QStringList &recentProjects);
/// Absolute path of a project folder; for a project file, of its folder.
QString projectFolder(const QString &argument);

/// Title of the main window.
QString windowTitle(const QString &projectFolder, const QString &projectName, bool minimised);
inline constexpr const char16_t *kTitleAtCreation = u"Palomine ARVO";

} // namespace app
