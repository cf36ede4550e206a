// What the status line says, and how long it stands there.
#include "WindowFixture.h"

#include <app/StatusLine.h>

#include <QLabel>
#include <support/Files.h>

using namespace Qt::StringLiterals;
using tarnwick::Answer;

namespace app {

namespace {

using StatusTest = WindowFixture;

} // namespace

TEST(StatusLineTest, HoldsOneLineCutToItsRoom)
{
    StatusLine line;
    line.resize(120, 20);
    line.say(u"Could not store.\n\n  The disk\tis full."_s);
    EXPECT_EQ(line.text(), u"Could not store. The disk is full."_s);
    EXPECT_EQ(line.toolTip(), line.text());
    EXPECT_LT(line.minimumSizeHint().width(), 120) << "a long text does not widen the window";
    line.resize(2000, 20);
    QResizeEvent resized(line.size(), {120, 20});
    QCoreApplication::sendEvent(&line, &resized);
    EXPECT_EQ(line.toolTip(), QString());
    line.setJoins(true);
    line.say(u"Second."_s);
    EXPECT_EQ(line.text(), u"Could not store. The disk is full.  Second."_s);
    line.setJoins(false);
    line.say(u"Execute ..."_s);
    line.endWork();
    EXPECT_EQ(line.text(), QString());
    line.say(u"Done."_s);
    line.endWork();
    EXPECT_EQ(line.text(), u"Done."_s);
}

TEST_F(StatusTest, WordsOfStartUpStayBesideTheMapAndGoWithTheNextChange)
{
    QTemporaryDir folder;
    demo::DemoOptions options;
    options.tubes = 100;
    options.entries = 5;
    options.outages = 1;
    const QString project = folder.filePath(u"project"_s);
    demo::makeProject(options, project);
    ASSERT_TRUE(window.openProject(project));
    ASSERT_TRUE(window.projectSession().saveMap(project + u"/maps/first.map"_s));
    window.projectSession().closeDatabase();
    ASSERT_TRUE(QFile::remove(window.projectSession().project().databasePath()));
    window.projectSession().clearRecentDatabases();

    DBase other; // with a status line of its own
    ASSERT_TRUE(other.openProject(project));
    const auto *status = other.findChild<QLabel *>(u"statusText"_s);
    EXPECT_TRUE(status->text().startsWith(u"Created database \""_s)) << qPrintable(status->text());
    EXPECT_TRUE(status->text().endsWith(u"  Opened map \"maps\\first.map\"."_s)) << qPrintable(status->text());
    other.commands().action(ZoomIn)->trigger();
    EXPECT_FALSE(status->text().isEmpty()) << "still true";
    other.commands().action(SelectAllTubes)->trigger();
    EXPECT_EQ(status->text(), QString());
    ScriptedDialogs chosen; // nothing: the user has cancelled
    other.setFileDialogs(&chosen);
    other.commands().action(NewDatabase)->trigger();
    EXPECT_EQ(status->text(), QString()) << "no database is being created any more";
    settle();
    other.commands().action(Undo)->trigger();
    EXPECT_EQ(status->text(), u"Undone: Select All Tubes."_s);
}

TEST_F(StatusTest, ADatabaseThatCannotBeOpenedOffersTheFormerOne)
{
    open();
    window.setFileDialogs(&dialogs);
    const QTemporaryDir folder;
    const QString none = support::writeFile(folder.filePath(u"none.mdb"_s), "this is no database at all, only text");
    dialogs.next = none;
    said.clear();
    said.answerWith({Answer::No, Answer::Yes});
    run(OpenDatabase);
    using Kind = tarnwick::RecordingPrompts::Entry::Kind;
    EXPECT_EQ(said.texts(Kind::Error).size(), 1);
    EXPECT_EQ(
        said.texts(Kind::Question),
        QStringList{
            u"Database \"project.mdb\" was closed before connecting to the other one.\n\nDo you wish to connect to it again?"_s});
    EXPECT_FALSE(window.projectSession().database().isOpen());
    run(FirstRecentDatabase);
    run(OpenDatabase);
    EXPECT_EQ(window.projectSession().database().path(), window.projectSession().project().databasePath());
    EXPECT_EQ(said.lastStatus(), u"Connected to \"project.mdb\"."_s);
    EXPECT_FALSE(said.unusedAnswers());
}

} // namespace app
