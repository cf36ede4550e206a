#include "TestMap.h"

#include <map/MapFiles.h>
#include <map/MapRecovery.h>

#include <plans/PatternFill.h>
#include <support/TemporaryFolder.h>
#include <tarnwick/FileWriter.h>

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using tarnwick::Answer;
using Kind = tarnwick::RecordingPrompts::Entry::Kind;

namespace map {

namespace {

const UnsavedWork kModified{true, {}, {}};

/// A map of the project, and the recovery copies of one running program.
struct Program
{
    explicit Program(const QString &project)
    {
        map.record.folder = project;
        map.record.steamGen.modelName = u"OWN"_s;
    }
    void addFill(const QList<qint32> &tubes)
    {
        auto fill = std::make_unique<plans::PatternFill>();
        fill->tubes = tubes;
        map.add(std::move(fill));
    }
    /// Starts keeping copies, and offers what is left, with these answers of the user.
    std::optional<UnsavedWork> start(std::initializer_list<Answer> answers = {})
    {
        map.said.answerWith(answers);
        recovery.begin(map.record.folder);
        return recovery.offer(map.document);
    }

    TestMap map{1, 8};
    MapRecovery recovery{map.said};
};

class RecoveryTest : public testing::Test
{
protected:
    RecoveryTest() { qputenv("XDG_DATA_HOME", userData.path().toLocal8Bit()); }

    QStringList names() const { return QDir(tarnwick::RecoveryCopies::folder()).entryList({u"*.map"_s}, QDir::Files); }
    /// Another program on this project is killed while the map has unsaved changes.
    void leaveCopyOfCrashedProgram(const UnsavedWork &work = kModified)
    {
        const pid_t child = fork();
        if (child == 0) {
            MapRecovery crashed(first.map.said);
            crashed.begin(first.map.record.folder);
            crashed.update(first.map.document, work);
            kill(getpid(), SIGKILL);
        }
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        ASSERT_TRUE(WIFSIGNALED(status));
    }
    /// The map is stored in a file of the project.
    QString stored()
    {
        const QString path = project.path(u"mine.map"_s);
        EXPECT_TRUE(storeMap(first.map.document, path, first.map.said));
        return path;
    }

