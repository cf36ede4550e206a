#include "AppFixture.h"

#include <app/logic/Commands.h>
#include <gmock/gmock.h>
#include <plans/MapFill.h>
#include <QKeySequence>
#include <QSet>

using namespace Qt::StringLiterals;

namespace app {

namespace {

/// A flat list as text: submenus indent, items carry their number.
std::string outline(std::span<const MenuItem> items)
{
    QString text;
    int depth = 0;
    for (const MenuItem &item : items) {
        if (item.kind == MenuItem::End)
            return QString(text + u"end\n"_s).toStdString();
        if (item.kind == MenuItem::Close) {
            --depth;
            continue;
        }
        text += QString(depth * 2, u' ');
        if (item.kind == MenuItem::Separator)
            text += u"--"_s;
        else
            text += QString::fromUtf16(item.text).replace(u'\t', u"\\t"_s);
        if (item.kind == MenuItem::Item)
            text += u" [%1]"_s.arg(item.command);
        if (item.kind == MenuItem::Open)
            ++depth;
        text += u'\n';
    }
    return QString(text + u"not ended\n"_s).toStdString();
}

} // namespace

TEST(CommandTable, MenuBarIsTheOneUsersKnow)
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
  Recent Databases
    <None> [22]
  Recent Maps
    <None> [28]
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
end
)");
}

TEST(CommandTable, PopUpMenusKeepTheirTwoOrders)
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
end
)");
    EXPECT_EQ(outline(kLegendMenu), "Ignore Section [68]\nend\n");
}

TEST(CommandTable, ToolBarFollowsTheFillsWithTheProgramsOwnButtons)
{
    QStringList texts;
    for (const ToolButton &button : kToolButtons)
        texts.append(QString::fromUtf16(button.text));
    EXPECT_EQ(texts, (QStringList{u"HEADER"_s, u"OPTIONS"_s, u" SQL "_s, u"PLANS"_s, u"UPDATE"_s}));
}

TEST(CommandTable, EveryActionHasATip)
{
    QSet<int> numbers;
    for (const auto items : {kMenuBar, kMapMenu, kLegendMenu}) {
        for (const MenuItem &item : items) {
            if (item.kind != MenuItem::Item)
                continue;
            numbers.insert(item.command);
            const CommandInfo *info = commandInfo(item.command);
            ASSERT_NE(info, nullptr) << item.command;
            EXPECT_GT(QStringView(info->tip).size(), 10) << item.command;
        }
    }
    for (int number = 0; number <= LastCommand; ++number) {
        const bool isRecent = (number >= FirstRecentProject && number <= LastRecentProject) ||
                              (number >= FirstRecentDatabase && number <= LastRecentDatabase) ||
                              (number >= FirstRecentMap && number <= LastRecentMap);
        const bool isFree = number == 73;
        EXPECT_EQ(numbers.contains(number), !isRecent && !isFree) << number;
        EXPECT_EQ(commandInfo(number) != nullptr, !isFree) << number;
    }
    for (const ToolButton &button : kToolButtons)
        EXPECT_GT(QStringView(button.tip).size(), 10);
    for (const plans::MapFillType *type : plans::MapFillType::all())
        EXPECT_GT(QStringView(fillButtonTip(type->key)).size(), 10) << qPrintable(type->key);
    for (const ExtraInfo &extra : kExtras)
        EXPECT_GT(QStringView(extra.tip).size(), 10);
}

TEST(CommandTable, KeysDoNotConflict)
{
    QHash<QKeySequence, QString> used;
    const auto use = [&used](const QString &keys, const QString &by) {
        const QKeySequence sequence(keys, QKeySequence::PortableText);
        EXPECT_FALSE(sequence.isEmpty()) << qPrintable(keys);
        EXPECT_FALSE(used.contains(sequence))
            << qPrintable(keys) << ": " << qPrintable(by) << ", " << qPrintable(used.value(sequence));
        used.insert(sequence, by);
    };
    for (const MenuItem &item : kMenuBar) {
        if (const QString keys = menuKeys(item); !keys.isEmpty())
            use(keys, QString::fromUtf16(item.text));
    }
    for (const ExtraInfo &extra : kExtras) {
        if (extra.keys) {
            for (const QString &keys : QString::fromUtf16(extra.keys).split(u'|'))
                use(keys, QString::fromUtf16(extra.text));
        }
    }
    for (const auto *key : {u"Alt+F", u"Alt+E", u"Alt+P", u"Alt+V", u"Alt+D", u"Alt+T", u"Alt+U", u"Alt+H"})
        use(QString::fromUtf16(key), u"menu"_s);
}

TEST(CommandTable, MnemonicsAreUniqueWithinAMenu)
{
    QList<QSet<QChar>> open{{}};
    for (const MenuItem &item : kMenuBar) {
        if (item.kind == MenuItem::Close)
            open.removeLast();
        if (!item.text)
            continue;
        const QString text = QString::fromUtf16(item.text);
        if (const qsizetype mark = text.indexOf(u'&'); mark >= 0) {
            const QChar key = text[mark + 1].toLower();
            EXPECT_FALSE(open.last().contains(key)) << qPrintable(text);
            open.last().insert(key);
        }
        if (item.kind == MenuItem::Open)
            open.append(QSet<QChar>());
    }
}

TEST(CommandTable, GreyedCommandsSayWhy)
{
    CommandContext context;
    EXPECT_EQ(tipText(u"Do it", When::Project, context), u"Do it\nOpen a project first."_s);
    EXPECT_EQ(tipText(u"Do it", When::Always, context), u"Do it"_s);
    context.hasProject = true;
    EXPECT_EQ(tipText(u"Do it", When::Project, context), u"Do it"_s);
    EXPECT_EQ(tipText(u"Do it", When::Later, context), u"Do it\nComes with a later version."_s);
    EXPECT_EQ(tipText(u"Do it", When::PointedSection, context), u"Do it\nThe component has no sections."_s);
    context.hasSections = true;
    EXPECT_FALSE(isEnabled(When::PointedSection, context));
    context.hasPointedTube = true;
    EXPECT_TRUE(isEnabled(When::PointedSection, context));
    EXPECT_FALSE(isEnabled(When::PointedSymbol, context));
}

} // namespace app
