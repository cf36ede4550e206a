#pragma once
#include "Statement.h"
#include "TextPool.h"

#include <dao/values/Schema.h>
#include <dao/values/Value.h>
#include <tarnwick/base/Progress.h>

#include <exception>
#include <functional>
#include <QElapsedTimer>
#include <QObject>
#include <vector>

struct sqlite3;

namespace dao::store {

/// Connection and Statement are the only interface to SQLite that the rest of the engine uses; one Connection is one
/// open file.
class Connection
{
public:
    enum class Mode { ReadOnly, ReadWrite, Create };

    Connection() = default;
    ~Connection();
    Connection(const Connection &) = delete;
    Connection &operator=(const Connection &) = delete;

    /// Opens the file and configures the connection: defensive mode, synchronous = FULL, busy timeout 1 s. The content
    /// of the file is not checked.
    void open(const QString &path, Mode mode);
    /// Opens a private database on the temporary disk for results; it is deleted when it is closed.
    void openScratch();
    /// Finalizes every statement, which becomes invalid, and rolls back an open transaction.
    void close();
    bool isOpen() const { return m_db != nullptr; }
    QString path() const { return m_path; }
    bool isReadOnly() const { return m_readOnlyFile; }
    /// The version counter in the file that every change of the catalog increments, by any program.
    qint64 catalogVersion();

    void run(const QString &sql);
    /// Returns the first column of the first row, 0 if there is no row.
    qint64 number(const QString &sql);

    /// False in autocommit mode.
    bool inTransaction() const;
    qint64 lastRowId() const;
    /// Rows changed by the last changing statement (without those of its triggers), and by all statements so far.
    qint64 changes() const;
    qint64 totalChanges() const;

    /// Begins a transaction of the program. Statements in it are not interrupted, because SQLite would roll back the
    /// whole transaction: they run to their end and are undone by the statement's savepoint. writing: waits for other
    /// writers here and not at the first change.
    void beginProgramTransaction(bool writing);
    /// After a failed commit the transaction is still open, unless SQLite has rolled it back.
    void commitProgramTransaction();
    /// Executes COMMIT and waits for readers of the file. Error 3024 if the path now names another file than the open
    /// one: the committed data would be lost with the open one.
    void commit();
    void rollbackProgramTransaction();
    bool inProgramTransaction() const { return m_programTransaction; }
    /// True if the user can cancel but an interrupt would roll back the program's transaction. Changes then call
    /// dao_cancelled() for each row and stop there.
    bool mustPollForCancel() const { return m_progress && m_programTransaction; }
    /// Throws if SQLite has rolled back the program's transaction by itself: later changes must not be committed
    /// without the earlier ones.
    void requireTransaction() const;

    /// The schema that error messages take names of fields and rules from. Not owned.
    void setSchema(const SchemaView *schema) { m_schema = schema; }
    const SchemaView *schema() const { return m_schema; }
    /// Sets the object that errors name as their source; returns the previous one.
    QString setSource(const QString &source);
    QString source() const { return m_source; }
    void setOpening(bool opening) { m_opening = opening; }

    /// An SQL function implemented here. It may run statements on this connection. Its exceptions become errors of the
    /// calling statement.
    using Function = std::function<Value(const QList<Value> &)>;
    void addFunction(const QByteArray &name, const Function &body);
    /// Sets the size of the page cache. If that fails, the cache keeps its size, which is correct but slower or less
    /// responsive.
    void setCache(int kibibytes);
    /// Replaces the stored definition of an index by an equivalent one (see makeIndex()).
    void rewriteIndex(const QString &name, const QString &sql);

    void setProgress(tarnwick::Progress *progress);
    tarnwick::Progress *progress() const { return m_progress; }
    /// Throws tarnwick::Cancelled if the user cancelled while a statement ran that could not be interrupted.
    void throwIfCancelled();
    /// Clears a pending cancel request. Call before each statement. Rethrows an exception of the progress object that
    /// has not been reported yet.
    void clearCancel();
    /// For callbacks that SQLite calls: the running statement ends with this exception.
    void throwAfterwards(std::exception_ptr thrown);

    /// Holds a read lock until control returns to the event loop, so that all reads until then are consistent and need
    /// not lock and unlock the file for each row. Does nothing without a running event loop, because nothing would
    /// release the lock.
    void holdRead();
    void releaseRead();

private:
    friend class Statement;
    friend struct ConnectionCallbacks;

    sqlite3 *open(const QByteArray &name, int flags);
    void setUp();
    void requireSameFile() const;
    bool waitForOthers(int calls);
    void consult(bool isWaiting) noexcept;
    [[noreturn]] void throwStopped();
    bool beforeStep(const Statement &statement);
    void afterFailure();
    [[noreturn]] void fail(bool writing);
    void adopt(Statement *statement);
    void release(Statement *statement);

    sqlite3 *m_db = nullptr;
    QString m_path;
    QString m_source = QStringLiteral("DAO.Database");
    const SchemaView *m_schema = nullptr;
    std::vector<Statement *> m_statements;
    tarnwick::Progress *m_progress = nullptr;
    QElapsedTimer m_sinceConsulted;
    QElapsedTimer m_waiting; ///< since another program's lock was first found
    bool m_readOnlyFile = false;
    bool m_opening = false;
    bool m_userText = false;
    bool m_writing = false;
    bool m_consulting = false;
    bool m_cancelRequested = false;
    std::exception_ptr m_thrownMeanwhile; ///< by the progress object or a function, while SQLite was running
    bool m_programTransaction = false;
    bool m_committing = false;
    bool m_transactionLost = false;
    Statement m_catalogVersion;
    Statement m_hold;
    TextPool m_texts; ///< shares equal texts of cells
    bool m_holding = false;
    QObject m_context; ///< receives the queued call that releases the held read lock
};

/// SQLite's sorter cannot be interrupted while it sorts one piece, and a piece is as large as the page cache. While
/// this object exists the cache is small, so sorting is done in small pieces, which takes no longer and lets the user
/// cancel.
class SmallSorts
{
public:
    explicit SmallSorts(Connection &connection);
    ~SmallSorts();
    SmallSorts(const SmallSorts &) = delete;
    SmallSorts &operator=(const SmallSorts &) = delete;

private:
    Connection &m_connection;
};

} // namespace dao::store
