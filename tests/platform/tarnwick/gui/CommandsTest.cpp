#include <tarnwick/gui/CommandActions.h>

#include <support/Printers.h>

#include <gtest/gtest.h>
#include <QAction>
#include <QDialog>
#include <QMenu>
#include <QMenuBar>
#include <QTest>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

enum Id : int {
    Open = 0,
    Save = 1,
    NoRecent = 2,
    FirstRecent = 3,
    LastRecent = 5,
    Wrap = 8,
    Upload = 9,
    Copy = kFirstUnnumbered,
    Run
};
enum Condition : int { Always, Modified, Connected };
enum Part : int { Whole, List };

constexpr CommandRow kRows[] = {
    {Open, u"&Open ...\tCtrl+O", u"Open a list"},
    {Save, u"&Save\tCtrl+S", u"Save the list to its file", Modified},
    placeholder(NoRecent, FirstRecent, u"<None>", u"No list has been opened yet"),
    commandList(FirstRecent, LastRecent, u"Open this list"),
    {Wrap, u"&Wrap Lines", u"Break long lines", Always, nullptr, nullptr, CommandRow::Checkable},
    {Upload, u"&Upload", u"Store the list", kNotYet},
    {Copy, u"Copy", u"Copy the list", Always, u"Ctrl+C|Ctrl+Ins", u"copy", CommandRow::KeysNeedFocus, List},
    {Run, u" RUN ", u"Run the list", Connected, nullptr, u"run"},
};
constexpr MenuItem kBar[] = {
    openMenu(u"&File"), menuItem(Open),        menuItem(Save), kSeparator, openMenu(u"Recent Lists"),
    menuItem(NoRecent), menuItem(FirstRecent), kCloseMenu,     kCloseMenu, openMenu(u"&Edit", Connected),
    menuItem(Wrap),     menuItem(Upload),      kCloseMenu,     kEndOfMenu};
constexpr MenuItem kPopUp[] = {menuItem(Copy), menuItem(Wrap, u"Wrap"), kEndOfMenu};
constexpr MenuItem kTools[] = {menuItem(Run), kSeparator, menuItem(Wrap), kEndOfMenu};
constexpr CommandLayout kLayouts[] = {{CommandLayout::Kind::MenuBar, u"menuBar", kBar},
                                      {CommandLayout::Kind::Menu, u"listMenu", kPopUp},
                                      {CommandLayout::Kind::ToolBar, u"tools", kTools}};
constexpr CommandTable kTable(kRows, kLayouts);

/// A dialog that is wholly made from the table.
class ListDialog : public QDialog
{
public:
    ListDialog()
    {
        handlers.setConditions([this](int condition) -> QString {
            if (condition == Modified)
                return isModified ? QString() : u"There are no changes."_s;
            return condition == Connected && !isConnected ? u"Connect first."_s : QString();
        });
        handlers.setRunner([this](const CommandRow &row, const CommandHandlers::Action &work) {
            done.append(row.objectName());
            work();
        });
        handlers.bind(Open, [this] { isModified = true; });
        handlers.bind(Save, [this] { isModified = false; });
        handlers.bindList(
            FirstRecent, [this](const auto &entry) { done.append(entry.value); }, [this] { return recent; });
        handlers.bindCheckable(
            Wrap, [this] { isWrapped = !isWrapped; }, [this] { return isWrapped; });
        handlers.bind(Copy, [] {});
        handlers.bind(Run, [] {});
        auto *layout = new QVBoxLayout(this);
        auto *bar = new QMenuBar(this);
        actions.fillMenuBar(bar);
        layout->setMenuBar(bar);
        tools->setToolButtonStyle(Qt::ToolButtonTextOnly);
        actions.fillToolBar(tools, u"tools");
        layout->addWidget(tools);
        list->setFocusPolicy(Qt::StrongFocus);
        layout->addWidget(list);
        actions.setPart(List, list);
        popUp = actions.makeMenu(u"listMenu", this);
        actions.refresh();
    }

    bool isModified = false;
    bool isConnected = false;
    bool isWrapped = false;
    QStringList done;
    QList<CommandHandlers::ListEntry> recent;
    CommandHandlers handlers{kTable};
    CommandActions actions{handlers, this};
    QToolBar *tools = new QToolBar(this);
    QWidget *list = new QWidget;
    QMenu *popUp = nullptr;
};

} // namespace

TEST(CommandsTest, ACompleteDialogHasNoFaults)
{
    ListDialog dialog;
    EXPECT_EQ(dialog.actions.faults(), QStringList());
}

