#pragma once
#include "Database.h"

#include <dao/store/Connection.h>
#include <dao/store/SchemaEditor.h>

namespace dao {

/// Someone who is in the middle of reading rows from the file.
class OpenReader
{
public:
    virtual ~OpenReader() = default;
    /// Brings the rows that are still to be read to a safe place: definitions are about to change, or a transaction is
    /// about to be rolled back.
    virtual void secure() = 0;
};

/// What an open database is made of. Shared with its definitions and recordsets, which find it closed when it is.
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
    /// Before a statement: open, and the catalog as the file has it now.
    void prepareStatement();
    /// Before a rollback and a change of definitions.
    void secureReaders();
    /// After a rollback.
    void rolledBack();
    /// Moves on whenever rows may have changed under a reader.
    quint64 changeStamp() const;

    /// Where results are put that cannot be found again by keys.
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

/// The transactions of a workspace over its databases.
struct Workspace::Impl
{
    std::vector<DatabaseImpl *> databases;
    int depth = 0;

    void begin(Workspace::Begin kind);
    void commit();
    void rollback();
    /// A database that is opened while transactions run takes part in them.
    void join(DatabaseImpl &database);
};

} // namespace dao
