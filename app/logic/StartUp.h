#pragma once
#include <QString>
#include <QStringList>

namespace app {

/// The project to open: the one given on the command line, else the one opened last. Empty: none, the program starts
/// without.
QString chooseProject(const QString &argument, const QStringList &recentProjects);
/// A project's folder as the program keeps it: absolute, and for a project file the folder it lies in.
QString projectFolder(const QString &argument);

/// Of the main window.
QString windowTitle(const QString &projectFolder, const QString &projectName, bool minimised);
inline constexpr const char16_t *kTitleAtCreation = u"Palomine ARVO";

} // namespace app
