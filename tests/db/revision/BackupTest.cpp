#include "RevisionFixture.h"

#include <dao/Database.h>
#include <db/revision/JetUse.h>
#include <db/SqlText.h>
#include <fcntl.h>
#include <QDateTime>
#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;

namespace {

/// Says yes, after something has happened while the question was open.
class WhileAsked : public tarnwick::RecordingPrompts
{
public:
    explicit WhileAsked(std::function<void()> work)
        : m_work(std::move(work))
    {
    }
    tarnwick::Answer ask(tarnwick::Buttons buttons, const QString &text, int number) override
    {
        answerWith({tarnwick::Answer::Yes});
        m_work();
        return RecordingPrompts::ask(buttons, text, number);
    }

private:
    std::function<void()> m_work;
};

/// Lets the other program end its work after some looks at the waiting; without any such work, the user cancels.
class WaitsThenEnds : public tarnwick::Progress
{
public:
    explicit WaitsThenEnds(std::function<void()> end)
        : m_end(std::move(end))
    {
    }
    void report(qint64, qint64, const QString &what) override
    {
        isWaiting = what.startsWith(u"Waiting");
        if (told.isEmpty() || told.last() != what)
            told.append(what);
    }
    bool cancelled() override
    {
        constexpr int kLooks = 3;
        if (!std::exchange(isWaiting, false) || ++m_looks < kLooks)
            return false;
        if (m_looks == kLooks && m_end)
            m_end();
        return !m_end;
    }

    QStringList told;
    bool isWaiting = false;

private:
    std::function<void()> m_end;
    int m_looks = 0;
};

/// What is backed up before a conversion is the original, and stays.
class BackupTest : public RevisionTest
{
protected:
    /// Connects and answers yes while something else happens; the messages are in prompts.
    bool convertWhile(const std::function<void()> &work)
    {
        WhileAsked asked(work);
        db::DatabaseSession other(asked);
        const bool isConnected = db::connectDatabase(other, path, {&project, nullptr, progress});
        isUpdatable = other.isUpdatable();
        prompts.clear();
        for (const Entry &entry : asked.entries()) {
            if (entry.kind == Entry::Kind::Error)
                prompts.showError(3, entry.number, entry.text);
            else if (entry.kind == Entry::Kind::Information)
                prompts.showInformation(entry.text);
            else if (entry.kind == Entry::Kind::Status)
                prompts.showStatus(entry.text);
        }
        return isConnected;
    }
    QByteArray backup(const QString &name = u"project._db"_s) const { return folder.read(u"arvo/"_s + name); }

    bool isUpdatable = false;
};

} // namespace

TEST_F(BackupTest, WhatASecondProgramConvertedIsNotBackedUp)
{
    const QByteArray before = makeOld();
    ASSERT_TRUE(convertWhile([this] {
        ASSERT_TRUE(convert());
        session.close();
    }));
    EXPECT_EQ(backup(), before);
    EXPECT_EQ(errors() + informations(), QStringList());
    EXPECT_TRUE(said(Entry::Kind::Status).contains(u"Another program has converted the database meanwhile."_s));
    EXPECT_TRUE(isUpdatable);

    if (!takeSample(u"suite-old-2"_s))
        GTEST_SKIP() << "ARVO_TESTDATA is not set: the sample files are not here";
    const QByteArray jet = bytes();
    ASSERT_TRUE(convertWhile([this] {
        ASSERT_TRUE(convert());
        session.close();
    }));
    EXPECT_EQ(errors() + informations().filter(u"Conversion"_s), QStringList());
    EXPECT_TRUE(said(Entry::Kind::Status).contains(u"Another program has converted the database meanwhile."_s));
    EXPECT_EQ(backup(), jet);
    EXPECT_TRUE(isUpdatable);
    EXPECT_EQ(folder.names(u"arvo"_s), (QStringList{u"project._db"_s, u"project.mdb"_s}));
}

TEST_F(BackupTest, WhatASecondProgramWroteIsBackedUpAndKept)
{
    makeOld();
    QByteArray changed;
    ASSERT_TRUE(convertWhile([&] {
        session.open(path);
        db::executeSql(database(), u"UPDATE tubes SET is_marked = True"_s);
        session.close();
        changed = bytes();
    }));
    EXPECT_EQ(errors(), QStringList());
    EXPECT_EQ(backup(), changed);
    ASSERT_TRUE(connect());
    EXPECT_EQ(number(u"SELECT COUNT(*) FROM tubes WHERE is_marked"_s), 4);
    EXPECT_FALSE(database().hasTable(u"display_format"));
}

