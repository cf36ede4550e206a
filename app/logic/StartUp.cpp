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

QString windowTitle(const QString &projectFolder, const QString &projectName, bool minimised)
{
    if (projectFolder.isEmpty())
        return u"ARVO - No Project Loaded"_s;
    return minimised ? projectName : tarnwick::format(u"ARVO - %S", projectFolder);
}

} // namespace app
