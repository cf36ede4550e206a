#pragma once
#include <QString>
#include <QStringList>

namespace app {

/// What the start of a project does to the world; the window carries it out, tests only note it.
class StartUpActions
{
public:
    virtual ~StartUpActions() = default;
    virtual bool exists(const QString &databasePath) const = 0;
    virtual bool connect(const QString &databasePath) = 0;
    virtual bool create(const QString &databasePath) = 0;
    virtual void sayCreated(const QString &databasePath) = 0;
};

/// The project to open: the one given on the command line, else the one opened last. Empty: none, the program starts
/// without.
QString chooseProject(const QString &argument, const QStringList &recentProjects);
/// A project's folder as the program keeps it: absolute, and for a project file the folder it lies in.
QString projectFolder(const QString &argument);

/// Connects the project's database: the one connected last, else the project's own, else a new one made in its place.
/// A database that is there but cannot be connected is never replaced by a new one. Paths are those of the machine.
/// Returns whether one is connected.
bool connectAtStart(StartUpActions &actions, const QString &defaultPath, const QStringList &recentDatabases);

/// The same file, whatever the case and the kind of separator.
bool isSamePath(const QString &a, const QString &b);

/// Of the main window.
QString windowTitle(const QString &projectFolder, const QString &projectName, bool minimised);
inline constexpr const char16_t *kTitleAtCreation = u"Palomine ARVO";

} // namespace app
