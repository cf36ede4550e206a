#include "RevisionFixture.h"

#include <db/CreateDatabase.h>
#include <db/revision/JetImport.h>
#include <db/SqlText.h>
#include <db/UnfinishedFile.h>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <support/FullDisk.h>

using namespace Qt::StringLiterals;

namespace {

class FaultsTest : public RevisionTest
{
protected:
    QSet<QString> namesIn(const QString &subfolder) const
    {
        const QStringList names = folder.names(subfolder);
        return {names.begin(), names.end()};
    }
    static QString backupOf(const QString &file)
    {
        const QFileInfo info(file);
        return info.absoluteDir().filePath(info.completeBaseName() + u"._db"_s);
    }
};

} // namespace

TEST_F(FaultsTest, ABackupThatDoesNotFitKeepsTheConversionFromStarting)
{
    const QByteArray before = makeOld();
    {
        const support::FullDisk disk(before.size() / 2);
        ASSERT_TRUE(convert());
    }
    ASSERT_EQ(errors().size(), 1);
    EXPECT_TRUE(errors().first().startsWith(u"1033 Could not back up "_s)) << errors().first().toStdString();
    EXPECT_EQ(informations(), QStringList());
    EXPECT_TRUE(session.isOpen());
    session.close();
    EXPECT_EQ(bytes(), before);
    EXPECT_EQ(folder.names(u"arvo"_s), QStringList{u"project.mdb"_s}) << "not even a part of the backup";
}

TEST_F(FaultsTest, ADiskThatFillsUpUndoesTheConversion)
{
    old::Sizes sizes;
    sizes.report = 3000;
    const QByteArray before = makeOld(sizes);
    {
        const support::FullDisk disk(before.size() + 4096);
        ASSERT_TRUE(convert());
    }
    ASSERT_FALSE(errors().isEmpty());
    const QString error = said(Entry::Kind::Error).first();
    EXPECT_TRUE(error.contains(u"[3026]"_s) && error.contains(u"limit on the size of files"_s)) << error.toStdString();
    EXPECT_EQ(informations(), QStringList{u"The conversion failed. The database is as it was."_s});
    EXPECT_EQ(said(Entry::Kind::Status).last(), u"Connected to \"project.mdb\"."_s);
    EXPECT_TRUE(database().hasTable(u"display_format"));
    session.close();
    EXPECT_EQ(bytes(), before);
    EXPECT_EQ(folder.read(u"arvo/project._db"_s), before);

    ASSERT_TRUE(convert()) << "with room again";
    EXPECT_EQ(errors(), QStringList());
    EXPECT_FALSE(database().hasTable(u"display_format"));
}

TEST_F(FaultsTest, OddPathsAreConvertedLikeOthers)
{
    const QString longName = QString(120, u'n');
    const QString longPath = u"arvo/"_s + longName + u'/';
    const QString filler(qMax<qsizetype>(1, 250 - folder.path(longPath).size() - 4), u'x');
    for (const QString &name :
         {u"with blanks and 'quotes' \"both\".mdb"_s, u"Dampferzeuger Nördlich Ωλ 蒸気.mdb"_s, u"100%1 %S.mdb"_s,
          u"no extension"_s, u"two.dots.mdb"_s, QString(longName + u'/' + filler + u".mdb"_s)}) {
        SCOPED_TRACE(name.toStdString());
        const QString file = folder.path(u"arvo/"_s + name);
        ASSERT_TRUE(QDir().mkpath(QFileInfo(file).absolutePath()));
        old::makeDatabase(file, old::Tubes);
        const QByteArray before = folder.read(u"arvo/"_s + name);
        ASSERT_TRUE(connectTo(file, {Answer::Yes}));
        EXPECT_EQ(errors(), QStringList());
        EXPECT_EQ(informations().size(), 1);
        ASSERT_EQ(questions().size(), 1);
        EXPECT_TRUE(questions().first().contains(u'"' + file + u'"'));
        EXPECT_TRUE(database().table(u"tubes").field(u"y"));
        EXPECT_EQ(support::readFile(backupOf(file)), before);
        session.close();
    }
}

