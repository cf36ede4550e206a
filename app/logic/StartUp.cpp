#include "StartUp.h"

#include <tarnwick/Format.h>

#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace app {

QString projectFolder(const QString &argument)
{
    if (argument.isEmpty())
        return {};
    const QFileInfo info(argument);
    const QString folder = info.isFile() ? info.absolutePath() : info.absoluteFilePath();
    return QDir::cleanPath(folder);
}

QString chooseProject(const QString &argument, const QStringList &recentProjects)
{
    return projectFolder(argument.isEmpty() ? recentProjects.value(0) : argument);
}

bool isSamePath(const QString &a, const QString &b)
{
    const auto plain = [](QString path) { return QDir::cleanPath(path.replace(u'\\', u'/')); };
    return plain(a).compare(plain(b), Qt::CaseInsensitive) == 0;
}

bool connectAtStart(StartUpActions &actions, const QString &defaultPath, const QStringList &recentDatabases)
{
    const bool defaultExists = actions.exists(defaultPath);
    const QString recent = recentDatabases.value(0);
    const bool recentIsDefault = isSamePath(recent, defaultPath);
    if (!recent.isEmpty() && (!recentIsDefault || defaultExists) && actions.connect(recent))
        return true;
    if (defaultExists)
        return !recentIsDefault && actions.connect(defaultPath);
    if (!actions.create(defaultPath) || !actions.connect(defaultPath))
        return false;
    actions.sayCreated(defaultPath);
    return true;
}

QString windowTitle(const QString &projectFolder, const QString &projectName, bool minimised)
{
    if (projectFolder.isEmpty())
        return u"ARVO - No Project Loaded"_s;
    return minimised ? projectName : tarnwick::format(u"ARVO - %S", projectFolder);
}

} // namespace app
