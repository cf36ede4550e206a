#include "CsvLine.h"

#include <algorithm>

namespace tarnwick {

using namespace Qt::StringLiterals;

QString csvLine(const QStringList &cells)
{
    const auto isSpecial = [](QChar c) { return c == u',' || c == u'"' || c == u'\r' || c == u'\n'; };
    qsizetype size = 0;
    for (const QString &cell : cells)
        size += cell.size() + 1;
    QString line;
    line.reserve(size + 2);
    for (qsizetype i = 0; i < cells.size(); ++i) {
        if (i > 0)
            line += u',';
        if (std::any_of(cells[i].cbegin(), cells[i].cend(), isSpecial))
            line += u'"' + QString(cells[i]).replace(u'"', u"\"\""_s) + u'"';
        else
            line += cells[i];
    }
    line += u"\r\n";
    return line;
}

} // namespace tarnwick
