#include "Installation.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace tarnwick {

using namespace Qt::StringLiterals;

/// relative: a folder as seen from that of the programs, set by the build.
static QString fromProgram(const char *relative, const QString &name)
{
    return QDir::cleanPath(QCoreApplication::applicationDirPath() + u'/' + QString::fromUtf8(relative) + u'/' + name);
}

QString Installation::helperProgram(const QString &name)
{
    const QString beside = fromProgram(".", name);
    return QFileInfo(beside).isExecutable() ? beside : fromProgram(ARVO_HELPERS_FROM_PROGRAM, name);
}

QString Installation::dataPath(const QString &name)
{
    return fromProgram(ARVO_DATA_FROM_PROGRAM, name);
}

QString programVersion()
{
    return QStringLiteral(ARVO_VERSION);
}

QString sourceRevision()
{
    return QStringLiteral(ARVO_REVISION);
}

} // namespace tarnwick
