#pragma once
#include "Printers.h"
#include "TemporaryFolder.h"
#include <dao/Recordset.h>
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
    /// The rows of a query, the cells of each joined by "|", Null as "-".
    QStringList rows(const QString &sql)
    {
        QStringList lines;
        dao::Recordset recordset(database());
        for (recordset.open(dao::Recordset::Type::Snapshot, sql); !recordset.isEof(); recordset.moveNext()) {
            QStringList cells;
            for (int i = 0; i < recordset.fieldCount(); ++i)
                cells.append(cell(recordset.value(i)));
            lines.append(cells.join(QLatin1Char('|')));
        }
        return lines;
    }

    TemporaryFolder folder;
    tarnwick::RecordingPrompts prompts;
    db::DatabaseSession session;
    QString path;

private:
    static QString cell(const dao::Value &value)
    {
        using Type = dao::Value::Type;
        switch (value.type()) {
        case Type::Null:
            return QStringLiteral("-");
        case Type::Text:
            return value.text();
        case Type::Float:
        case Type::Double:
        case Type::Date:
            return QString::number(value.real());
        default:
            return QString::number(value.integer());
        }
    }
};

} // namespace support