TEST_F(FaultsTest, ANameWithoutRoomForTheJournalIsNotWrittenTo)
{
    const QString name = QString(246, u'x') + u".mdb"_s;
    const QString file = folder.path(u"arvo/"_s + name);
    EXPECT_FALSE(db::createDatabase(prompts, file));
    EXPECT_EQ(errors(), QStringList{u"1015 Could not create database."_s});
    EXPECT_EQ(folder.names(u"arvo"_s), QStringList());
    make(old::Current);
    ASSERT_TRUE(QFile::rename(path, file));
    ASSERT_TRUE(connectTo(file));
    EXPECT_EQ(errors(), QStringList());
    EXPECT_FALSE(session.isUpdatable());
    EXPECT_EQ(number(u"SELECT COUNT(*) FROM tubes"_s), 4);
}

TEST_F(FaultsTest, AFolderThatVanishedIsAnErrorEachTime)
{
    make(old::Current);
    ASSERT_TRUE(connect());
    ASSERT_TRUE(QDir(folder.path(u"arvo"_s)).removeRecursively());
    EXPECT_THROW(db::executeSql(database(), u"DELETE FROM tubes"_s), dao::DaoException);
    EXPECT_FALSE(connect());
    EXPECT_EQ(errors(), QStringList{u"1032 Could not connect to database."_s});
    EXPECT_TRUE(prompts.texts(Entry::Kind::Error).first().contains(u"arvo"_s)) << "names the path";
    EXPECT_FALSE(session.isOpen());
    EXPECT_FALSE(db::createDatabase(prompts, path));
    EXPECT_FALSE(folder.has(u"arvo"_s));
}

TEST_F(FaultsTest, ALockedFileIsSaidOnceAndConnected)
{
    make(old::Current);
    dao::Workspace other;
    dao::Database writing(other);
    writing.open(path);
    dao::Transaction transaction(other);
    db::executeSql(writing, u"UPDATE tubes SET is_marked = True"_s);
    ASSERT_TRUE(connect());
    EXPECT_EQ(errors(), QStringList{u"1044 Could not lock \"%1\"."_s.arg(path)});
    EXPECT_EQ(informations() + questions(), QStringList()) << "nothing was to be converted";
    EXPECT_EQ(number(u"SELECT COUNT(*) FROM tubes"_s), 4);
    transaction.rollback();
    ASSERT_TRUE(connect());
    EXPECT_EQ(errors(), QStringList());
    EXPECT_TRUE(database().hasQuery(u"report#"));
}

TEST_F(FaultsTest, AJournalThatNobodyUsesIsRemoved)
{
    make(old::Current);
    ASSERT_TRUE(connect());
    for (const QByteArray &journal : {QByteArray(), QByteArray(512, '\0')}) {
        session.close();
        folder.write(u"arvo/project.mdb-journal"_s, journal);
        ASSERT_TRUE(connect());
        EXPECT_FALSE(folder.has(u"arvo/project.mdb-journal"_s));
        EXPECT_EQ(errors(), QStringList());
        EXPECT_TRUE(session.isUpdatable());
    }
    session.close();
    dao::Workspace other;
    dao::Database writing(other);
    writing.open(path);
    dao::Transaction transaction(other);
    db::executeSql(writing, u"UPDATE tubes SET is_marked = True"_s);
    ASSERT_TRUE(connect());
    EXPECT_TRUE(folder.has(u"arvo/project.mdb-journal"_s));
    session.close();
    transaction.commit();
    ASSERT_TRUE(connect());
    EXPECT_EQ(number(u"SELECT COUNT(*) FROM tubes WHERE is_marked"_s), 4);
}

TEST_F(FaultsTest, TheBackupIsAsPrivateAsTheDatabase)
{
    make(old::Tubes);
    const auto rights = QFile::ReadOwner | QFile::WriteOwner;
    QFile::setPermissions(path, rights);
    ASSERT_TRUE(convert());
    const auto shared = QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;
    EXPECT_EQ(QFile::permissions(folder.path(u"arvo/project._db"_s)) & (rights | shared), rights);
}

TEST_F(FaultsTest, WithoutConsentNoStatisticsAreMade)
{
    make(old::Tubes);
    ASSERT_TRUE(connect({Answer::No}));
    EXPECT_FALSE(database().hasStatistics(u"tubes"_s));
    ASSERT_TRUE(convert());
    EXPECT_TRUE(database().hasStatistics(u"tubes"_s));
}

