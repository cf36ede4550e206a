#include "MapTarget.h"

#include <QFileInfo>

namespace cli {

using namespace Qt::StringLiterals;

QString mapPath(Target &target, const QString &argument)
{
    const QString inProject = tarnwick::SuitePath(argument).machinePath(target.project().roots());
    const QString asItStands = QFileInfo(argument).absoluteFilePath();
    return !QFileInfo::exists(asItStands) && QFileInfo::exists(inProject) ? inProject : asItStands;
}

bool openMap(Target &target, const QString &argument)
{
    return target.map().readMap(mapPath(target, argument));
}

void printLegend(const plans::MapLegend &legend)
{
    for (int i = 0; i < legend.count(); ++i) {
        const plans::MapFill &fill = legend.entry(i);
        print(u"%1  %2  %3  %4  %5\n"_s.arg(QChar(fill.symbol))
                  .arg(fill.typeName(), -8)
                  .arg(fill.label, -30)
                  .arg(fill.fillCount, 8)
                  .arg(fill.paintedCount, 8));
    }
}

} // namespace cli
