#include "TubeFile.h"

#include <QDir>
#include <QFileInfo>
#include <tarnwick/FileWriter.h>

namespace cli {

using namespace Qt::StringLiterals;

QString placeToWrite(const Target &target, const QString &argument)
{
    const QString path = target.pathOf(argument);
    if (const QDir folder = QFileInfo(path).absoluteDir(); !folder.exists())
        throw tarnwick::Error(u"The folder %1 does not exist."_s.arg(folder.path()));
    return path;
}

void checkTubesEnding(const QString &argument)
{
    if (QFileInfo(argument).suffix().compare("csv"_L1, Qt::CaseInsensitive) != 0)
        throw UsageError(u"--tubes needs a name that ends in .csv."_s);
}

void writeTubes(const Target &target, const QString &argument, const QString &text)
{
    tarnwick::writeFileAtomically(placeToWrite(target, argument), text.toUtf8());
}

} // namespace cli
