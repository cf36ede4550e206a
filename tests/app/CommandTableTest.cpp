#include "AppFixture.h"

#include <app/logic/WindowCommandTable.h>
#include <app/logic/WindowConditions.h>

#include <gmock/gmock.h>
#include <plans/MapFill.h>

using namespace Qt::StringLiterals;

namespace app {

namespace {

/// A layout as text: submenus indent, items have their number, or the name where they have none.
std::string outline(const char16_t *name)
{
    using tarnwick::MenuItem;
    QString text;
    int depth = 0;
    for (const MenuItem &item : kWindowCommands.layout(name).items) {
        if (item.kind == MenuItem::End)
            break;
        if (item.kind == MenuItem::Close) {
            --depth;
            continue;
        }
        const tarnwick::CommandRow *row = item.kind == MenuItem::Item ? kWindowCommands.row(item.command) : nullptr;
        QString line = item.kind == MenuItem::Separator ? u"--"_s : QString::fromUtf16(row ? row->text : item.text);
        if (row && item.text)
            line = QString::fromUtf16(item.text);
        if (row)
            line += u" [%1]"_s.arg(row->name ? row->objectName() : QString::number(row->id));
        text += QString(depth * 2, u' ') + line.replace(u'\t', u"\\t"_s) + u'\n';
        if (item.kind == MenuItem::Open)
            ++depth;
    }
    return text.toStdString();
}

} // namespace

TEST(CommandTableTest, MenuBarIsTheOneUsersKnow)
{
    EXPECT_EQ(outline(kMenuBar), R"(&File
  Open Project ... [54]
  --
  &New Map ...\tCtrl+N [0]
  &Open Map ...\tCtrl+O [1]
  --
  Import Map ... [4]
  Export Map ... [5]
  --
  &Save Map\tCtrl+S [2]
  Save Map &As ... [3]
  --
  Print Set&up ... [6]
  Print Preview ... [7]
  &Print ...\tCtrl+P [8]
  --
  Store &Metafile ... [9]
  Store &Bitmap ... [10]
  --
  Recent Projects
    <None> [11]
     [12]
  Recent Databases
    <None> [22]
     [23]
  Recent Maps
    <None> [28]
     [29]
  --
  E&xit ... [34]
&Edit
  Undo\tCtrl+Z [35]
  --
  &Deselect All Tubes [44]
  Select All &Tubes [36]
  Select All &Symbols [37]
  Select &Open Tubes [39]
  Select &Periph [43]
  --
  Delete All &Entries [52]
&Project
  &Clear Recent Projects ... [55]
&View
  Map Full Screen\tEsc [56]
  Flip Horizontal [57]
  Flip Vertical [58]
  --
  Show Floating ID [59]
&Database
  &New Database ... [60]
  --
  &Open Database ... [61]
  &Close Database [62]
  --
  Create &History ... [63]
  Upload &Reports ... [64]
  Upload Component ... [65]
  --
  Clear Recent ARVO ... [66]
  Clear Recent Maps ... [67]
&Tools
  Vantreth ... [69]
  Ossory ... [70]
&Util
  Convert Reports ... [71]
  --
  Create Desktop Shortcut ... [72]
&Help
  &Project Info [74]
  &About ARVO [75]
  --
  &Keys [keys]
)");
}

TEST(CommandTableTest, PopUpMenusKeepTheirTwoOrders)
{
    EXPECT_EQ(outline(kMapMenu), R"(Select
  All Tubes [36]
  All Symbols [37]
  Symbol [38]
  Section [40]
  Group [41]
  Row [42]
  Open Tubes [39]
  Periph [43]
Deselect
  All Tubes [44]
  All Symbols [45]
  Symbol [46]
  Open Tubes [47]
  Section [48]
  Group [49]
  Row [50]
  Periph [51]
--
Repairs ... [53]
)");
    EXPECT_EQ(outline(kLegendMenu), R"(Ignore Section [68]
--
Select Tubes [entrySelect]
Copy Tubes [copyTubes]
)");
}

TEST(CommandTableTest, ToolBarHasTheFillsInOrderThenTheProgramsOwnButtons)
{
    QString fills;
    for (const plans::MapFillType *type : plans::MapFillType::all())
        fills += type->name + u" [fill"_s + type->name + u"]\n"_s;
    EXPECT_EQ(outline(kMainBar), fills.toStdString() + R"(--
HEADER [headerButton]
OPTIONS [optionsButton]
 SQL  [sqlButton]
PLANS [plansButton]
UPDATE [updateButton]
)");
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
