#pragma once
#include "Modes.h"
#include "Workspace.h"

#include <dao/sql/plan/Compiled.h>
#include <dao/values/Damage.h>
#include <dao/values/DaoException.h>
#include <dao/values/Schema.h>
#include <dao/values/Value.h>
#include <tarnwick/base/Progress.h>

#include <functional>
#include <memory>
#include <QByteArrayView>

namespace dao {

class Database;
class DatabaseImpl;
class Recordset;
namespace store {
class SchemaEditor;
}

/// One open database file. Paths are native paths of the operating system.
class Database
{
public:
    explicit Database(Workspace &workspace);
    ~Database();
    Database(const Database &) = delete;
    Database &operator=(const Database &) = delete;

    /// Creates an empty database and leaves it open. locale is stored as a property. Errors: 3204 exists, 3044 no such
    /// folder, 3051 no write permission.
    void create(const QString &path, const QString &locale, FileFormat format = FileFormat::Jet4);
    /// Errors: 3024 no such file, 3343 not a database of this engine, 3051 no permission, 3045 in use. If the file or
    /// its folder is not writable, the database is opened read-only (isUpdatable() is false) without an attempt to
    /// write.
    void open(const QString &path, OpenMode mode = OpenMode::Update);
    void close();
    bool isOpen() const;
    bool isUpdatable() const;
    /// True if the permissions of the file and its folder allow it to be opened for changes. Does not open the file.
    static bool mayWrite(const QString &path);
    QString name() const; ///< the file's path; empty when closed
    FileFormat fileFormat() const;

    // Definitions. Lists are in order of creation (tables) or of name (stored queries).
    const SchemaView &schema() const;
    QStringList tableNames() const; ///< system and hidden tables included
    bool hasTable(QStringView name) const;
    const TableInfo &table(QStringView name) const; ///< error 3265
    void createTable(const TableInfo &table);
    void deleteTable(QStringView name);
    /// Replaces the definition of a table in one pass over its rows. Fields are matched by name. New fields get the
    /// values of fills, otherwise their default if they are required, otherwise Null; fields missing in newShape are
    /// dropped. Indexes become those of newShape. Relations are kept, so the fields and indexes that they need must
    /// remain. The time is proportional to the number of rows.
    void alterTable(QStringView name, const TableInfo &newShape, const QList<FieldFill> &fills = {});
    void addField(QStringView table, const FieldInfo &field);
    void deleteField(QStringView table, QStringView field);
    void createIndex(QStringView table, const IndexInfo &index);
    void deleteIndex(QStringView table, QStringView index);
    QList<RelationInfo> relations() const;
    void createRelation(const RelationInfo &relation);
    void deleteRelation(QStringView name);
    QStringList queryNames() const;
    bool hasQuery(QStringView name) const;
    QueryInfo query(QStringView name) const;  ///< error 3265
    void createQuery(const QueryInfo &query); ///< error 3012 when it exists
    void setQuerySql(QStringView name, const QString &sql);
    void deleteQuery(QStringView name);
    /// Properties of the file itself, as text.
    QString property(const QString &name) const;
    void setProperty(const QString &name, const QString &value);

    /// Passes the bytes of the file, as last committed, to take in consecutive pieces. Changes of a transaction in
    /// progress are not included. Exceptions of take are passed on.
    void readFile(const std::function<void(QByteArrayView)> &take) const;
    /// A number that changes when another program has changed the file.
    qint64 changeStamp() const;

    /// Runs an action statement without parameters and returns the number of affected rows. The first error undoes the
    /// whole statement. Errors: 3065 for a statement that returns rows, 3061 if it has parameters.
    int execute(const QString &sql);

    enum class Check {
        Quick, ///< checks the structure of the file and the types of its rows; reads the file once
        Whole  ///< also checks that each index contains all rows of its table
    };
    /// Looks for damage inside the file that normal reading may not detect.
    QList<DamageFinding> check(Check kind) const;

    /// Updates the query planner's statistics (SQL ANALYZE). Call after large changes. Without a table name: all
    /// tables.
    void analyze(const QString &table = {});
    /// True if the planner has statistics for the table.
    bool hasStatistics(const QString &table) const;
    /// Statistics for a table that is still empty: the expected number of rows, and for each index the average number
    /// of rows that share its first 1, 2, ... fields. With them a new database gets good query plans before it holds
    /// data.
    struct IndexStatistics
    {
        QString index;
        QList<qint64> rowsPerKey;
    };
    void seedStatistics(const QString &table, qint64 rows, const QList<IndexStatistics> &indexes);

    /// The progress object that running statements call; null for none. Not owned. Returns the
    /// previous one. See ProgressScope.
    tarnwick::Progress *setProgress(tarnwick::Progress *progress);

    DatabaseImpl &impl() const;

private:
    friend class QueryDef;
    friend class Recordset;
    void define(const QString &source, const std::function<void(store::SchemaEditor &)> &change);

    std::shared_ptr<DatabaseImpl> m_impl;
};

} // namespace dao
