#pragma once
#include <QList>
#include <QString>

namespace app {

/// Keys that belong together, and what each does.
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

/// Every key of the main window, and what the mouse does on the map.
QList<KeyGroup> keyList();
/// The same as a text in columns, for a font of fixed width.
QString keyListText();

} // namespace app
