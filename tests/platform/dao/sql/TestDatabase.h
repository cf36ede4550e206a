#pragma once
#include <dao/Database.h>
#include <dao/values/Value.h>

#include <QTemporaryDir>
#include <support/Printers.h>

/// A database for statements as data.
class TestDatabase : public dao::SchemaView
{
public:
    TestDatabase();

    void addQuery(const QString &name, const QString &sql) { database.createQuery({name, sql}); }

    using Parameters = QList<std::pair<QString, dao::Value>>;
    struct Result
    {
        QList<dao::sql::Column> columns;
        dao::sql::NotUpdatable whyNot = dao::sql::NotUpdatable::No;
        bool keyed = false;
        QList<QStringList> rows; ///< cells as text, by the column's type
        int affected = 0;
    };
    /// Compiles and runs. Rows are read as a snapshot and as a dynaset, and must be the same.
    Result run(const QString &sql, const Parameters &parameters = {});

    const dao::TableInfo *findTable(QStringView name) const override { return database.schema().findTable(name); }
    const dao::QueryInfo *findQuery(QStringView name) const override { return database.schema().findQuery(name); }
    QStringList sourceNames() const override { return database.schema().sourceNames(); }

    QTemporaryDir folder;
    dao::Workspace workspace;
    dao::Database database{workspace};
};