TEST_F(BackupTest, WhileASecondProgramWritesNothingIsBackedUpOrConverted)
{
    const QByteArray before = makeOld();
    ASSERT_TRUE(convertWhile([this] {
        session.open(path);
        session.workspace().beginTrans();
        db::executeSql(database(), u"UPDATE tubes SET is_marked = True"_s);
    }));
    EXPECT_EQ(errors(), QStringList{u"1093 Could not lock \"%1\" for the conversion."_s.arg(path)});
    EXPECT_EQ(informations(), QStringList());
    session.close();
    EXPECT_EQ(bytes(), before);
    EXPECT_FALSE(hasBackup());
}

TEST_F(BackupTest, AProgramThatWritesIsWaitedForUnlessTheUserCancels)
{
    const QString waiting = u"Waiting for another program that uses the database ..."_s;
    for (const bool hasViewsOnly : {false, true}) {
        for (const bool cancels : {true, false}) {
            SCOPED_TRACE(testing::Message() << hasViewsOnly << cancels);
            QFile::remove(path);
            hasViewsOnly ? make(old::Current) : void(makeOld());
            const QByteArray before = bytes();
            dao::Workspace workspace;
            dao::Database writer(workspace);
            const auto write = [&] {
                writer.open(path);
                workspace.beginTrans();
                writer.execute(u"UPDATE tubes SET is_marked = True"_s);
            };
            WaitsThenEnds others(cancels ? std::function<void()>() : [&] { workspace.commitTrans(); });
            progress = &others;
            if (hasViewsOnly)
                write();
            ASSERT_TRUE(hasViewsOnly ? connect() : convertWhile(write));
            EXPECT_EQ(errors(), QStringList());
            EXPECT_EQ(others.told.count(waiting), 1) << others.told.join(u'\n').toStdString();
            session.close();
            progress = nullptr;
            if (cancels) {
                EXPECT_EQ(said(Entry::Kind::Status).last(),
                          hasViewsOnly ? u"Cancelled. Views and labels of the database are as they were."_s
                                       : u"Conversion cancelled."_s);
                workspace.rollback();
                EXPECT_EQ(bytes(), before);
                continue;
            }
            session.open(path);
            EXPECT_EQ(number(u"SELECT COUNT(*) FROM [tubes#] WHERE is_marked"_s), 2) << "those with labels";
            session.close();
        }
    }
}

TEST_F(BackupTest, ALockedJetFileIsWaitedForAndLookedAtAnew)
{
    if (!takeSample(u"suite-old-2"_s))
        GTEST_SKIP() << "ARVO_TESTDATA is not set: the sample files are not here";
    const QByteArray jet = bytes();
    std::unique_ptr<db::JetLock> lock;
    const auto take = [&] { lock = std::make_unique<db::JetLock>(path); };
    WaitsThenEnds others([&] {
        QFile file(path); // another program's own save
        EXPECT_TRUE(file.setFileTime(QDateTime::currentDateTime().addSecs(-60), QFile::FileModificationTime) ||
                    (file.open(QIODevice::ReadWrite) &&
                     file.setFileTime(QDateTime::currentDateTime().addSecs(-60), QFile::FileModificationTime)));
        file.close();
        lock.reset();
    });
    progress = &others;
    ASSERT_TRUE(convertWhile(take));
    EXPECT_EQ(errors(), QStringList());
    EXPECT_TRUE(isUpdatable);
    EXPECT_EQ(backup(), jet);

    ASSERT_TRUE(takeSample(u"suite-old-2"_s));
    WaitsThenEnds stays({});
    progress = &stays;
    take();
    ASSERT_TRUE(connect());
    EXPECT_EQ(errors() + questions(), QStringList());
    EXPECT_EQ(said(Entry::Kind::Status).last(), u"Conversion cancelled."_s);
    lock.reset();
    EXPECT_EQ(bytes(), jet);
}

