#pragma once
#include "Database.h"

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
class DatabaseImpl
{
public:
    explicit DatabaseImpl(std::shared_ptr<Workspace::Impl> workspace);
    ~DatabaseImpl();

    void create(const QString &path, const QString &locale, FileFormat format);
    void open(const QString &path, OpenMode mode);
    void close();
    bool isOpen() const { return connection.isOpen(); }

    void requireOpen() const; ///< 3420
    /// Call before each statement: requires an open database and reloads the catalog if another connection changed it.
    void prepareStatement();
    /// Lets all open readers copy their remaining rows. Call before a rollback and before a change of definitions.
    void secureReaders();
    /// Updates the catalog after a rollback.
    void rolledBack();
    /// Changes whenever rows may have changed since a reader read them.
    quint64 changeStamp() const;

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

    std::shared_ptr<Workspace::Impl> m_workspace;
    store::Connection m_scratch;
    qint64 m_scratchTables = 0;
    std::vector<OpenReader *> m_readers;
    quint64 m_rollbacks = 0;
};

/// Implementation of Workspace: the transaction state of all its databases.
struct Workspace::Impl
{
    std::vector<DatabaseImpl *> databases;
    int depth = 0;

    void begin(Workspace::Begin kind);
    void commit();
    void rollback();
    /// Starts the open transactions in a database that is opened while they run.
    void join(DatabaseImpl &database);
};

} // namespace dao