    support::TemporaryFolder userData;
    support::TemporaryFolder project;
    Program first{project.path()};
    Program next{project.path()};
};

} // namespace

TEST_F(RecoveryTest, ACopyIsKeptWhileThereIsUnsavedWork)
{
    MapRecovery &recovery = first.recovery;
    const MapDocument &document = first.map.document;
    recovery.update(document, kModified);
    EXPECT_TRUE(names().isEmpty()) << "not started";
    first.start();
    recovery.update(document, {});
    EXPECT_TRUE(names().isEmpty());
    first.addFill({1});
    recovery.update(document, kModified);
    EXPECT_EQ(names().size(), 1);
    recovery.update(document, {});
    EXPECT_TRUE(names().isEmpty()) << "saved";
    recovery.update(document, kModified);
    EXPECT_EQ(names().size(), 1);
    recovery.end();
    EXPECT_TRUE(QDir(tarnwick::RecoveryCopies::folder()).entryList(QDir::Files).isEmpty());
}

TEST_F(RecoveryTest, AFailureIsReportedOnceInTheStatusLine)
{
    MapRecovery &recovery = first.recovery;
    first.start();
    first.addFill({1});
    first.map.said.clear();
    tarnwick::failWritesAfter(0);
    recovery.update(first.map.document, kModified);
    recovery.update(first.map.document, kModified);
    tarnwick::failWritesAfter(-1);
    EXPECT_EQ(first.map.said.entries().size(), 1);
    EXPECT_TRUE(first.map.said.lastStatus().startsWith(u"Unsaved changes of the map cannot be protected"_s));
    EXPECT_FALSE(recovery.problem().isEmpty());
    first.addFill({2});
    recovery.update(first.map.document, kModified);
    EXPECT_TRUE(recovery.problem().isEmpty()) << "the copy can be written again";
    recovery.end();

    qputenv("XDG_DATA_HOME", "/proc");
    first.map.said.clear();
    first.start();
    EXPECT_EQ(first.map.said.entries().size(), 1);
    EXPECT_FALSE(recovery.problem().isEmpty());
    recovery.update(first.map.document, kModified); // does nothing
}

TEST_F(RecoveryTest, SelectionAndHeaderDraftAreRestored)
{
    first.addFill({1});
    stored();
    HeaderDraft draft{first.map.document.header(), u"half a sen"_s};
    draft.header.upperText = u"Outage"_s;
    leaveCopyOfCrashedProgram({false, {3, 5, 1'000'000}, draft});
    // Neither the lock nor the permissions tell other users anything.
    const QDir copies(tarnwick::RecoveryCopies::folder());
    const QStringList locks = copies.entryList({u"*.lock"_s}, QDir::Files);
    ASSERT_EQ(locks.size(), 1);
    EXPECT_EQ(QFileInfo(copies.filePath(locks[0])).size(), 0);
    EXPECT_EQ(int(QFile::permissions(copies.path()) & (QFile::ReadGroup | QFile::ReadOther | QFile::ExeOther)), 0);

    const std::optional<UnsavedWork> work = next.start({Answer::Yes});
    ASSERT_TRUE(work.has_value());
    EXPECT_EQ(work->draft, draft);
    EXPECT_EQ(next.map.document.selection(), (QList<qint32>{3, 5}));
    EXPECT_FALSE(next.map.document.isModified()) << "the map equals its file";
    EXPECT_EQ(next.map.document.count(), 1);
}

TEST_F(RecoveryTest, UnsavedChangesAreOfferedUntilTheUserDecides)
{
    first.addFill({1});
    const QString path = stored();
    const QByteArray before = project.read(u"mine.map"_s);
    first.addFill({2});
    leaveCopyOfCrashedProgram();
    EXPECT_FALSE(next.start({Answer::Cancel}));
    EXPECT_TRUE(next.map.said.texts(Kind::Question).value(0).contains(first.map.document.file()));
    EXPECT_EQ(next.map.document.count(), 0);
    next.recovery.end();
    EXPECT_EQ(names().size(), 1) << "not decided yet";

    EXPECT_TRUE(next.start({Answer::Yes}));
    EXPECT_EQ(next.map.document.count(), 2);
    EXPECT_EQ(next.map.document.file(), first.map.document.file());
    EXPECT_TRUE(next.map.document.isModified());
    EXPECT_EQ(names().size(), 1) << "the copy remains until the map is saved";
    EXPECT_EQ(project.read(u"mine.map"_s), before);
    ASSERT_TRUE(storeMap(next.map.document, path, next.map.said));
    next.recovery.update(next.map.document, {});
    EXPECT_TRUE(names().isEmpty());

    first.addFill({3});
    next.recovery.end();
    leaveCopyOfCrashedProgram();
    EXPECT_FALSE(next.start({Answer::No}));
    EXPECT_TRUE(names().isEmpty());
}

TEST_F(RecoveryTest, ARestoredMapKeepsItsFileAndModel)
{
    const QString path = stored();
    const fenwright::SiteInfo site = first.map.document.stored().site;
    first.addFill({2});
    first.map.record.steamGen.modelName = u"Other"_s;
    leaveCopyOfCrashedProgram();
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    ASSERT_TRUE(file.setFileTime(QDateTime::currentDateTime().addSecs(60), QFileDevice::FileModificationTime));
    file.close();

    ASSERT_TRUE(next.start({Answer::Yes}));
    EXPECT_EQ(next.map.said.texts(Kind::Error),
              QStringList{u"Map was created using model 'Other.' but the current model is 'OWN'"_s});
    EXPECT_EQ(next.map.document.stored().site, site);
    EXPECT_FALSE(next.map.document.storedAt().isNull());
    EXPECT_TRUE(next.map.document.isFileChanged()) << "saving asks before it overwrites the file";
}

TEST_F(RecoveryTest, DamagedCopiesAreSetAsideAndRunningProgramsKeepTheirs)
{
    first.addFill({3});
    leaveCopyOfCrashedProgram();
    const QString path = tarnwick::RecoveryCopies::folder() + u'/' + names().value(0);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite) && file.resize(file.size() / 2));
    file.close();
    EXPECT_FALSE(next.start());
    ASSERT_EQ(next.map.said.texts(Kind::Error).size(), 1);
    EXPECT_TRUE(next.map.said.texts(Kind::Error)[0].startsWith(u"Could not read map file."_s));
    EXPECT_TRUE(QFile::exists(path + u".bad"_s));
    next.recovery.end();

    first.start();
    first.recovery.update(first.map.document, kModified);
    next.map.said.clear();
    EXPECT_FALSE(next.start());
    EXPECT_TRUE(next.map.said.texts(Kind::Question).isEmpty()) << "the copy of a running program is not offered";
    next.addFill({4});
    next.recovery.update(next.map.document, kModified);
    EXPECT_EQ(names().size(), 2);
}

} // namespace map
