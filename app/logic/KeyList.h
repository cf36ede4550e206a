#pragma once
#include <QList>
#include <QString>

namespace app {

/// A group of keys with the action of each.
struct KeyGroup
{
    struct Line
    {
        QString keys;
        QString text;
    };
    QString title;
    QList<Line> lines;
};

/// All keys of the main window, and the mouse actions on the map.
QList<KeyGroup> keyList();
/// The same as text in columns for a fixed-width font.
QString keyListText();

} // namespace app
