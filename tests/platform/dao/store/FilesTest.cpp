#include "Fixture.h"

#include <gmock/gmock.h>
#include <QCoreApplication>
#include <QTimer>
#include <sqlite3.h>
#include <support/Files.h>

using namespace Qt::StringLiterals;
using namespace dao;
using build::field;
using build::table;

class FilesTest : public StoreTest
{
protected:
    FilesTest()
    {
        database.execute(u"CREATE TABLE t (x LONG)"_s);
        append(u"t"_s, {{u"x"_s, number(1)}});
        database.close();
    }
    QString openError(const QString &file, OpenMode mode = OpenMode::Update)
    {
        return errorOf([&] { database.open(file, mode); });
    }
    QByteArray content(const QString &file)
    {
        QFile f(file);
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
    }
    void write(const QString &file, const QByteArray &bytes) { support::writeFile(file, bytes); }
};

TEST_F(FilesTest, WhatCannotBeOpenedSaysWhy)
{
    EXPECT_EQ(openError(path(u"no.mdb"_s)), u"3024 DAO.Workspace: Could not find file '%1'."_s.arg(path(u"no.mdb"_s)));
    EXPECT_EQ(openError(path(u"no/no.mdb"_s)).left(4), u"3044"_s);
    EXPECT_EQ(openError(folder.path()).left(4), u"3051"_s);
    EXPECT_EQ(errorOf([&] { database.create(path(), {}); }), u"3204 DAO.Workspace: Database already exists."_s);
    EXPECT_EQ(numberOf([&] { database.create(path(u"no/no.mdb"_s), {}); }), 3044);
    EXPECT_FALSE(database.isOpen());
    EXPECT_EQ(numberOf([&] { database.tableNames(); }), 3420);
}

TEST_F(FilesTest, ForeignFilesAreNotRecognizedAndNotTouched)
{
    const QString foreign = path(u"foreign.mdb"_s);
    QByteArray jet("\0\1\0\0Standard Jet DB\0", 20);
    jet.resize(8192);
    for (const QByteArray &bytes : {QByteArray(), QByteArray("text"), QByteArray(5000, 'x'), jet}) {
        write(foreign, bytes);
        EXPECT_EQ(openError(foreign), u"3343 DAO.Workspace: Unrecognized database format '%1'."_s.arg(foreign));
        EXPECT_EQ(content(foreign), bytes);
    }
    QFile::remove(foreign);
    raw(u"CREATE TABLE t (x)"_s, foreign);
    EXPECT_EQ(openError(foreign).left(4), u"3343"_s) << "a SQLite file, but none of ours";
}

TEST_F(FilesTest, DamagedFilesNeverBringTheProgramDown)
{
    database.open(path());
    {
        Transaction transaction(workspace);
        for (int i = 0; i < 2000; ++i)
            append(u"t"_s, {{u"x"_s, number(i)}});
        transaction.commit();
    }
    database.close();
    const QByteArray sound = content(path());
    const QString damaged = path(u"damaged.mdb"_s);
    const auto tryIt = [&](const QByteArray &bytes) {
        write(damaged, bytes);
        QString failure = errorOf([&] {
            database.open(damaged);
            Recordset rows(database);
            rows.open(Recordset::Type::TableAppend, u"t"_s);
            rows.addNew();
            rows.setValue(0, number(1));
            rows.update();
            database.analyze();
        });
        failure.remove(damaged);
        for (const QString &word : {u"sqlite"_s, u"malformed"_s, u"SELECT"_s, u"_dao"_s})
            EXPECT_FALSE(failure.contains(word, Qt::CaseInsensitive)) << failure.toStdString();
        database.close();
        QFile::remove(damaged);
    };
    for (const qsizetype length : {100, 4096, 8192, 20000})
        tryIt(sound.left(length));
    for (qsizetype page = 0; page < sound.size() / 4096; ++page) {
        QByteArray bytes = sound;
        for (qsizetype i = page == 0 ? 100 : 0; i < 4096; i += 3)
            bytes[page * 4096 + i] = char(i * 7);
        tryIt(bytes);
    }
}

TEST_F(FilesTest, ACatalogThatDoesNotFitTheFileIsDamage)
{
    raw(u"ALTER TABLE t RENAME COLUMN x TO y"_s);
    database.open(path());
    EXPECT_EQ(numberOf([&] { database.execute(u"UPDATE t SET x = 1"_s); }), 3049);
    database.close();
    raw(u"DROP TABLE _dao_indexes"_s);
    const QString failure = openError(path());
    EXPECT_EQ(failure.left(4), u"3049"_s) << failure.toStdString();
    EXPECT_TRUE(failure.contains(path()));
}

