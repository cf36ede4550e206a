#include "DialogChecks.h"
#include "DialogFixture.h"

#include <app/StartPage.h>
#include <QCommandLinkButton>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPlainTextEdit>
#include <setup/dialogs/NewProjectDlg.h>
#include <support/Files.h>

using namespace Qt::StringLiterals;

namespace app {

namespace {

class StartPageTest : public DialogFixture
{
protected:
    void SetUp() override
    {
        useLookOfTheProgram();
        window.setFileDialogs(&dialogs);
    }
    void type(QDialog &dialog, const QString &field, const QString &text)
    {
        dialog.findChild<QLineEdit *>(field)->setText(text);
    }

    const QDir dir{plants()};
};

TEST_F(StartPageTest, PageIsUsedWithoutAMouse)
{
    showActive();
    auto *page = find<StartPage>(u"startPage"_s);
    EXPECT_TRUE(page->isVisible());
    EXPECT_EQ(window.focusWidget()->objectName(), u"startOpen");
    QStringList names;
    for (const QWidget *part : tabOrder(window))
        names.append(part->objectName());
    EXPECT_THAT(names, ::testing::IsSupersetOf({u"startOpen"_s, u"startNew"_s, u"startDemo"_s}));
    EXPECT_FALSE(find<QListWidget>(u"startRecent"_s)->isVisible());
    EXPECT_TRUE(find<QMenu>(u"menuUtil"_s)->isEnabled());
    EXPECT_TRUE(find<QMenu>(u"menuLook"_s)->isEnabled()) << "settings of the look need no project";

    ASSERT_TRUE(window.openProject(projectFolder()));
    EXPECT_FALSE(page->isVisible());
    DBase next(&said);
    next.resize(1000, 700);
    picture(next, u"start-page"_s);
    auto *recent = next.findChild<QListWidget *>(u"startRecent"_s);
    ASSERT_TRUE(recent->isVisible());
    EXPECT_EQ(next.focusWidget(), recent);
    QTest::keyClick(recent, Qt::Key_Return);
    EXPECT_EQ(next.projectSession().project().folder, projectFolder());
}

TEST_F(StartPageTest, DemoProjectIsMadeWhereTheUserSays)
{
    dialogs.next = dir.path();
    support::writeFile(dir.filePath(u"mine.txt"_s), "x");
    find<QCommandLinkButton>(u"startDemo"_s)->click();
    settle();
    EXPECT_EQ(session().project().folder, dir.filePath(u"demo-project"_s)) << "not between other files";
    EXPECT_GT(number(u"SELECT COUNT(*) FROM report"_s), 1000);
    EXPECT_EQ(said.texts(tarnwick::RecordingPrompts::Entry::Kind::Error), QStringList());
    run(DemoProject);
    EXPECT_TRUE(said.texts(tarnwick::RecordingPrompts::Entry::Kind::Error).last().contains(u"There is a project"));
}

TEST_F(StartPageTest, NewProjectTellsWhatIsWrongAndMakesTheProject)
{
    const QString table = support::writeFile(dir.filePath(u"tubes.csv"_s), "row,col\n1,1\n1,x\n1,1\n");
    inNext<setup::NewProjectDlg>([&](setup::NewProjectDlg &dialog) {
        dialog.accept();
        EXPECT_TRUE(dialog.isVisible());
        auto *found = dialog.findChild<QPlainTextEdit *>(u"found"_s);
        EXPECT_EQ(found->toPlainText().count(u'\n'), 4) << qPrintable(found->toPlainText());
        type(dialog, u"folder"_s, dir.filePath(u"unit-2"_s));
        type(dialog, u"site"_s, u"S1"_s);
        type(dialog, u"comp"_s, u"SGA"_s);
        type(dialog, u"outage"_s, u"R1"_s);
        type(dialog, u"projectName"_s, u"Unit 2"_s);
        type(dialog, u"outageDate"_s, u"31.31.2026"_s);
        dialogs.next = table;
        press(dialog, u"browseTable"_s);
        dialog.accept();
        EXPECT_EQ(found->toPlainText(), u"The date of the outage is not a date, such as 03/31/2026.");
        type(dialog, u"outageDate"_s, u"03/31/2026"_s);
        dialog.accept();
        EXPECT_TRUE(found->toPlainText().contains(u"line 3: Column 'col': 'x'"));
        EXPECT_TRUE(found->toPlainText().contains(u"line 4: The tube of row 1, column 1 is in line 2 already."));
        picture(dialog, u"new-project"_s);
        EXPECT_FALSE(QFile::exists(dir.filePath(u"unit-2"_s)));
        support::writeFile(table, "row,col,x,y\n1,1,1,1\n1,2,2,1\n2,1,1,2\n");
        dialog.accept();
        EXPECT_FALSE(dialog.isVisible()) << qPrintable(found->toPlainText());
    });
    find<QCommandLinkButton>(u"startNew"_s)->click();
    EXPECT_EQ(session().project().folder, dir.filePath(u"unit-2"_s));
    EXPECT_EQ(session().project().steamGen.numTube(), 3);
    EXPECT_EQ(session().project().name, u"Unit 2");
    EXPECT_EQ(session().project().outages[0].date, tarnwick::JDateTime::fromLocal(2026, 3, 31));
    EXPECT_EQ(number(u"SELECT COUNT(*) FROM tubes"_s), 3);
}

} // namespace

} // namespace app
