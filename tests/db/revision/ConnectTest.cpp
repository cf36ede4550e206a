#include "RevisionFixture.h"

#include <db/CreateDatabase.h>
#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;
using Kind = tarnwick::RecordingPrompts::Entry::Kind;

namespace {

class ConnectTest : public RevisionTest
{
protected:
    db::ConnectContext context{&project, this};
};

TEST_F(ConnectTest, StartsWithANewDatabaseWhenThereIsNone)
{
    EXPECT_TRUE(db::connectAtStart(session, {u"arvo\\project.mdb"_s}, 2002, context));
    EXPECT_EQ(session.path(), path);
    EXPECT_EQ(prompts.texts(Kind::Status),
              (QStringList{u"Creating database \""_s + path + u"\".", u"Connected to \"project.mdb\"."_s,
                           u"Created database \""_s + path + u"\"."}));
    EXPECT_TRUE(prompts.texts(Kind::Error).isEmpty());
    EXPECT_EQ(connected, QStringList{path});
}

TEST_F(ConnectTest, StartsWithTheMostRecentDatabaseAndMakesNoOther)
{
    const QString elsewhere = folder.path(u"other.mdb"_s);
    ASSERT_TRUE(db::createDatabase(prompts, elsewhere));
    EXPECT_TRUE(db::connectAtStart(session, {u"other.mdb"_s, u"arvo\\project.mdb"_s}, 2002, context));
    EXPECT_EQ(session.path(), elsewhere);
    EXPECT_FALSE(QFile::exists(path));
}

TEST_F(ConnectTest, FindsTheProjectsOwnHoweverItsNameIsWritten)
{
    const QString written = folder.path(u"ARVO/Project.MDB"_s);
    ASSERT_TRUE(QDir(folder.path()).rename(u"arvo"_s, u"ARVO"_s));
    ASSERT_TRUE(db::createDatabase(prompts, written));
    for (const QStringList &recent : {QStringList(), QStringList{u"arvo\\PROJECT.mdb"_s}}) {
        EXPECT_TRUE(db::connectAtStart(session, recent, 2002, context));
        EXPECT_EQ(session.path(), written);
    }
    EXPECT_FALSE(QFile::exists(folder.path(u"arvo"_s))) << "no second database beside it";
}

TEST_F(ConnectTest, FallsBackToTheProjectsOwnWhenTheRecentOneFails)
{
    ASSERT_TRUE(db::createDatabase(prompts, path));
    folder.write(u"broken.mdb"_s, "this is no database at all, just some text that is long enough"_ba);
    EXPECT_TRUE(db::connectAtStart(session, {u"broken.mdb"_s}, 2002, context));
    EXPECT_EQ(session.path(), path);
    ASSERT_EQ(prompts.texts(Kind::Error).size(), 1);
    EXPECT_TRUE(prompts.texts(Kind::Error)[0].startsWith(u"Could not connect to database.\n\n[3343] DAO."));
}

TEST_F(ConnectTest, ADamagedDatabaseIsReportedAndLeftAsItIs)
{
    const QByteArray content(5000, 'x');
    folder.write(u"arvo/project.mdb"_s, content);
    EXPECT_FALSE(db::connectAtStart(session, {}, 2002, context));
    EXPECT_FALSE(session.isOpen());
    EXPECT_EQ(folder.read(u"arvo/project.mdb"_s), content);
    EXPECT_EQ(folder.names(u"arvo"_s), QStringList{u"project.mdb"_s});
}

TEST_F(ConnectTest, ConnectingClosesTheOpenDatabaseFirst)
{
    ASSERT_TRUE(db::createDatabase(prompts, path));
    ASSERT_TRUE(db::connectDatabase(session, path, context));
    prompts.clear();
    EXPECT_FALSE(db::connectDatabase(session, {}, context));
    EXPECT_TRUE(session.isOpen());
    EXPECT_FALSE(db::connectDatabase(session, folder.path(u"none.mdb"_s), context));
    EXPECT_FALSE(session.isOpen());
    EXPECT_EQ(prompts.entries().last().number, 1032);
    EXPECT_TRUE(prompts.texts(Kind::Error)[0].startsWith(u"Could not connect to database.\n\n[3024] DAO."));
}

TEST_F(ConnectTest, ADatabaseOfOtherTablesIsOpenedAsItIs)
{
    {
        dao::Workspace workspace;
        dao::Database database(workspace);
        db::createEmptyDatabase(database, path, db::kDefaultFormatYear);
        database.execute(u"CREATE TABLE customers (name TEXT(20))"_s);
    }
    const QByteArray before = folder.read(u"arvo/project.mdb"_s);
    EXPECT_TRUE(db::connectDatabase(session, path, context));
    EXPECT_EQ(prompts.texts(Kind::Status), QStringList{u"Connected to \"project.mdb\"."_s});
    EXPECT_EQ(prompts.entries().size(), 1);
    session.close();
    EXPECT_EQ(folder.read(u"arvo/project.mdb"_s), before);
}

TEST_F(ConnectTest, TheArvoFolderIsMadeWithItsFirstDatabase)
{
    ASSERT_TRUE(QDir(folder.path()).rmdir(u"arvo"_s));
    EXPECT_TRUE(db::connectAtStart(session, {}, 1997, context));
    EXPECT_EQ(session.path(), path);
    EXPECT_EQ(db::formatYear(session), 1997);
}

TEST_F(ConnectTest, CancelAtTheStartMakesNoOtherDatabase)
{
    StopAt stopping(0);
    if (!takeSample(u"suite-old-2"_s))
        GTEST_SKIP() << "ARVO_TESTDATA is not set: the sample files are not here";
    ASSERT_TRUE(QFile::rename(path, folder.path(u"jet.mdb"_s)));
    context.progress = &stopping;
    EXPECT_FALSE(db::connectAtStart(session, {u"jet.mdb"_s}, 2002, context));
    EXPECT_EQ(prompts.lastStatus(), u"Connecting was cancelled."_s);
    EXPECT_TRUE(prompts.texts(Kind::Error).isEmpty());
    EXPECT_FALSE(QFile::exists(path));
}

} // namespace
