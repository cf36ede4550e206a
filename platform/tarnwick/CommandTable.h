#pragma once
#include <QStringList>

#include <span>

namespace tarnwick {

/// The condition that always holds.
constexpr int kAlways = 0;
/// The condition of a command whose action is not implemented yet: the command is shown but never enabled, and must not
/// be bound.
constexpr int kNotYet = -1;
/// Ids from here on belong to commands without a documented number.
constexpr int kFirstUnnumbered = 1000;

/// The description of one command. Its action is bound in CommandHandlers.
struct CommandRow
{
    enum Flag {
        Checkable = 1,     ///< has a check mark
        ViewOnly = 2,      ///< changes only the view; the owner may want to know before it runs the command
        KeysNeedFocus = 4, ///< the keys work only while the part has the focus
    };

    int id = -1; ///< from an enum of the owner; below kFirstUnnumbered it is the command's documented number
    const char16_t *text = u""; ///< as in menus: the mnemonic marked by "&"; the first key after a tab
    const char16_t *tip = u"";
    int condition = kAlways;        ///< from an enum of the owner, or kAlways or kNotYet
    const char16_t *keys = nullptr; ///< further portable key sequences, separated by "|"
    const char16_t *name = nullptr; ///< object name of the action; null: "command" and the number
    int flags = 0;
    int part = 0;           ///< part of the window whose widget has the keys; 0: the window itself
    int count = 1;          ///< above 1: a list of this many commands; ids count up from this one
    int placeholderOf = -1; ///< id of the list that this row replaces while the list is empty

    bool isCheckable() const { return flags & Checkable; }
    bool isViewOnly() const { return flags & ViewOnly; }
    bool needsFocus() const { return flags & KeysNeedFocus; }
    bool isList() const { return count > 1; }
    bool isPlaceholder() const { return placeholderOf >= 0; }
    /// The text without mnemonic and key.
    QString label() const;
    QString objectName() const;
    /// In portable form; the key in the text comes first.
    QStringList keyList() const;
};
/// Row of a list with changing entries, such as recent files; its ids are first to last.
constexpr CommandRow commandList(int first, int last, const char16_t *tip, int condition = kAlways)
{
    CommandRow row{first, u"", tip, condition};
    row.count = last - first + 1;
    return row;
}
/// Row that is shown while a list is empty. It is never enabled and has no action.
constexpr CommandRow placeholder(int id, int list, const char16_t *text, const char16_t *tip)
{
    CommandRow row{id, text, tip};
    row.placeholderOf = list;
    return row;
}

/// One item of a flat list that describes a menu bar, a menu or a tool bar.
struct MenuItem
{
    enum Kind { End = 0, Open = 1, Item = 2, Separator = 3, Close = 4 };
    Kind kind = End;
    const char16_t *text = nullptr; ///< text of a submenu; for an item, a different text than the row's, or null
    int command = -1;
    int condition = kAlways; ///< of a submenu: the whole submenu is disabled while the condition does not hold
};
constexpr MenuItem openMenu(const char16_t *text, int condition = kAlways)
{
    return {MenuItem::Open, text, -1, condition};
}
constexpr MenuItem menuItem(int command, const char16_t *text = nullptr)
{
    return {MenuItem::Item, text, command, kAlways};
}
constexpr MenuItem kSeparator{MenuItem::Separator};
constexpr MenuItem kCloseMenu{MenuItem::Close};
constexpr MenuItem kEndOfMenu{MenuItem::End};

/// Places commands in a menu bar, menu or tool bar. A row may appear in any number of layouts; a row with keys may
/// appear in none.
struct CommandLayout
{
    enum class Kind {
        MenuBar,
        Menu,    ///< a pop-up menu, or the menu of a button
        ToolBar, ///< buttons of any widget
    };
    Kind kind = Kind::Menu;
    const char16_t *name = u""; ///< object name of the widget made from it
    std::span<const MenuItem> items;
};

/// The commands of one window or dialog: the one place where their texts, keys, tips, conditions and menus stand.
/// Menus, tool bars, keys, tips, the list of keys and tests come from it; it is constant data without widgets.
///
///     enum Command : int { Open = 0, Save = 1, Copy = tarnwick::kFirstUnnumbered };
///     enum Condition : int { Always, Modified };
///     constexpr CommandRow kRows[] = {
///         {Open, u"&Open ...\tCtrl+O", u"Open a list"},
///         {Save, u"&Save\tCtrl+S", u"Save the list to its file", Modified},
///         {Copy, u"Copy", u"Copy the list as text", tarnwick::kAlways, u"Ctrl+C", u"copy"},
///     };
///     constexpr MenuItem kBar[] = {openMenu(u"&File"), menuItem(Open), menuItem(Save), kCloseMenu, kEndOfMenu};
///     constexpr CommandLayout kLayouts[] = {{CommandLayout::Kind::MenuBar, u"menuBar", kBar}};
///     constexpr CommandTable kTable(kRows, kLayouts);
///
/// The dialog says what each row does and when, and has the widgets made:
///
///     tarnwick::CommandHandlers m_handlers{kTable};
///     tarnwick::CommandActions m_actions{m_handlers, this};
///     ...
///     m_handlers.bind(Open, [this] { m_editor.open(); });
///     m_handlers.setConditions([this](int condition) {
///         return condition == Modified && !m_editor.isModified() ? u"There are no changes."_s : QString();
///     });
///     m_actions.fillMenuBar(menuBar);
///     m_actions.refresh(); // again whenever a condition may have changed
///
/// Its test expects m_actions.faults() to be empty.
class CommandTable
{
public:
    constexpr CommandTable(std::span<const CommandRow> rows, std::span<const CommandLayout> layouts)
        : m_rows(rows)
        , m_layouts(layouts)
    {
    }

    std::span<const CommandRow> rows() const { return m_rows; }
    std::span<const CommandLayout> layouts() const { return m_layouts; }
    /// Null if no row has this id. An id within a list returns the row of the list.
    const CommandRow *row(int id) const;
    /// Finds a row by object name.
    const CommandRow *row(QStringView name) const;
    /// Terminates the program if no layout has this name.
    const CommandLayout &layout(QStringView name) const;
    /// Ids of the items of a layout, in order.
    QList<int> idsIn(const CommandLayout &layout) const;

    /// Errors of the table: repeated ids or names, conflicting keys or mnemonics, missing tips, items without a row,
    /// rows that neither a layout nor a key reaches, lists without an end.
    QStringList faults() const;

private:
    std::span<const CommandRow> m_rows;
    std::span<const CommandLayout> m_layouts;
};

} // namespace tarnwick
