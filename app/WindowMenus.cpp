#include "WindowMenus.h"

#include "CommandActions.h"

#include <QMainWindow>
#include <QMenuBar>

using namespace Qt::StringLiterals;

namespace app {

WindowMenus::WindowMenus(CommandActions &actions, QMainWindow &window)
    : m_actions(actions)
    , m_window(window)
{
    m_actions.buildMenuBar(m_window.menuBar(), kMenuBar);
    m_map = makePopup(u"mapMenu"_s, kMapMenu);
    m_legend = makePopup(u"legendMenu"_s, kLegendMenu);
    addToWindow();
    QMenu *help = m_actions.menuOf(About);
    help->addSeparator();
    help->addAction(m_actions.extra(Extra::Keys));
    m_legend->addSeparator();
    m_actions.addExtra(Extra::EntrySelect, m_legend);
    m_legend->addAction(m_actions.extra(Extra::CopyTubes));
}

QMenu *WindowMenus::makePopup(const QString &name, std::span<const MenuItem> items)
{
    auto *menu = new QMenu(&m_window);
    menu->setObjectName(name);
    m_actions.buildMenu(menu, items);
    return menu;
}

void WindowMenus::addToWindow()
{
    // Accelerators must work while the menu bar is hidden, too.
    for (const MenuItem &item : kMenuBar) {
        QAction *action = item.kind == MenuItem::Item ? m_actions.action(item.command) : nullptr;
        if (action && !action->shortcut().isEmpty())
            m_window.addAction(action);
    }
    for (const ExtraInfo &info : kExtras) {
        if (info.scope == Scope::Window)
            m_actions.addExtra(info.extra, &m_window);
    }
}

void WindowMenus::showMapMenu(const QPoint &globalPos)
{
    m_map->popup(globalPos);
}

void WindowMenus::showLegendMenu(const QPoint &globalPos, bool ignoresSections)
{
    m_actions.setChecked(IgnoreSection, ignoresSections);
    m_legend->popup(globalPos);
}

QList<QMenu *> WindowMenus::recentMenus() const
{
    return {m_actions.menuOf(NoRecentProject), m_actions.menuOf(NoRecentDatabase), m_actions.menuOf(NoRecentMap)};
}

} // namespace app
