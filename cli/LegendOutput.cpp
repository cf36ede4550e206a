#include "LegendOutput.h"

#include "Console.h"

namespace cli {

using namespace Qt::StringLiterals;

void printLegend(const map::MapDocument &document)
{
    for (int i = 0; i < document.count(); ++i) {
        const plans::MapFill &fill = document.entry(i);
        // Concatenated instead of arg(), since a description may contain "%1".
        const QStringList columns{fill.mark.symbol.text(), fill.typeName().leftJustified(8),
                                  fill.label.leftJustified(30), QString::number(fill.fillCount).rightJustified(8),
                                  QString::number(document.hits(i)).rightJustified(8)};
        print(columns.join(u"  ") + u'\n');
    }
}

} // namespace cli
