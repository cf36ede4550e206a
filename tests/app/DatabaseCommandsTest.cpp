#include "WindowFixture.h"

#include <app/TextPanel.h>

#include <db/CreateDatabase.h>
#include <db/SqlText.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QMenu>

using namespace Qt::StringLiterals;
using tarnwick::Answer;
using Kind = tarnwick::RecordingPrompts::Entry::Kind;

namespace app {

namespace {

/// A window on a project of its own, and databases that are not of the present revision.
class DatabaseCommandsTest : public WindowFixture
{
protected:
    DatabaseCommandsTest()
    {
        demo::DemoOptions options;
        options.tubes = 100;
        options.entries = 40;
        options.outages = 1;
        demo::makeProject(options, project);
        window.setFileDialogs(&dialogs);
        EXPECT_TRUE(window.openProject(project));
        said.clear();
    }

    QString makeOldDatabase(const QString &name)
    {
        const QString path = project + u"/arvo/"_s + name;
        EXPECT_TRUE(db::createDatabase(said, path));
        dao::Workspace workspace;
        dao::Database database(workspace);
        database.open(path);
        database.deleteField(u"tubes", u"x");
        database.deleteField(u"tubes", u"y");
        said.clear();
        return path;
    }
    void open(const QString &path, std::initializer_list<Answer> answers = {})
    {
        said.clear();
        said.answerWith(answers);
        dialogs.next = path;
        run(OpenDatabase);
    }
    QString panel() { return window.findChild<TextPanel *>(u"projectPanel"_s)->text(); }

    QTemporaryDir folder;
    QString project = folder.filePath(u"project"_s);
};

/// Shows nothing, and wants to stop at once.
class Stopping : public tarnwick::Progress
{
public:
    void report(qint64, qint64, const QString &) override {}
    bool cancelled() override { return true; }
};

} // namespace

TEST_F(DatabaseCommandsTest, AnOldDatabaseIsConvertedWhenTheUserAgrees)
{
    const QString path = makeOldDatabase(u"old.mdb"_s);
    open(path, {Answer::No});
    EXPECT_EQ(said.texts(Kind::Question).size(), 1);
    EXPECT_FALSE(window.projectSession().database().database().table(u"tubes").field(u"x"));
    EXPECT_TRUE(panel().endsWith(u"Database : old.mdb"_s));

    open(path, {Answer::Yes});
    EXPECT_TRUE(window.projectSession().database().database().table(u"tubes").field(u"x"));
    EXPECT_EQ(said.texts(Kind::Information).size(), 1);
}

TEST_F(DatabaseCommandsTest, LongWorkCanBeStopped)
{
    const QString path = makeOldDatabase(u"old.mdb"_s);
    QStringList titles;
    window.projectSession().makeProgress = [&titles](const QString &title) {
        titles.append(title);
        return std::make_unique<Stopping>();
    };
    open(path, {Answer::Yes});
    const QString stopped = u"Cancelled. Views and labels of the database are as they were."_s; // before the question
    EXPECT_TRUE(said.texts(Kind::Status).contains(stopped));
    EXPECT_FALSE(window.projectSession().database().database().table(u"tubes").field(u"x"));
    EXPECT_TRUE(said.texts(Kind::Error).isEmpty());

    open(window.projectSession().project().databasePath());
    said.answerWith({Answer::Yes});
    run(UploadComponent);
    EXPECT_EQ(said.lastStatus(), u"Upload of the model cancelled."_s);
    EXPECT_EQ(db::firstValue(window.projectSession().database().database(), u"SELECT COUNT(*) FROM tubes"_s).integer(),
              0);
    EXPECT_EQ(titles, (QStringList{u"Connect to Database"_s, u"Connect to Database"_s, u"Upload Component"_s}));
}

TEST_F(DatabaseCommandsTest, RecentDatabasesThatAreGoneAreGreyedAndComeBack)
{
    const QString path = makeOldDatabase(u"old.mdb"_s);
    open(path, {Answer::No});
    open(window.projectSession().project().databasePath());
    QAction *second = window.commands().action(FirstRecentDatabase + 1);
    ASSERT_NE(second, nullptr);
    EXPECT_TRUE(second->text().endsWith(u"arvo\\old.mdb"_s));
    EXPECT_TRUE(second->isEnabled());

    QMenu *menu = window.commands().menuOf(NoRecentDatabase);
    ASSERT_TRUE(QFile::rename(path, path + u".away"_s));
    Q_EMIT menu->aboutToShow();
    EXPECT_FALSE(second->isEnabled());
    EXPECT_TRUE(second->isVisible());
    EXPECT_TRUE(second->toolTip().contains(QDir::toNativeSeparators(path))) << qPrintable(second->toolTip());
    ASSERT_TRUE(QFile::rename(path + u".away"_s, path));
    Q_EMIT menu->aboutToShow();
    EXPECT_TRUE(second->isEnabled());

    said.clear();
    run(ClearRecentDatabases);
    EXPECT_TRUE(window.projectSession().recentFiles().databases.isEmpty());
    EXPECT_FALSE(second->isVisible());
}

TEST_F(DatabaseCommandsTest, ARecentProjectThatIsNoProjectAnyMoreIsGreyed)
{
    ASSERT_TRUE(window.openProject(projectFolder()));
    QAction *second = window.commands().action(FirstRecentProject + 1);
    ASSERT_NE(second, nullptr);
    EXPECT_TRUE(second->isEnabled());
    ASSERT_TRUE(QFile::remove(project + u"/project.json"_s));
    Q_EMIT window.commands().menuOf(NoRecentProject)->aboutToShow();
    EXPECT_FALSE(second->isEnabled()) << "its folder stands, its settings are gone";
}

TEST_F(DatabaseCommandsTest, TheTitleFollowsTheWindowAndTheProject)
{
    const QString name = window.projectSession().project().name;
    window.show();
    window.showMinimized();
    QCoreApplication::processEvents();
    EXPECT_EQ(window.windowTitle(), name);
    window.showNormal();
    QCoreApplication::processEvents();
    EXPECT_EQ(window.windowTitle(), u"ARVO - "_s + project);
    window.showMaximized();
    QCoreApplication::processEvents();
    EXPECT_EQ(window.windowTitle(), u"ARVO - "_s + project);

    // The other project's database is connected once the other project is shown.
    QStringList shown;
    window.projectSession().makeProgress = [&](const QString &) -> std::unique_ptr<tarnwick::Progress> {
        shown.append(window.windowTitle());
        return nullptr;
    };
    ASSERT_TRUE(window.openProject(projectFolder()));
    EXPECT_EQ(shown, QStringList{u"ARVO - "_s + projectFolder()});
    EXPECT_EQ(window.projectSession().database().path(), window.projectSession().project().databasePath());
    EXPECT_EQ(window.projectSession().recentProjects().mid(0, 2), (QStringList{projectFolder(), project}));
    ASSERT_TRUE(window.openProject(project));
    EXPECT_EQ(window.projectSession().database().path(), project + u"/arvo/project.mdb"_s);
}

} // namespace app
