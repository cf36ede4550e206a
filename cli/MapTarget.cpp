#include "MapTarget.h"

#include <QDir>
#include <QFileInfo>

namespace cli {

using namespace Qt::StringLiterals;

QString mapPath(Target &target, const QString &argument)
{
    const QString inProject = tarnwick::SuitePath(argument).machinePath(target.project().roots());
    const QString asItStands = QFileInfo(argument).absoluteFilePath();
    if (QFileInfo::exists(asItStands) || QFileInfo::exists(inProject))
        return QFileInfo::exists(asItStands) ? asItStands : inProject;
    // One that is yet to be made goes where there is a folder for it; a backslash is never part of a name here.
    const auto hasFolder = [](const QString &path) { return QFileInfo(path).absoluteDir().exists(); };
    const bool isMeantInProject = argument.contains(u'\\') || (hasFolder(inProject) && !hasFolder(asItStands));
    return isMeantInProject ? inProject : asItStands;
}

bool openMap(Target &target, const QString &argument)
{
    return target.map().readMap(mapPath(target, argument));
}

void printLegend(const plans::MapLegend &legend)
{
    for (int i = 0; i < legend.count(); ++i) {
        const plans::MapFill &fill = legend.entry(i);
        // Joined, since a description may hold "%1".
        const QStringList columns{QString(QChar(fill.symbol)), fill.typeName().leftJustified(8),
                                  fill.label.leftJustified(30), QString::number(fill.fillCount).rightJustified(8),
                                  QString::number(fill.paintedCount).rightJustified(8)};
        print(columns.join(u"  ") + u'\n');
    }
}

} // namespace cli
