#pragma once
#include "Modes.h"
#include "WorkspaceImpl.h"

#include <dao/sql/Compiler.h>
#include <dao/store/Connection.h>
#include <dao/store/SchemaEditor.h>

namespace dao {

/// A reader that still has rows to fetch from the file.
class OpenReader
{
public:
    virtual ~OpenReader() = default;
    /// Copies the remaining rows to the scratch database. Called before definitions change and before a rollback,
    /// because both end the reading statement.
    virtual void secure() = 0;
};

/// State of an open database. Shared with its query definitions and recordsets; after close() they get error 3420.
class DatabaseImpl : private TransactionMember
{
public:
    explicit DatabaseImpl(std::shared_ptr<WorkspaceImpl> workspace);
    ~DatabaseImpl() override;
    DatabaseImpl(const DatabaseImpl &) = delete;
    DatabaseImpl &operator=(const DatabaseImpl &) = delete;

    void create(const QString &path, const QString &locale, FileFormat format);
    void open(const QString &path, OpenMode mode);
    void close();
    bool isOpen() const { return connection.isOpen(); }
    /// True if the permissions of the file and its folder allow it to be opened for changes.
    static bool mayWrite(const QString &path);

    void requireOpen() const; ///< 3420
    /// Call before each statement: requires an open database and reloads the catalog if another connection changed it.
    void prepareStatement();
    /// Lets all open readers copy their remaining rows. Call before a rollback and before a change of definitions.
    void secureReaders();
    /// Changes whenever rows may have changed since a reader read them.
    quint64 changeStamp() const;

    /// Compiles a text against the current schema. syntax: the parsed text, if the caller has it.
    sql::CompiledStatement compile(const QString &text, const sql::SyntaxTree &syntax = {});
    /// Runs the query that returns the column headings of a cross table.
    QList<sql::CrosstabHeading> readHeadings(const sql::CrosstabPlan &crosstab, const QList<Value> &parameters = {});
    /// readHeadings() without parameters, for the compiler. Columns that depend on parameters are refused (3143).
    sql::HeadingReader headingReader();

    /// The database on the temporary disk for results whose rows cannot be found again by key.
    store::Connection &scratch();
    qint64 nextScratchTable() { return ++m_scratchTables; }

    void adopt(OpenReader *reader) { m_readers.push_back(reader); }
    void release(OpenReader *reader) { std::erase(m_readers, reader); }

    store::Connection connection;
    store::Catalog catalog{connection};
    store::SchemaEditor editor{connection, catalog};
    QString path;

private:
    void openFile(const QString &path, bool readOnly);
    void beginLevel(int level, BeginMode mode) override;
    void commitLevel(int level) override;
    void rollbackLevel(int level) override;

    std::shared_ptr<WorkspaceImpl> m_workspace;
    store::Connection m_scratch;
    qint64 m_scratchTables = 0;
    std::vector<OpenReader *> m_readers;
    quint64 m_rollbacks = 0;
};

} // namespace dao
