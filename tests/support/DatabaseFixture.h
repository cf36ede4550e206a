#pragma once
#include "Printers.h"
#include "Rows.h"
#include "TemporaryFolder.h"
#include <db/CreateDatabase.h>
#include <db/DatabaseSession.h>
#include <db/SqlText.h>
#include <gtest/gtest.h>

namespace support {

/// A session on a new database with the whole schema, and recorded prompts.
class DatabaseTest : public ::testing::Test
{
protected:
    DatabaseTest()
        : session(prompts)
        , path(folder.path(QStringLiteral("project.mdb")))
    {
        EXPECT_TRUE(db::createDatabase(prompts, path));
        session.open(path);
        prompts.clear();
    }

    dao::Database &database() { return session.database(); }
    int execute(const QString &sql) { return db::executeSql(database(), sql); }
    dao::Value scalar(const QString &sql) { return db::firstValue(database(), sql); }
    QStringList rows(const QString &sql) { return rowsOf(database(), sql); }

    TemporaryFolder folder;
    tarnwick::RecordingPrompts prompts;
    db::DatabaseSession session;
    QString path;
};

} // namespace support
