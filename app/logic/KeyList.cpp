#include "KeyList.h"

#include "WindowCommandTable.h"

#include <span>

using namespace Qt::StringLiterals;

namespace app {

namespace {

struct KeyLine
{
    const char16_t *keys;
    const char16_t *text;
};

constexpr KeyLine kMenuLines[] = {
    {u"Alt+letter", u"Open the menu with the underlined letter, also on the full screen"},
    {u"Alt", u"Go to the menus"},
};
constexpr KeyLine kWindowLines[] = {
    {u"Tab, Shift+Tab", u"Go to the next or the previous field or button"},
    {u"Space, Return", u"Press the button with the focus"},
};
constexpr KeyLine kMapLines[] = {
    {u"Arrows", u"Move the map; with Shift in larger steps"},
    {u"+, -", u"Zoom in, zoom out"},
    {u"Home, F", u"Show the whole map"},
    {u"Backspace", u"Previous view; with Shift the next one"},
    {u"Alt+Arrows", u"Go from tube to tube"},
    {u"Alt+Shift+Arrows", u"Go from tube to tube and select them"},
    {u"Space", u"Select or deselect the tube"},
    {u"Space+drag", u"Move the map"},
    {u"Menu, Shift+F10", u"Open the menu of the tube"},
    {u"Esc", u"Full screen, and back; while dragging, end the drag"},
};
constexpr KeyLine kMouseLines[] = {
    {u"Click", u"Select the tube; with Ctrl toggle it, with Shift add it; on free ground deselect all"},
    {u"Drag", u"Select the tubes in a rectangle; with Ctrl toggle, with Shift add them; with Alt by lasso"},
    {u"Middle button", u"Drag the map"},
    {u"Wheel", u"Zoom at the pointer"},
    {u"Side buttons", u"Previous view, next view"},
    {u"Right button", u"Open the menu of the tube"},
};
constexpr KeyLine kLegendLines[] = {
    {u"Up, Down", u"Go to another entry"},
    {u"Return", u"Edit the entry, as a double click does"},
    {u"Space", u"Show or hide the entry"},
    {u"Menu, Shift+F10", u"Open the menu of the entry"},
    {u"Esc", u"While a description is typed, leave it as it was"},
};
constexpr KeyLine kFindLines[] = {
    {u"Return", u"Show and select the tube (\"12 47\", \"R12C47\")"},
    {u"Down, Up", u"Choose from the list of addresses"},
    {u"Esc", u"Go back to the map"},
};

void add(KeyGroup &group, std::span<const KeyLine> lines)
{
    for (const KeyLine &line : lines)
        group.lines.append({QString::fromUtf16(line.keys), QString::fromUtf16(line.text)});
}

using tarnwick::CommandRow;

bool isInMenuBar(const CommandRow &row)
{
    static const QList<int> ids = kWindowCommands.idsIn(kWindowCommands.layout(kMenuBar));
    return ids.contains(row.id);
}

/// Commands that are not in the menu bar are explained by their tips.
template <typename Predicate>
void addRows(KeyGroup &group, Predicate isWanted)
{
    for (const CommandRow &row : kWindowCommands.rows()) {
        if (const QStringList keys = row.keyList(); !keys.isEmpty() && !isInMenuBar(row) && isWanted(row))
            group.lines.append({keys.join(u", "_s), QString::fromUtf16(row.tip)});
    }
}

KeyGroup menuKeys()
{
    KeyGroup group{u"Menus"_s, {}};
    for (const int id : kWindowCommands.idsIn(kWindowCommands.layout(kMenuBar))) {
        const CommandRow *row = kWindowCommands.row(id);
        if (const QStringList keys = row->keyList(); !keys.isEmpty())
            group.lines.append({keys.join(u", "_s), row->label()});
    }
    add(group, kMenuLines);
    return group;
}

} // namespace

QList<KeyGroup> keyList()
{
    KeyGroup window{u"Window"_s, {}};
    addRows(window, [](const CommandRow &row) { return row.part == WholeWindow; });
    add(window, kWindowLines);
    KeyGroup map{u"Map"_s, {}};
    add(map, kMapLines);
    KeyGroup mouse{u"Mouse on the map"_s, {}};
    add(mouse, kMouseLines);
    KeyGroup legend{u"Legend"_s, {}};
    addRows(legend, [](const CommandRow &row) { return row.part == LegendArea && row.needsFocus(); });
    add(legend, kLegendLines);
    KeyGroup shown{u"Legend, from everywhere"_s, {}};
    addRows(shown, [](const CommandRow &row) { return row.part == LegendArea && !row.needsFocus(); });
    KeyGroup find{u"Find field"_s, {}};
    add(find, kFindLines);
    return {menuKeys(), window, map, mouse, legend, shown, find};
}

QString keyListText()
{
    const QList<KeyGroup> groups = keyList();
    qsizetype width = 0;
    for (const KeyGroup &group : groups) {
        for (const KeyGroup::Line &line : group.lines)
            width = std::max(width, line.keys.size());
    }
    QStringList lines;
    for (const KeyGroup &group : groups) {
        if (!lines.isEmpty())
            lines.append(QString());
        lines.append(group.title);
        for (const KeyGroup::Line &line : group.lines)
            lines.append(u"  "_s + line.keys.leftJustified(width + 2) + line.text);
    }
    return lines.join(u'\n');
}

} // namespace app