TEST_F(FilesTest, ReadOnlyMeansNoAttemptToWrite)
{
    const QByteArray before = content(path());
    database.open(path(), OpenMode::ReadOnly);
    EXPECT_FALSE(database.isUpdatable());
    EXPECT_EQ(errorOf([&] {
                  append(u"t"_s, {{u"x"_s, number(1)}});
              }),
              u"3027 DAO.Recordset: Cannot update.  Database or object is read-only."_s);
    EXPECT_EQ(numberOf([&] { database.createTable(table(u"u"_s, {field(u"x"_s, DataType::Long)})); }), 3027);
    EXPECT_EQ(numberOf([&] { database.createQuery({u"q"_s, u"SELECT 1"_s}); }), 3027);
    EXPECT_EQ(numberOf([&] { database.setProperty(u"p"_s, u"v"_s); }), 3027);
    EXPECT_EQ(numberOf([&] { database.analyze(); }), 3027);
    Recordset rows(database);
    rows.open(Recordset::Type::TableAppend, u"t"_s);
    EXPECT_EQ(rows.whyNotUpdatable(), sql::NotUpdatable::ReadOnlyDatabase);
    workspace.beginTrans();
    workspace.commitTrans();
    database.close();
    EXPECT_EQ(content(path()), before);
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList{u"test.mdb"_s});
}

TEST_F(FilesTest, ALockedFileIsNamed)
{
    sqlite3 *other = nullptr;
    sqlite3_open(path().toUtf8().constData(), &other);
    sqlite3_exec(other, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr);
    EXPECT_EQ(openError(path()), u"3045 DAO.Workspace: Could not use '%1'; file already in use."_s.arg(path()));
    sqlite3_exec(other, "ROLLBACK", nullptr, nullptr, nullptr);
    database.open(path());
    sqlite3_exec(other, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr);
    EXPECT_EQ(errorOf([&] {
                  append(u"t"_s, {{u"x"_s, number(2)}});
              }),
              u"3260 DAO.Recordset: Couldn't update; the file '%1' is currently locked by another user."_s.arg(path()));
    sqlite3_exec(other, "ROLLBACK", nullptr, nullptr, nullptr);
    sqlite3_close(other);
    append(u"t"_s, {{u"x"_s, number(2)}});
    EXPECT_EQ(rawRows(u"SELECT x FROM t"_s), u"1 2"_s);
}

TEST_F(FilesTest, ACommitThatMeetsALockCanBeTriedAgain)
{
    database.open(path());
    workspace.beginTrans();
    append(u"t"_s, {{u"x"_s, number(2)}});
    sqlite3 *other = nullptr;
    sqlite3_stmt *reading = nullptr;
    sqlite3_open(path().toUtf8().constData(), &other);
    sqlite3_prepare_v2(other, "SELECT x FROM t", -1, &reading, nullptr);
    ASSERT_EQ(sqlite3_step(reading), SQLITE_ROW);
    EXPECT_EQ(numberOf([&] { workspace.commitTrans(); }), 3260);
    EXPECT_EQ(workspace.transactionDepth(), 1);
    sqlite3_finalize(reading);
    sqlite3_close(other);
    workspace.commitTrans();
    EXPECT_EQ(rawRows(u"SELECT x FROM t"_s), u"1 2"_s);
}

/// Another program that locks the file until waiting() was called three times.
class Waiting : public tarnwick::Progress
{
public:
    Waiting(const QString &file, const char *statement)
    {
        sqlite3_open(file.toUtf8().constData(), &m_other);
        sqlite3_exec(m_other, "BEGIN", nullptr, nullptr, nullptr);
        sqlite3_exec(m_other, statement, nullptr, nullptr, nullptr);
    }
    ~Waiting() override { sqlite3_close(m_other); }
    bool cancelled() override
    {
        if (++m_looks > 3 && !cancels)
            sqlite3_exec(m_other, "COMMIT", nullptr, nullptr, nullptr);
        return cancels && m_looks > 5;
    }
    void waiting() override
    {
        toldOfWaiting = true;
        if (throws)
            throw std::runtime_error("from the window");
    }

    bool cancels = false;
    bool throws = false;
    bool toldOfWaiting = false;

private:
    sqlite3 *m_other = nullptr;
    int m_looks = 0;
};

TEST_F(FilesTest, WritersWaitForOthersAsLongAsTheUserDoes)
{
    const char *const read = "SELECT count(*) FROM t";
    const char *const write = "INSERT INTO t VALUES (7)";
    using Begin = Workspace::Begin;
    database.open(path());
    for (const char *other : {read, write}) {
        Waiting progress(path(), other);
        database.setProgress(&progress);
        workspace.beginTrans(Begin::Writing);
        append(u"t"_s, {{u"x"_s, number(2)}});
        workspace.commitTrans();
        EXPECT_TRUE(progress.toldOfWaiting) << other;
        database.setProgress(nullptr);
    }
    {
        Waiting progress(path(), write);
        database.setProgress(&progress);
        database.execute(u"UPDATE t SET x = x + 10"_s); // without a transaction of the program's
        EXPECT_TRUE(progress.toldOfWaiting);
        database.setProgress(nullptr);
    }
    EXPECT_EQ(rawRows(u"SELECT x FROM t"_s), u"11 12 17 12 17"_s);

    {
        Waiting writer(path(), write);
        writer.cancels = true;
        database.setProgress(&writer);
        EXPECT_THROW(workspace.beginTrans(Begin::Writing), tarnwick::Cancelled);
        EXPECT_EQ(workspace.transactionDepth(), 0);
        database.setProgress(nullptr);
    }
    Waiting another(path(), write);
    another.cancels = another.throws = true;
    database.setProgress(&another);
    EXPECT_THROW(workspace.beginTrans(Begin::Writing), std::runtime_error);
    EXPECT_EQ(workspace.transactionDepth(), 0);
    database.setProgress(nullptr);
}

