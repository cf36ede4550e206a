#include <gtest/gtest.h>
#include <query/ArvoOptionsEdit.h>
#include <support/Printers.h>

using namespace Qt::StringLiterals;
using query::ArvoOptions;
using query::ArvoOptionsEdit;

TEST(ArvoOptionsEditTest, IsModifiedOnlyByWhatDiffers)
{
    ArvoOptions stored;
    stored.userMacros.set(u"LIMIT"_s, u"40"_s);
    ArvoOptionsEdit edit(stored);
    EXPECT_FALSE(edit.isModified());
    edit.draft.page.margins.left = 0.55;
    EXPECT_TRUE(edit.isModified());
    edit.draft.page.margins.left = 0.5;
    EXPECT_FALSE(edit.isModified());
    edit.draft.map.tickColour = tarnwick::ColourRef(1);
    EXPECT_TRUE(edit.isModified());
    edit.draft.map.tickColour = stored.map.tickColour;
    edit.setMacroValue(0, u"41"_s);
    EXPECT_TRUE(edit.isModified());
    EXPECT_EQ(edit.result().userMacros.value(u"[LIMIT]").value_or(QString()), u"41"_s);
    EXPECT_EQ(stored.userMacros.value(u"[LIMIT]").value_or(QString()), u"40"_s);
}

TEST(ArvoOptionsEditTest, TabsAreNamedByTheirCountAndRemovedByPlace)
{
    ArvoOptions stored;
    stored.tubeInfoTabs = {{u"Calls"_s, u"SELECT 1"_s}};
    ArvoOptionsEdit edit(stored);
    EXPECT_EQ(edit.addTab(), 1);
    const QString example = u"SELECT *\nFROM report\nWHERE row = [ROW]\nAND   col = [COL]\n"_s;
    EXPECT_EQ(edit.draft.tubeInfoTabs[1], (ArvoOptions::TubeInfoTab{u"Tab 2"_s, example}));
    EXPECT_EQ(ArvoOptionsEdit(stored, true).exampleSql(), example + u"AND sec = [SEC]"_s);
    EXPECT_FALSE(edit.renameTab(1, u"  "_s));
    EXPECT_TRUE(edit.renameTab(1, u" Plugs "_s));
    EXPECT_EQ(edit.draft.tubeInfoTabs[1].name, u"Plugs"_s);
    EXPECT_TRUE(edit.removeTab(0));
    EXPECT_EQ(edit.addTab(), 1);
    EXPECT_EQ(edit.draft.tubeInfoTabs[1].name, u"Tab 2"_s);
    for (const int none : {-1, 2}) {
        EXPECT_FALSE(edit.removeTab(none));
        EXPECT_FALSE(edit.renameTab(none, u"x"_s));
    }

    ArvoOptionsEdit back(stored);
    EXPECT_FALSE(back.removeTab(7));
    EXPECT_FALSE(back.isModified()) << "nothing was removed";
    back.removeTab(back.addTab());
    EXPECT_TRUE(back.isModified()) << "both buttons count as a change";
}

TEST(ArvoOptionsEditTest, MacroNamesGetBracketsAndStandOnce)
{
    ArvoOptionsEdit edit{ArvoOptions()};
    EXPECT_EQ(edit.setMacroName(0, u" limit "_s), QString());
    EXPECT_EQ(edit.setMacroName(1, u"[Site]"_s), QString());
    EXPECT_EQ(edit.macro(0).name, u"[limit]"_s);
    EXPECT_EQ(edit.macro(1).name, u"[Site]"_s);
    EXPECT_EQ(edit.setMacroName(2, u"LIMIT"_s), u"There is a macro [LIMIT] already."_s);
    EXPECT_EQ(edit.setMacroName(0, u"LIMIT"_s), QString()) << "the case of its own name may change";
    for (const QString &empty : {u""_s, u"  "_s, u"[]"_s})
        EXPECT_EQ(edit.setMacroName(1, empty), u"A macro needs a name."_s);
    EXPECT_EQ(edit.macroCount(), 2);
    edit.removeMacro(0);
    edit.removeMacro(5);
    EXPECT_EQ(edit.result().userMacros.entries().size(), 1);
}
