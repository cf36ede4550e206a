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

/// Actions of a table of commands, and the menus, tool bars and keys made from them. All widgets of a command are
/// enabled, checked and explained together. See CommandTable for an example.
class CommandActions : public QObject
{
    Q_OBJECT
public:
    /// Creates one action for each row. handlers: must outlive this object. window: has the keys of part 0, so that
    /// they work while the menu bar is hidden.
    CommandActions(CommandHandlers &handlers, QWidget *window);

    /// Sets the widget that has the keys of a part. Keys of a hidden or disabled widget do not work.
    void setPart(int part, QWidget *widget);

    /// Creates the menus of the table's only menu bar. A submenu's object name is "menu" followed by its text.
    void fillMenuBar(QMenuBar *bar);
    /// Creates a pop-up menu from the layout with this name, which becomes its object name.
    QMenu *makeMenu(QStringView layout, QWidget *parent);
    /// Creates the buttons of the layout with this name, in the bar's style. The name becomes the bar's object name.
    /// The buttons can be reached with Tab and pressed with Space or Return.
    void fillToolBar(QToolBar *bar, QStringView layout);
    /// Creates the buttons of a layout for a widget that is not a tool bar, without separators.
    QList<QToolButton *> makeButtons(QStringView layout, QWidget *parent);

    /// The action of a command. Items with a text of their own ("All Tubes" in a pop-up menu) have separate actions.
    QAction *action(int id) const { return m_actions.value(id); }
    /// The submenu of the menu bar that holds a command, or the pop-up menu.
    QMenu *menuOf(int id) const { return m_menus.value(id); }
    /// Sets the icon shown by tool bars with pictures.
    void setIcon(int id, const QIcon &icon);
    CommandHandlers &handlers() { return m_handlers; }

    /// Updates the state and tip of all commands, but does not read lists. Call it when a condition, a check mark or a
    /// text may have changed. Called automatically after each command.
    void refresh();
    /// Updates only commands with one of these conditions, for conditions that change often.
    void refresh(std::initializer_list<int> conditions);
    /// Reads the entries of a list and shows them. Called automatically when its menu opens.
    void refreshList(int id);

    /// Errors of the table, its handlers, and its widgets (layouts never made, parts without a widget). Must be empty
    /// in a complete window.
    QStringList faults() const;

private:
    struct Shown
    {
        QAction *action;
        const CommandRow *row;
        int id; ///< of an entry of a list another than the row's
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
    QString tip(const CommandRow &row, const QString &whyNot) const;

    CommandHandlers &m_handlers;
    QWidget *m_window;
    QHash<int, QAction *> m_actions;
    QList<Shown> m_shown;
    QHash<int, QMenu *> m_menus;
    QList<std::pair<QMenu *, MenuItem>> m_submenus; ///< submenus that have a condition
    QHash<int, QWidget *> m_parts;
    QSet<int> m_inMenus;  ///< ids
    QSet<int> m_withText; ///< ids whose text is visible beside their tip
    QSet<QString> m_madeLayouts;
};

} // namespace tarnwick
