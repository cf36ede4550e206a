#include "AppFixture.h"

#include <app/logic/WindowCommandTable.h>
#include <app/logic/WindowConditions.h>

#include <gmock/gmock.h>
#include <plans/MapFill.h>

using namespace Qt::StringLiterals;

namespace app {

namespace {

/// The numbers of a layout in their order, names of commands without one.
QStringList placed(const char16_t *layout)
{
    QStringList commands;
    for (const tarnwick::MenuItem &item : kWindowCommands.layout(layout).items) {
        const tarnwick::CommandRow *row =
            item.kind == tarnwick::MenuItem::Item ? kWindowCommands.row(item.command) : nullptr;
        if (row)
            commands.append(row->name ? row->objectName() : QString::number(row->id));
    }
    return commands;
}

} // namespace

TEST(CommandTableTest, EveryNumberIsInTheMenuBarOrInThePopUpMenusInTheirOrders)
{
    EXPECT_EQ(placed(kMapMenu).join(u' '), u"36 37 38 40 41 42 39 43 44 45 46 47 48 49 50 51 53"_s);
    EXPECT_EQ(placed(kLegendMenu), (QStringList{u"68"_s, u"entrySelect"_s, u"copyTubes"_s}));
    QStringList fills;
    for (const plans::MapFillType *type : plans::MapFillType::all())
        fills += u"fill"_s + type->name;
    EXPECT_EQ(placed(kMainBar).mid(0, fills.size()), fills);
    QStringList menus = placed(kMenuBar);
    EXPECT_EQ(menus.removeDuplicates(), 0);
    menus += placed(kMapMenu) + placed(kLegendMenu);
    const QList<std::pair<int, int>> lists{{12, 21}, {23, 27}, {29, 33}}; // recent files, shown by their first number
    for (int number = 0; number <= About; ++number) {
        bool isListed = number == 73;
        for (const auto &[first, last] : lists)
            isListed = isListed || (number > first && number <= last);
        EXPECT_NE(menus.contains(QString::number(number)), isListed) << number;
    }
}

TEST(CommandTableTest, HasEveryNumberOnceAndNoFaults)
{
    EXPECT_EQ(kWindowCommands.faults(), QStringList());
    for (int number = 0; number <= About; ++number)
        EXPECT_EQ(kWindowCommands.row(number) != nullptr, number != 73) << number;
    EXPECT_EQ(kWindowCommands.row(About + 1), nullptr);
}

TEST(CommandTableTest, ConditionsSayWhyNot)
{
    struct Case
    {
        int condition;
        CommandContext context;
        QString whyNot;
    };
    CommandContext project;
    project.hasProject = true;
    CommandContext tube = project;
    tube.hasPointedTube = true;
    tube.hasSections = true;
    const Case cases[] = {
        {When::Always, {}, {}},
        {When::Project, {}, u"Open a project first."_s},
        {When::ViewAfter, {}, u"Open a project first."_s},
        {When::Project, project, {}},
        {When::Later, project, u"Comes with a later version."_s},
        {When::PointedSection, project, u"The component has no sections."_s},
        {When::PointedTube, project, u"There is no tube under the pointer."_s},
        {When::PointedSection, tube, {}},
        {When::PointedSymbol, tube, u"There is no tube with a symbol under the pointer."_s},
        {When::CanUndo, project, u"There is no change to undo."_s},
    };
    for (const Case &each : cases)
        EXPECT_EQ(whyNot(each.condition, each.context), each.whyNot) << each.condition;
}

} // namespace app
