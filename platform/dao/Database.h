#pragma once

#include <dao/sql/Compiled.h>
#include <dao/values/Damage.h>
#include <dao/values/DaoException.h>
#include <dao/values/Progress.h>
#include <dao/values/Schema.h>
#include <dao/values/Value.h>

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

/// A workspace: the transactions over all of its open databases. Nested up to five levels; an inner commit is undone by
/// an outer roll back. Destroying it rolls back what is open.
class Workspace
{
public:
    Workspace();
    ~Workspace();
    Workspace(const Workspace &) = delete;
    Workspace &operator=(const Workspace &) = delete;

    /// AsNeeded locks nothing before something is read or changed, and what was read before the first change may then
    /// keep the change from waiting for another writer. What is sure to write begins as Writing: it waits for other
    /// writers first (see Progress), and then no other one comes in between.
    enum class Begin { AsNeeded, Writing };
    /// Errors: 3003 nested too deep; 3034 commit or rollback without begin; 3260 locked by another program; 3024 at the
    /// commit, when another file has taken the place of the open one. After a commit that failed the transaction is
    /// still there, to be committed again or rolled back.
    void beginTrans(Begin begin = Begin::AsNeeded);
    void commitTrans();
    void rollback();
    int transactionDepth() const;

private:
    friend class Database;
    friend class DatabaseImpl;
    struct Impl;
    std::shared_ptr<Impl> m_impl;
};

/// What a new file remembers of the format that was asked for (see docs/decisions): 32 Jet 3.x, 64 Jet 4.0.
enum class FileFormat : int { Jet3 = 32, Jet4 = 64 };

enum class OpenMode { Update, ReadOnly };

/// One open database file. Paths are those of the machine.
class Database
{
public:
    explicit Database(Workspace &workspace);
    ~Database();
    Database(const Database &) = delete;
    Database &operator=(const Database &) = delete;

    /// A new empty database, left open. locale is kept as a property. Errors: 3204 exists, 3044 no such folder, 3051 no
    /// right.
    void create(const QString &path, const QString &locale, FileFormat format = FileFormat::Jet4);
    /// Errors: 3024 no such file, 3343 not a database of ours, 3051 no right, 3045 in use. A file or folder without the
    /// right to write is opened read-only (isUpdatable() is false) without an attempt to write.
    void open(const QString &path, OpenMode mode = OpenMode::Update);
    void close();
    bool isOpen() const;
    bool isUpdatable() const;
    /// Whether the rights to a file and its folder allow it to be opened for changes. Opens nothing.
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
    /// Gives a table another definition in one pass over its rows: fields match by name, fields that are new get the
    /// values of fills, else their default when they are required, else Null; fields that newShape lacks go. Indexes
    /// are those of newShape; relations stay, and what they need must. Takes time in proportion to the rows.
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

    /// The bytes of the file as it was last committed, from its beginning to its end, piece by piece. Changes of a
    /// transaction in progress are not in them. Throws what take throws, too.
    void readFile(const std::function<void(QByteArrayView)> &take) const;
    /// A number that is another one once another program has changed the file.
    qint64 changeStamp() const;

    /// Runs an action statement without parameters, failing on the first error, the statement undone as a whole.
    /// Returns the rows affected. Error 3065 for a statement that returns rows, 3061 when it has parameters.
    int execute(const QString &sql);

    enum class Check {
        Quick, ///< the structure of the file and the types of its rows: reads the file once
        Whole  ///< also that each index has the rows of its table
    };
    /// Looks for damage inside the file, which reading may not notice.
    QList<DamageFinding> check(Check kind) const;

    /// Brings the planner's statistics up to date; call after large changes. No table name: all tables.
    void analyze(const QString &table = {});
    /// Whether the planner knows anything of the table.
    bool hasStatistics(const QString &table) const;
    /// Statistics for a table that is still empty: expected rows, and for each index the rows that share the first 1,
    /// 2, ... of its fields. So a new database plans its queries well before it holds data.
    struct IndexStatistics
    {
        QString index;
        QList<qint64> rowsPerKey;
    };
    void seedStatistics(const QString &table, qint64 rows, const QList<IndexStatistics> &indexes);

    /// The progress object that running statements consult; null for none. Not owned.
    void setProgress(Progress *progress);

    DatabaseImpl &impl() const;

private:
    friend class QueryDef;
    friend class Recordset;
    void define(const QString &source, const std::function<void(store::SchemaEditor &)> &change);

    std::shared_ptr<DatabaseImpl> m_impl;
};

/// A transaction that will write, begun; it rolls back when it is left without commit().
class Transaction
{
public:
    explicit Transaction(Workspace &workspace)
        : m_workspace(&workspace)
    {
        workspace.beginTrans(Workspace::Begin::Writing);
    }
    ~Transaction();
    Transaction(const Transaction &) = delete;
    Transaction &operator=(const Transaction &) = delete;
    void commit();
    void rollback();

private:
    Workspace *m_workspace;
};

} // namespace dao