TEST_F(FilesTest, ACommitThatIsStoppedByTheProgressCanBeTriedAgain)
{
    database.open(path());
    {
        Waiting reader(path(), "SELECT count(*) FROM t");
        reader.throws = true;
        database.setProgress(&reader);
        workspace.beginTrans(Workspace::Begin::Writing);
        append(u"t"_s, {{u"x"_s, number(2)}});
        EXPECT_THROW(workspace.commitTrans(), std::runtime_error);
        EXPECT_EQ(workspace.transactionDepth(), 1);
        database.setProgress(nullptr);
    }
    workspace.commitTrans();
    EXPECT_EQ(rawRows(u"SELECT x FROM t"_s), u"1 2"_s);
}

TEST_F(FilesTest, AFileThatTookThePlaceOfTheOpenOneIsNotTakenForIt)
{
    const QString aside = path(u"aside.mdb"_s);
    ASSERT_TRUE(QFile::copy(path(), aside));
    const QByteArray before = content(aside);
    database.open(path());
    workspace.beginTrans(Workspace::Begin::Writing);
    append(u"t"_s, {{u"x"_s, number(2)}});
    ASSERT_EQ(std::rename(QFile::encodeName(aside).constData(), QFile::encodeName(path()).constData()), 0);
    const QString error = u"3024 DAO.Workspace: Could not find file '%1'."_s.arg(path());
    EXPECT_EQ(errorOf([&] { workspace.commitTrans(); }), error);
    workspace.rollback();
    EXPECT_EQ(numberOf([&] { database.execute(u"DELETE FROM t"_s); }), 3024);
    database.close();
    EXPECT_EQ(content(path()), before);
    database.open(path());
    append(u"t"_s, {{u"x"_s, number(3)}});
    EXPECT_EQ(rawRows(u"SELECT x FROM t"_s), u"1 3"_s);
}

TEST_F(FilesTest, DamageIsFoundByLookingForIt)
{
    database.open(path());
    database.execute(u"CREATE TABLE u (x LONG, y TEXT(50))"_s);
    database.execute(u"CREATE INDEX by_x ON u (x)"_s);
    database.execute(u"CREATE TABLE v (n SHORT)"_s);
    workspace.beginTrans();
    for (int i = 0; i < 500; ++i)
        append(u"u"_s, {{u"x"_s, number(i)}, {u"y"_s, text(QString(40, u'y'))}});
    workspace.commitTrans();
    const auto findings = [this](Database::Check kind) {
        QStringList texts;
        for (const DamageFinding &finding : database.check(kind))
            texts.append((finding.isDamage ? QString() : u"remark: "_s) + finding.text);
        return texts;
    };
    using Check = Database::Check;
    EXPECT_EQ(findings(Check::Whole), QStringList());
    database.close();

    // Rows missing in the index: without the check only wrong results would show it.
    EXPECT_EQ(raw(u"DROP INDEX [u.by_x]; CREATE INDEX [u.by_x] ON u (x) WHERE x < 100; PRAGMA writable_schema = ON; "
                  "UPDATE sqlite_schema SET sql = 'CREATE INDEX [u.by_x] ON u (x)' WHERE name = 'u.by_x'"_s),
              QString());
    EXPECT_EQ(raw(u"PRAGMA ignore_check_constraints = ON; INSERT INTO v VALUES (99999)"_s), QString());
    database.open(path());
    const QString remark = u"remark: Table 'v' holds values that its rules do not allow."_s;
    EXPECT_EQ(findings(Check::Quick), QStringList{remark});
    EXPECT_THAT(findings(Check::Whole),
                testing::UnorderedElementsAre(
                    remark, u"Index 'u.by_x' does not fit the rows of its table. Queries can give wrong results."_s));
    database.close();

    QByteArray bytes = content(path());
    constexpr int kPage = 4096;
    bytes.replace(bytes.lastIndexOf("yyyyyyyy") / kPage * kPage, 64, QByteArray(64, 'z'));
    write(path(), bytes);
    database.open(path());
    ASSERT_FALSE(findings(Check::Quick).isEmpty());
    for (const QString &finding : findings(Check::Quick).filter(u"remark"_s))
        EXPECT_EQ(finding, remark);
    EXPECT_TRUE(findings(Check::Quick).join(u' ').contains(u"of the file is damaged."_s));
}

TEST_F(FilesTest, WhatWasOpenFindsItsDatabaseClosed)
{
    database.open(path());
    Recordset rows(database);
    rows.open(Recordset::Type::TableAppend, u"t"_s);
    rows.addNew();
    rows.setValue(0, number(1));
    database.close();
    EXPECT_EQ(numberOf([&] { rows.update(); }), 3420);
    EXPECT_FALSE(rows.isOpen());
}