TEST_F(FaultsTest, UnfinishedFilesNeverBearTheWantedName)
{
    const QString abandoned = u"arvo-999999999-1.new"_s; // of a program that was killed
    const QStringList kept{u"arvo-%1-77.new"_s.arg(QCoreApplication::applicationPid()), u"arvo-notes-2019.new"_s,
                           u"arvo-notes-2019.new-journal"_s, u"myarvo-999999999-1.new"_s};
    for (const QString &name : kept + QStringList{abandoned, abandoned + u"-journal"})
        folder.write(u"arvo/"_s + name, "left");
    {
        const db::UnfinishedFile file(path);
        EXPECT_NE(file.path(), path);
        old::makeDatabase(file.path(), old::Current);
    }
    EXPECT_EQ(QSet<QString>(kept.begin(), kept.end()), namesIn(u"arvo"_s));
    folder.write(u"arvo/project.mdb"_s, "mine");
    db::UnfinishedFile file(path);
    old::makeDatabase(file.path(), old::Current);
    EXPECT_THROW(file.finish(), dao::DaoException);
    EXPECT_EQ(bytes(), "mine");
    file.replace();
    EXPECT_GT(bytes().size(), 4096);
}

TEST_F(FaultsTest, AJetFileThatCannotBeConvertedStaysOpenAsItWas)
{
    if (!takeSample(u"suite-old-1"_s))
        GTEST_SKIP() << "ARVO_TESTDATA is not set: the sample files are not here";
    const QByteArray before = bytes();

    // Something takes the place of the file while the question waits: the new file cannot replace a folder.
    class Swapping : public tarnwick::RecordingPrompts
    {
    public:
        QString path;
        tarnwick::Answer ask(tarnwick::Buttons, const QString &, int) override { return Answer::Yes; }
        void showStatus(const QString &text) override
        {
            RecordingPrompts::showStatus(text);
            if (text == u"Converting database ...") {
                QFile::remove(path);
                QDir().mkpath(path + u"/in the way"_s);
            }
        }
    } swapping;
    swapping.path = path;
    db::DatabaseSession unlucky(swapping);
    ASSERT_TRUE(db::connectDatabase(unlucky, path, {&project, nullptr, nullptr}));
    ASSERT_FALSE(swapping.texts(Entry::Kind::Error).isEmpty());
    EXPECT_TRUE(swapping.texts(Entry::Kind::Error).last().startsWith(u"Could not convert \""_s));
    EXPECT_TRUE(swapping.texts(Entry::Kind::Information).isEmpty());
    EXPECT_FALSE(unlucky.isUpdatable());
    EXPECT_EQ(db::firstValue(unlucky.database(), u"SELECT COUNT(*) FROM report"_s).integer(), 2000);
    unlucky.close();
    EXPECT_EQ(folder.read(u"arvo/project._db"_s), before);
    EXPECT_EQ(folder.names(u"arvo"_s), (QStringList{u"project._db"_s, u"project.mdb"_s}));
}

TEST_F(FaultsTest, AnImportThatFailsLeavesNothing)
{
    if (qEnvironmentVariableIsEmpty("ARVO_TESTDATA"))
        GTEST_SKIP() << "ARVO_TESTDATA is not set: the sample files are not here";
    {
        const support::FullDisk disk(100'000);
        EXPECT_THROW(db::importJetFile(sample(u"suite-old-1"_s), path), dao::DaoException);
    }
    EXPECT_EQ(folder.names(u"arvo"_s), QStringList());
    folder.write(u"arvo/project.mdb"_s, "mine");
    EXPECT_THROW(db::importJetFile(sample(u"suite-old-1"_s), path), dao::DaoException);
    EXPECT_EQ(bytes(), "mine");

    // What is left of a damaged file only on demand, with the losses told.
    const QString cut = folder.write(u"cut.mdb"_s, support::readFile(sample(u"suite-old-1"_s)).left(200 * 4096));
    QFile::remove(path);
    EXPECT_THROW(db::importJetFile(cut, path), dao::DaoException);
    db::JetImportOptions options;
    options.acceptLosses = true;
    const db::JetImportReport report = db::importJetFile(cut, path, nullptr, options);
    EXPECT_TRUE(report.hasLosses());
    EXPECT_GT(report.tables.size(), 0);
}
