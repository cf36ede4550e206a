#pragma once
#include "OldDatabases.h"

#include <brannock/Project.h>
#include <db/DatabaseSession.h>
#include <db/revision/ConnectDatabase.h>
#include <gtest/gtest.h>
#include <support/Printers.h>
#include <support/Rows.h>
#include <support/TemporaryFolder.h>

/// A project folder with a database in it, a session, and recorded prompts.
class RevisionTest : public ::testing::Test, public db::ConnectionListener
{
protected:
    using Entry = tarnwick::RecordingPrompts::Entry;
    using Answer = tarnwick::Answer;

    RevisionTest();

    void make(int shapes, const old::Sizes &sizes = {}) { old::makeDatabase(path, shapes, sizes); }
    /// Makes an old database of which only tables are left to convert.
    QByteArray makeOld(const old::Sizes &sizes = {}, int shapes = old::Everything);
    bool connect(std::initializer_list<Answer> answers = {});
    bool connectTo(const QString &file, std::initializer_list<Answer> answers = {});
    /// Connects and answers yes, with nothing said before kept.
    bool convert() { return connect({Answer::Yes}); }

    /// A Jet file of the folder that ARVO_TESTDATA names.
    static QString sample(const QString &name);
    /// Puts a sample into the project as its database. Returns false if there are no samples.
    bool takeSample(const QString &name);

    dao::Database &database() { return session.database(); }
    /// Names of fields, sorted.
    static QStringList fieldsOf(const dao::TableInfo &table);
    QStringList fields(const QString &table) { return fieldsOf(database().table(table)); }
    QStringList indexes(const QString &table);
    QStringList rows(const QString &sql) { return support::rowsOf(database(), sql, QStringLiteral("''")); }
    int number(const QString &sql);
    QByteArray bytes() const { return folder.read(QStringLiteral("arvo/project.mdb")); }
    bool hasBackup() const { return folder.has(QStringLiteral("arvo/project._db")); }

    QStringList said(Entry::Kind kind) const { return prompts.texts(kind); }
    QStringList questions() const { return said(Entry::Kind::Question); }
    QStringList informations() const { return said(Entry::Kind::Information); }
    /// Error boxes as "number first line".
    QStringList errors() const;

    void databaseConnected(const QString &connectedPath) override { connected.append(connectedPath); }

    support::TemporaryFolder folder;
    brannock::Project project;
    tarnwick::RecordingPrompts prompts;
    db::DatabaseSession session;
    QString path;
    QStringList connected;
    tarnwick::Progress *progress = nullptr;
};

/// A component of six tubes with labels of its own for rows, of which number 2 has none.
ellery::SteamGen smallSteamGen();

/// Wants to stop at that look.
class StopAt : public tarnwick::Progress
{
public:
    explicit StopAt(int looks)
        : m_looks(looks)
    {
    }
    void report(qint64 done, qint64 total, const QString &) override { EXPECT_LE(done, total); }
    bool cancelled() override { return m_looks-- <= 0; }

private:
    int m_looks;
};
