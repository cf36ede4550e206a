#include "CsvLine.h"

#include <algorithm>

namespace tarnwick {

using namespace Qt::StringLiterals;

void appendCsvCell(QString &line, QStringView cell)
{
    const auto isSpecial = [](QChar c) { return c == u',' || c == u'"' || c == u'\r' || c == u'\n'; };
    if (std::ranges::none_of(cell, isSpecial)) {
        line += cell;
        return;
    }
    line += u'"';
    for (const QChar c : cell) {
        if (c == u'"')
            line += c;
        line += c;
    }
    line += u'"';
}

QString csvLine(const QStringList &cells)
{
    QString line;
    for (qsizetype i = 0; i < cells.size(); ++i) {
        if (i > 0)
            line += u',';
        appendCsvCell(line, cells[i]);
    }
    line += kCsvLineEnd;
    return line;
}

} // namespace tarnwick
