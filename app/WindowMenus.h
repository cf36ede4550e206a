#pragma once
#include <app/logic/Commands.h>

#include <QList>

class QMainWindow;
class QMenu;
class QPoint;

namespace app {

class CommandActions;

/// Makes the menu bar and the pop-up menus from the tables of commands.
class WindowMenus
{
public:
    /// The menus belong to the window.
    WindowMenus(CommandActions &actions, QMainWindow &window);

    /// Opens the menu of the map, or of an entry of the legend.
    void showMapMenu(const QPoint &globalPos);
    void showLegendMenu(const QPoint &globalPos, bool ignoresSections);
    /// The submenus of recent files.
    QList<QMenu *> recentMenus() const;

private:
    QMenu *makePopup(const QString &name, std::span<const MenuItem> items);
    void addToWindow();

    CommandActions &m_actions;
    QMainWindow &m_window;
    QMenu *m_map;
    QMenu *m_legend;
};

} // namespace app
