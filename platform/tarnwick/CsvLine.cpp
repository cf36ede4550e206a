#include "CsvLine.h"

#include <algorithm>

namespace tarnwick {

using namespace Qt::StringLiterals;

QString csvLine(const QStringList &cells)
{
    static constexpr QStringView special = u",\"\r\n";
    QString line;
    for (qsizetype i = 0; i < cells.size(); ++i) {
        if (i > 0)
            line += u',';
        QString cell = cells[i];
        const bool quotes = std::any_of(cell.cbegin(), cell.cend(), [](QChar c) { return special.contains(c); });
        line += quotes ? u'"' + cell.replace(u'"', u"\"\""_s) + u'"' : cell;
    }
    return line + u"\r\n"_s;
}

} // namespace tarnwick
