#include "ButtonGrid.h"

#include <tarnwick/Paths.h>

namespace query {

namespace {

using WidthOf = std::function<int(const QString &)>;

bool mayBreakAfter(QChar c)
{
    return c == u' ' || c == u'_' || c == u'-';
}

/// Number of characters of the next line: as many as there is room for, preferably up to a place to break.
qsizetype lineLength(const QString &text, int room, const WidthOf &widthOf)
{
    qsizetype fitting = 1;
    while (fitting < text.size() && widthOf(text.left(fitting + 1).trimmed()) <= room)
        ++fitting;
    if (fitting == text.size())
        return fitting;
    for (qsizetype length = fitting; length > 1; --length) {
        if (mayBreakAfter(text[length - 1]))
            return length;
    }
    return fitting;
}

QString wrapped(QString text, int room, const WidthOf &widthOf)
{
    QStringList lines;
    while (!text.isEmpty()) {
        const qsizetype length = lineLength(text, room, widthOf);
        lines.append(text.left(length).trimmed());
        text.remove(0, length);
    }
    return lines.join(u'\n');
}

} // namespace

int ButtonGrid::room(int columns, int width, int scrollBar)
{
    constexpr int kGap = 5;
    constexpr int kBorder = 6;
    return (width - kGap * (columns - 1) - kBorder * columns - scrollBar) / columns;
}

ButtonGrid ButtonGrid::of(const QStringList &files, int width, int scrollBar, const WidthOf &widthOf)
{
    ButtonGrid grid;
    if (files.isEmpty())
        return grid;
    grid.columns = std::min(int(files.size()), kMostColumns);
    const int roomForOne = room(grid.columns, width, scrollBar);
    for (const QString &file : files) {
        const QString label = tarnwick::SuitePath(file).fileName();
        grid.labels.append(widthOf(label) > roomForOne ? wrapped(label, roomForOne, widthOf) : label);
    }
    return grid;
}

} // namespace query