TEST_F(BackupTest, AJetFileThatWasConvertedMeanwhileIsNotInUse)
{
    // The other program has the new file open. Its lock must neither be waited for nor stop the connection.
    QFile user(path);
    const auto convertAndRead = [&] {
        ASSERT_TRUE(convert());
        session.close();
        struct flock reading = {};
        reading.l_type = F_RDLCK;
        reading.l_start = 0x40000002;
        reading.l_len = 510;
        ASSERT_TRUE(user.open(QIODevice::ReadOnly));
        ASSERT_EQ(::fcntl(user.handle(), F_OFD_SETLK, &reading), 0);
    };
    class WhileReading : public tarnwick::Progress
    {
    public:
        std::function<void()> work;
        void report(qint64, qint64, const QString &what) override
        {
            isWaiting = isWaiting || what.startsWith(u"Waiting");
            if (what.startsWith(u"Reading") && work)
                std::exchange(work, {})();
        }
        bool cancelled() override { return isWaiting; }
        bool isWaiting = false;
    };
    for (const bool isWhileReading : {true, false}) {
        SCOPED_TRACE(isWhileReading);
        user.close();
        if (!takeSample(u"suite-old-2"_s))
            GTEST_SKIP() << "ARVO_TESTDATA is not set: the sample files are not here";
        WhileReading reading;
        const auto whileReading = [&] {
            progress = nullptr; // of the other program
            convertAndRead();
        };
        if (isWhileReading)
            reading.work = whileReading;
        progress = &reading;
        ASSERT_TRUE(convertWhile(isWhileReading ? std::function<void()>([] {}) : whileReading));
        EXPECT_FALSE(reading.isWaiting);
        EXPECT_EQ(errors() + informations().filter(u"will not be converted"_s), QStringList());
        EXPECT_TRUE(isUpdatable);
    }
}

TEST_F(BackupTest, TheBackupOfAJetFileIsNeverReplaced)
{
    if (!takeSample(u"suite-old-2"_s))
        GTEST_SKIP() << "ARVO_TESTDATA is not set: the sample files are not here";
    const QByteArray jet = bytes();
    ASSERT_TRUE(convert());
    db::executeSql(database(), u"DROP TABLE leg_alias"_s);
    session.close();
    const QByteArray second = bytes();
    ASSERT_TRUE(convert());
    EXPECT_TRUE(
        questions().first().endsWith(u"A backup will be made to \"%1\"\n"
                                     "    The Jet file \"%2\", an earlier backup, is kept."_s.arg(
                                         folder.path(u"arvo/project-2._db"_s), folder.path(u"arvo/project._db"_s))))
        << questions().first().toStdString();
    EXPECT_EQ(backup(), jet);
    EXPECT_EQ(backup(u"project-2._db"_s), second);

    // The same Jet file once more has its backup; another gets one of its own.
    for (const QString &name : {u"suite-old-2"_s, u"suite-old-1"_s}) {
        ASSERT_TRUE(takeSample(name));
        const QByteArray taken = bytes();
        ASSERT_TRUE(convert());
        EXPECT_EQ(errors(), QStringList());
        EXPECT_EQ(backup(), jet);
        EXPECT_EQ(backup(u"project-2._db"_s), second);
        EXPECT_EQ(folder.has(u"arvo/project-3._db"_s), taken != jet);
    }
}

TEST_F(BackupTest, LinksAreNotFollowed)
{
    const QByteArray before = makeOld();
    const QString mine = folder.write(u"elsewhere/mine"_s, "mine");
    ASSERT_TRUE(QFile::link(mine, folder.path(u"arvo/project._db"_s)));
    ASSERT_TRUE(convert());
    EXPECT_EQ(errors().size(), 1);
    EXPECT_TRUE(said(Entry::Kind::Error).first().contains(u"is a link to"_s));
    session.close();
    EXPECT_EQ(bytes(), before);
    EXPECT_EQ(folder.read(u"elsewhere/mine"_s), "mine");

    // Nor one in the place of the database: where it leads, nothing is converted or written.
    ASSERT_TRUE(QFile::rename(path, folder.path(u"elsewhere/other.mdb"_s)));
    ASSERT_TRUE(QFile::link(folder.path(u"elsewhere/other.mdb"_s), path));
    ASSERT_TRUE(connect());
    EXPECT_FALSE(session.isUpdatable());
    EXPECT_EQ(informations().size(), 1);
    EXPECT_TRUE(informations().first().contains(u"opened for reading only."_s));
    session.close();
    EXPECT_EQ(folder.read(u"elsewhere/other.mdb"_s), before);
}
