#pragma once
#include <QStringList>

#include <span>

namespace tarnwick {

/// The condition that always holds.
constexpr int kAlways = 0;
/// The condition of a command whose action does not exist yet: it is shown, never enabled, and must not be bound.
constexpr int kNotYet = -1;
/// Ids from here on belong to commands without a documented number.
constexpr int kFirstUnnumbered = 1000;

/// Everything there is to know about one command, except what it does (see CommandHandlers).
struct CommandRow
{
    enum Flag {
        Checkable = 1,     ///< has a check mark
        ViewOnly = 2,      ///< changes only what is seen; the owner may want to know before it runs the command
        KeysNeedFocus = 4, ///< the keys work only while the part has the focus
    };

    int id = -1; ///< from an enum of the owner; below kFirstUnnumbered it is the command's documented number
    const char16_t *text = u""; ///< as in menus: the mnemonic marked by "&"; the first key after a tab
    const char16_t *tip = u"";
    int condition = kAlways;        ///< from an enum of the owner, or one of the two above
    const char16_t *keys = nullptr; ///< further portable key sequences, separated by "|"
    const char16_t *name = nullptr; ///< object name of the action; null: "command" and the number
    int flags = 0;
    int part = 0;           ///< of the window: whose widget carries the keys; 0: the window itself
    int count = 1;          ///< above 1: a list of so many commands, with ids counted up from this one
    int placeholderOf = -1; ///< the list that this row stands for while it is empty

    bool isCheckable() const { return flags & Checkable; }
    bool isViewOnly() const { return flags & ViewOnly; }
    bool needsFocus() const { return flags & KeysNeedFocus; }
    bool isList() const { return count > 1; }
    bool isPlaceholder() const { return placeholderOf >= 0; }
    /// The text without mnemonic and key.
    QString label() const;
    QString objectName() const;
    /// Portable, the one of the text first.
    QStringList keyList() const;
};
/// The row of a list whose entries come and go, such as recent files, with ids from first to last.
constexpr CommandRow commandList(int first, int last, const char16_t *tip, int condition = kAlways)
{
    CommandRow row{first, u"", tip, condition};
    row.count = last - first + 1;
    return row;
}
/// The row that is shown while a list is empty. It is never enabled and has no action.
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
    const char16_t *text = nullptr; ///< of a submenu; of an item that is called differently here, else null
    int command = -1;
    int condition = kAlways; ///< of a submenu: greyed as a whole while the condition does not hold
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

/// Where commands stand. Rows appear in any number of layouts; a row with keys may appear in none.
struct CommandLayout
{
    enum class Kind {
        MenuBar,
        Menu,    ///< a pop-up menu, or the menu of a button
        ToolBar, ///< of any widget that holds buttons
    };
    Kind kind = Kind::Menu;
    const char16_t *name = u""; ///< object name of the widget that is made of it
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
    /// Null for an id that no row has. An id within a list has the list's row.
    const CommandRow *row(int id) const;
    /// By object name.
    const CommandRow *row(QStringView name) const;
    /// Ends the program for a name that no layout has.
    const CommandLayout &layout(QStringView name) const;
    /// Ids of the items of a layout, in order.
    QList<int> idsIn(const CommandLayout &layout) const;

    /// Whatever is wrong with the table itself: ids or names used twice, keys or mnemonics in conflict, no tip, items
    /// that name no row, rows that can be reached neither by a layout nor by a key, lists that are not closed.
    QStringList faults() const;

private:
    std::span<const CommandRow> m_rows;
    std::span<const CommandLayout> m_layouts;
};

} // namespace tarnwick
