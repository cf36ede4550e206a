#include "LegendOutput.h"

#include "Console.h"

namespace cli {

using namespace Qt::StringLiterals;

void printLegend(const plans::MapLegend &legend)
{
    for (int i = 0; i < legend.count(); ++i) {
        const plans::MapFill &fill = legend.entry(i);
        // Concatenated instead of arg(), since a description may contain "%1".
        const QStringList columns{QString(QChar(fill.symbol)), fill.typeName().leftJustified(8),
                                  fill.label.leftJustified(30), QString::number(fill.fillCount).rightJustified(8),
                                  QString::number(fill.paintedCount).rightJustified(8)};
        print(columns.join(u"  ") + u'\n');
    }
}

} // namespace cli
