#include "GridCopy.h"

#include "CsvLine.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

/// In spreadsheet format a cell with a tab, a line end or a quote must be quoted.
QString plainCell(const QString &text)
{
    const bool needsQuotes = std::any_of(text.begin(), text.end(),
                                         [](QChar c) { return c == u'\t' || c == u'\n' || c == u'\r' || c == u'"'; });
    return needsQuotes ? u'"' + QString(text).replace(u'"', u"\"\""_s) + u'"' : text;
}

QString htmlCell(const QString &text, ColumnAlign align, QStringView tag)
{
    static constexpr const char16_t *kNames[] = {u"center", u"left", u"right"};
    const QString cell = text.toHtmlEscaped().replace(u'\n', u"<br>"_s);
    return u"<%1 align=\"%2\">%3</%1>"_s.arg(tag, QString::fromUtf16(kNames[size_t(align)]), cell);
}

/// The rows and columns that contain selected cells, ascending.
struct Extent
{
    QList<int> columns;
    std::vector<QItemSelectionRange> ranges; ///< sorted by top row
    int bottom = -1;
};

Extent extentOf(const QItemSelection &selection)
{
    Extent extent;
    for (const QItemSelectionRange &range : selection) {
        if (!range.isValid())
            continue;
        extent.ranges.push_back(range);
        extent.bottom = std::max(extent.bottom, range.bottom());
        for (int column = range.left(); column <= range.right(); ++column)
            extent.columns.append(column);
    }
    std::sort(extent.columns.begin(), extent.columns.end());
    extent.columns.erase(std::unique(extent.columns.begin(), extent.columns.end()), extent.columns.end());
    std::sort(extent.ranges.begin(), extent.ranges.end(),
              [](const QItemSelectionRange &a, const QItemSelectionRange &b) { return a.top() < b.top(); });
    return extent;
}

/// Calls each(row, ranges that contain the row) for every row of the extent, top to bottom. The ranges are swept once,
/// so the time grows with the number of rows, not with rows times ranges.
template <typename Each>
void forEachRow(const Extent &extent, Each each)
{
    std::vector<QItemSelectionRange> open;
    size_t next = 0;
    for (int row = extent.ranges.empty() ? 0 : extent.ranges.front().top(); row <= extent.bottom; ++row) {
        while (next < extent.ranges.size() && extent.ranges[next].top() <= row)
            open.push_back(extent.ranges[next++]);
        std::erase_if(open, [row](const QItemSelectionRange &range) { return range.bottom() < row; });
        if (!open.empty())
            each(row, open);
        else if (next < extent.ranges.size())
            row = extent.ranges[next].top() - 1;
    }
}

bool holds(const std::vector<QItemSelectionRange> &ranges, int column)
{
    return std::any_of(ranges.begin(), ranges.end(), [column](const QItemSelectionRange &range) {
        return column >= range.left() && column <= range.right();
    });
}

} // namespace

GridClip copyCells(const GridModel &model, const QItemSelection &selection, bool withTitles, Progress *progress)
{
    const Extent extent = extentOf(selection);
    // For each cell HTML takes several times the memory of the text.
    constexpr qint64 kMostHtmlCells = 1'000'000;
    const bool hasHtml = qint64(extent.bottom + 1) * extent.columns.size() <= kMostHtmlCells;
    GridClip clip;
    const auto addHtml = [&](const QString &part) {
        if (hasHtml)
            clip.html += part;
    };
    addHtml(u"<table>"_s);
    const auto addLine = [&](QStringView tag, const auto &cellText) {
        QStringList cells;
        addHtml(u"<tr>"_s);
        for (const int column : extent.columns) {
            const QString text = cellText(column);
            cells.append(plainCell(text));
            if (hasHtml)
                clip.html += htmlCell(text, model.column(column).align, tag);
        }
        addHtml(u"</tr>\n"_s);
        clip.text += cells.join(u'\t') + u'\n';
    };
    if (withTitles)
        addLine(u"th", [&](int column) { return model.column(column).title; });
    ProgressLoop loop(progress, extent.bottom + 1, u"Copying ..."_s);
    forEachRow(extent, [&](int row, const std::vector<QItemSelectionRange> &ranges) {
        loop.tick(row);
        const QString line = model.lineText(row);
        addLine(u"td", [&](int column) {
            if (!line.isEmpty())
                return column == extent.columns.constFirst() ? line : QString();
            return holds(ranges, column) ? model.data(model.index(row, column)).toString() : QString();
        });
    });
    addHtml(u"</table>"_s);
    return clip;
}

QString gridAsCsv(const GridModel &model)
{
    QStringList cells;
    for (int column = 0; column < model.columnCount(); ++column)
        cells.append(model.column(column).title);
    QString text = csvLine(cells);
    for (int row = 0; row < model.rowCount(); ++row) {
        for (int column = 0; column < model.columnCount(); ++column)
            cells[column] = model.data(model.index(row, column)).toString();
        text += csvLine(cells);
    }
    return text;
}

CellStatistics cellStatistics(const GridModel &model, const QItemSelection &selection, Progress *progress)
{
    CellStatistics figures;
    const Extent extent = extentOf(selection);
    ProgressLoop loop(progress, extent.bottom + 1, u"Adding up ..."_s);
    forEachRow(extent, [&](int row, const std::vector<QItemSelectionRange> &ranges) {
        loop.tick(row);
        for (const int column : extent.columns) {
            if (!holds(ranges, column))
                continue;
            ++figures.cells;
            double number = 0;
            const QVariant value = model.data(model.index(row, column), GridModel::ValueRole);
            if (value.typeId() == QMetaType::Bool || value.isNull() || !numberOf(value, number))
                continue;
            figures.least = figures.numbers == 0 ? number : std::min(figures.least, number);
            figures.largest = figures.numbers == 0 ? number : std::max(figures.largest, number);
            figures.sum += number;
            ++figures.numbers;
        }
    });
    return figures;
}

QString CellStatistics::text() const
{
    if (cells < 2)
        return {};
    if (numbers == 0)
        return u"Count %1"_s.arg(cells);
    const auto shown = [](double number) { return QString::number(number, 'g', 10); };
    return u"Count %1   Sum %2   Mean %3   Min %4   Max %5"_s.arg(QString::number(numbers), shown(sum), shown(mean()),
                                                                  shown(least), shown(largest));
}

} // namespace tarnwick