TEST(CommandsTest, EverythingOfACommandIsEnabledCheckedAndExplainedTogether)
{
    ListDialog dialog;
    auto *button = dialog.tools->findChild<QToolButton *>(u"run"_s);
    ASSERT_NE(button, nullptr);
    EXPECT_EQ(button->text(), u" RUN "_s);
    EXPECT_EQ(button->toolTip(), u"Run the list\nConnect first."_s);
    EXPECT_FALSE(button->isEnabled());
    const QAction *save = dialog.actions.action(Save);
    EXPECT_EQ(save->toolTip(), u"Save the list to its file\nThere are no changes."_s);
    EXPECT_FALSE(dialog.actions.menuOf(Wrap)->menuAction()->isEnabled()) << "its submenu has a condition";
    EXPECT_FALSE(dialog.actions.action(Upload)->isEnabled());

    dialog.isConnected = true;
    dialog.actions.refresh({Connected});
    EXPECT_TRUE(button->isEnabled());
    EXPECT_EQ(button->toolTip(), u"Run the list"_s);
    dialog.actions.action(Open)->trigger();
    EXPECT_TRUE(save->isEnabled()) << "refreshed after each command";
    EXPECT_EQ(save->statusTip(), u"Save the list to its file"_s);
    dialog.isModified = false;
    EXPECT_FALSE(dialog.handlers.run(Save)) << "the condition counts when the command runs";
    EXPECT_EQ(dialog.done, QStringList{u"command0"_s});

    QAction *inPopUp = dialog.popUp->actions().last();
    EXPECT_EQ(inPopUp->text(), u"Wrap"_s);
    inPopUp->trigger();
    EXPECT_TRUE(inPopUp->isChecked());
    EXPECT_TRUE(dialog.actions.action(Wrap)->isChecked());
    dialog.handlers.setText(Save, [] { return u"&Save \"a && b\""_s; });
    dialog.actions.refresh();
    EXPECT_EQ(save->text(), u"&Save \"a && b\""_s);
    EXPECT_EQ(save->iconText(), u"Save \"a & b\""_s);
}

TEST(CommandsTest, KeysWorkWhereTheTableSays)
{
    ListDialog dialog;
    dialog.show();
    dialog.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
    auto *button = dialog.tools->findChild<QToolButton *>(u"command8"_s);
    button->setFocus();
    QTest::keyClick(button, Qt::Key_C, Qt::ControlModifier);
    EXPECT_TRUE(dialog.done.isEmpty()) << "the list has no focus";
    QTest::keyClick(button, Qt::Key_Return);
    dialog.list->setFocus();
    QTest::keyClick(dialog.list, Qt::Key_C, Qt::ControlModifier);
    QTest::keyClick(dialog.list, Qt::Key_O, Qt::ControlModifier);
    EXPECT_EQ(dialog.done, (QStringList{u"command8"_s, u"copy"_s, u"command0"_s}));
    EXPECT_EQ(kTable.row(u"copy")->keyList(), (QStringList{u"Ctrl+C"_s, u"Ctrl+Ins"_s}));
}

TEST(CommandsTest, AListFillsItsMenuWhenItOpens)
{
    ListDialog dialog;
    const QAction *none = dialog.actions.action(NoRecent);
    QAction *second = dialog.actions.action(FirstRecent + 1);
    EXPECT_TRUE(none->isVisible() && !none->isEnabled());
    EXPECT_EQ(none->toolTip(), u"No list has been opened yet"_s);
    dialog.recent = {
        {u"a & b"_s, u"a"_s, {}}, {u"b"_s, u"b"_s, u"It is gone."_s}, {u"c"_s, u"c"_s, {}}, {u"too many"_s, {}, {}}};
    Q_EMIT dialog.actions.menuOf(FirstRecent)->aboutToShow();
    EXPECT_FALSE(none->isVisible());
    EXPECT_EQ(dialog.actions.action(FirstRecent)->text(), u"&1 a && b"_s);
    EXPECT_TRUE(second->isVisible() && !second->isEnabled());
    EXPECT_EQ(second->toolTip(), u"Open this list\nIt is gone."_s);
    dialog.actions.action(FirstRecent + 2)->trigger();
    EXPECT_EQ(dialog.done, (QStringList{u"command3"_s, u"c"_s}));
    EXPECT_FALSE(dialog.handlers.run(FirstRecent + 3)) << "no row: the list has three places";
    dialog.recent.clear();
    dialog.actions.refreshList(FirstRecent);
    EXPECT_TRUE(none->isVisible() && !second->isVisible());
}

TEST(CommandsTest, FaultsAreFound)
{
    static constexpr CommandRow rows[] = {
        {0, u"&Open", u"Open", Always, u"Ctrl+O|Alt+F"},
        {0, u"&Save", u"Save", Modified, u"Ctrl+O"},
        {2, u"P&rint", u"", Always, u"Strg+P", nullptr, 0, List},
        {kFirstUnnumbered, u"Run", u"Run", Always, nullptr, nullptr, CommandRow::Checkable},
        {5, u"Later", u"Later", kNotYet, u"F9"},
    };
    static constexpr MenuItem bar[] = {openMenu(u"&File"), menuItem(0), menuItem(7), menuItem(0), kEndOfMenu};
    static constexpr CommandLayout layouts[] = {{CommandLayout::Kind::MenuBar, u"bar", bar}};
    static constexpr CommandTable table(rows, layouts);
    CommandHandlers handlers(table);
    handlers.bind(0, [] {});
    handlers.bind(0, [] {});
    handlers.bind(5, [] {});
    handlers.bind(99, [] {});
    handlers.bind(kFirstUnnumbered, [] {});
    QWidget window;
    const CommandActions actions(handlers, &window);
    QStringList faults = actions.faults();
    faults.sort();
    EXPECT_EQ(faults.join(u'\n'), uR"(an action is bound to 99, which is not a row
bar: ends inside a menu, or before its last item
bar: item 7 has no row
bar: no widget was made from this layout
bar: two items have the mnemonic of "&Open"
command0: Alt+F belongs to &File, too
command0: Ctrl+O belongs to command0, too
command0: its condition is not bound
command0: the id 0 has another row
command0: the name has another row
command0: two actions
command1000: in no layout and without keys
command1000: its check state is not bound
command1000: neither number nor name
command2: no action
command2: no tip
command2: no valid key: Strg+P
command2: no widget carries its keys
command5: an action that can never be used)"_s);
}

} // namespace tarnwick
