#pragma once
#include <tarnwick/CommandHandlers.h>

#include <QObject>
#include <QSet>

class QAction;
class QIcon;
class QMenu;
class QMenuBar;
class QToolBar;
class QToolButton;
class QWidget;

namespace tarnwick {

/// The actions of a table of commands, and the menus, tool bars and keys made of them. All that belongs to a command is
/// enabled, checked and explained together. See CommandTable for an example.
class CommandActions : public QObject
{
    Q_OBJECT
public:
    /// Makes one action for each row. handlers: must outlive this object. window: carries the keys of part 0, so that
    /// they work while the menu bar is hidden.
    CommandActions(CommandHandlers &handlers, QWidget *window);

    /// The widget that carries the keys of a part. Keys of a hidden or disabled widget do not work.
    void setPart(int part, QWidget *widget);

    /// Makes the menus of the table's one menu bar. A submenu's object name is "menu" and its text.
    void fillMenuBar(QMenuBar *bar);
    /// Makes a pop-up menu of the layout with this name, which becomes its object name.
    QMenu *makeMenu(QStringView layout, QWidget *parent);
    /// Makes the buttons of the layout with this name, in the style that the bar has. They are reached with Tab and
    /// pressed with Space or Return.
    void fillToolBar(QToolBar *bar, QStringView layout);
    /// Makes the buttons of such a layout for a widget that is no tool bar, without separators.
    QList<QToolButton *> makeButtons(QStringView layout, QWidget *parent);

    /// The action of a command. Items with texts of their own ("All Tubes" in a pop-up menu) have others beside it.
    QAction *action(int id) const { return m_actions.value(id); }
    /// The submenu of the menu bar that holds a command, or the pop-up menu.
    QMenu *menuOf(int id) const { return m_menus.value(id); }
    /// For tool bars that show pictures.
    void setIcon(int id, const QIcon &icon);
    CommandHandlers &handlers() { return m_handlers; }

    /// Enables, checks and explains everything anew, without asking for lists. Call it when a condition, a check mark
    /// or a text may have changed; it is done by itself after each command.
    void refresh();
    /// The same for commands with one of these conditions: for conditions that change often.
    void refresh(std::initializer_list<int> conditions);
    /// Asks for the entries of a list and shows them. Done by itself when its menu opens.
    void refreshList(int id);

    /// What is wrong: in the table, with its handlers, or here (layouts never made, parts without a widget). Empty in
    /// a window that is complete.
    QStringList faults() const;

private:
    struct Shown
    {
        QAction *action;
        int id;
        bool hasOwnText;
    };
    void addRow(const CommandRow &row);
    void addKeys(const CommandRow &row);
    QAction *makeAction(int id, const QString &name, bool hasOwnText);
    void fill(QWidget *top, const CommandLayout &layout);
    QMenu *openSubmenu(QWidget *top, const MenuItem &item);
    void addItem(QMenu *menu, const MenuItem &item, bool isMenuBar);
    void addList(QMenu *menu, const CommandRow &row);
    void run(int id);
    template <typename Reason>
    void update(const Shown &shown, const Reason &reason);
    QString tip(int id, const QString &whyNot) const;

    CommandHandlers &m_handlers;
    QWidget *m_window;
    QHash<int, QAction *> m_actions;
    QList<Shown> m_shown;
    QHash<int, QMenu *> m_menus;
    QList<std::pair<QMenu *, MenuItem>> m_submenus; ///< with conditions
    QHash<int, QWidget *> m_parts;
    QSet<int> m_inMenus;  ///< ids
    QSet<int> m_withText; ///< ids whose text is seen where their tip is
    QSet<QString> m_madeLayouts;
};

} // namespace tarnwick
