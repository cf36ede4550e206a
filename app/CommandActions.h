#pragma once
#include <app/logic/Commands.h>

#include <QAction>
#include <QHash>
#include <QObject>

class QMenu;
class QMenuBar;
class QWidget;

namespace app {

/// The actions behind menus and buttons, made from the tables of commands. One command may have several (menu bar,
/// pop-up menu); all of them are enabled, checked and explained together.
class CommandActions : public QObject
{
    Q_OBJECT
public:
    explicit CommandActions(QObject *parent = nullptr)
        : QObject(parent)
    {
    }

    /// Makes the menus of the bar, in order. Menus and items have names to be found by: "menuFile", "command44".
    void buildMenuBar(QMenuBar *bar, std::span<const MenuItem> items);
    /// Fills a pop-up menu. Its items have no accelerators and are named "popup44".
    void buildMenu(QMenu *menu, std::span<const MenuItem> items);
    /// An action of the second table; keys of the legend's work while scope has the focus.
    QAction *addExtra(Extra extra, QWidget *scope);
    /// A further action of a numbered command, for a menu that is made while the program runs or a button.
    QAction *addAction(int command, const QString &text, QObject *parent, const QString &namePrefix);

    /// The first action of a command, the one of the menu bar; null when there is none.
    QAction *action(int command) const { return m_actions.value(command).value(0); }
    QList<QAction *> actions(int command) const { return m_actions.value(command); }
    QAction *extra(Extra extra) const { return m_extras.value(int(extra)); }
    /// The submenu that holds a command.
    QMenu *menuOf(int command) const { return m_menus.value(command); }

    void setText(int command, const QString &text);
    /// Keeps a command greyed for a reason of its own, whatever its condition says. A null reason frees it again.
    void setUnavailable(int command, const QString &reason);
    void setChecked(int command, bool checked);
    /// Enables and explains every action.
    void refresh(const CommandContext &context);

Q_SIGNALS:
    void triggered(int command);
    void extraTriggered(app::Extra extra);

private:
    void build(QWidget *top, std::span<const MenuItem> items, bool isMenuBar);

    QHash<int, QList<QAction *>> m_actions;
    QHash<int, QMenu *> m_menus;
    QHash<int, QAction *> m_extras;
    QHash<int, QString> m_unavailable; ///< with the reasons
};

} // namespace app
