#pragma once
#include "Statement.h"
#include "TextPool.h"

#include <dao/values/Progress.h>
#include <dao/values/Schema.h>
#include <dao/values/Value.h>

#include <exception>
#include <functional>
#include <QElapsedTimer>
#include <QObject>
#include <vector>

struct sqlite3;

namespace dao::store {

/// The seam to the inner engine: one open file. With Statement it is all that the rest of the engine knows of it, so
/// that another engine could stand behind the same operations.
class Connection
{
public:
    enum class Mode { ReadOnly, ReadWrite, Create };

    Connection() = default;
    ~Connection();
    Connection(const Connection &) = delete;
    Connection &operator=(const Connection &) = delete;

    /// Opens and sets the connection up: defensive, durable, impatient with locks. Says nothing about what is in the
    /// file.
    void open(const QString &path, Mode mode);
    /// A private place for results on this machine's temporary disk, gone when closed.
    void openScratch();
    /// Every statement is finished and becomes invalid; an open transaction is rolled back.
    void close();
    bool isOpen() const { return m_db != nullptr; }
    QString path() const { return m_path; }
    bool isReadOnly() const { return m_readOnlyFile; }
    /// The counter that every change of the catalog moves on, whoever made it.
    qint64 catalogVersion();

    void run(const QString &sql);
    /// The first column of the first row, 0 without a row.
    qint64 number(const QString &sql);

    /// False while each statement is its own transaction.
    bool inTransaction() const;
    qint64 lastRowId() const;
    /// Rows changed by the last statement that changed some (its triggers' not counted), and by all so far.
    qint64 changes() const;
    qint64 totalChanges() const;

    /// A transaction of the program's: statements in it are not interrupted half-way, since the inner engine would roll
    /// back the whole transaction; they end, and are undone by the statement's own savepoint. writing: it waits for
    /// other writers now, and not at its first change.
    void beginProgramTransaction(bool writing);
    /// Also after a failed commit the transaction goes on, unless the inner engine has given it up.
    void commitProgramTransaction();
    /// COMMIT: waits for those who read the file. Error 3024 when another file has taken the place of the open one, as
    /// what is committed would be lost with it.
    void commit();
    void rollbackProgramTransaction();
    bool inProgramTransaction() const { return m_programTransaction; }
    /// True when a user may want to stop a change, while interrupting it would take the program's transaction with it.
    /// Such a change stops where it asks dao_cancelled().
    bool mustAskToStop() const { return m_progress && m_programTransaction; }
    /// Throws when the inner engine has given up the program's transaction: what is left of it must not be kept.
    void requireTransaction() const;

    /// Names fields and rules in errors. Not owned.
    void setSchema(const SchemaView *schema) { m_schema = schema; }
    const SchemaView *schema() const { return m_schema; }
    /// The object named as the source of errors; returns the one before.
    QString setSource(const QString &source);
    QString source() const { return m_source; }
    void setOpening(bool opening) { m_opening = opening; }

    /// A function of the inner engine that is answered here. It may run statements on this connection. Errors it throws
    /// become those of the statement that called it.
    using Function = std::function<Value(const QList<Value> &)>;
    void addFunction(const QByteArray &name, const Function &body);
    /// Replaces the text of an index's definition by one that means the same (see makeIndex()).
    void rewriteIndex(const QString &name, const QString &sql);

    void setProgress(Progress *progress);
    Progress *progress() const { return m_progress; }
    /// Throws DaoCancelled when the user wanted to stop while a statement ran that could not be interrupted, or what
    /// the progress object has thrown.
    void throwIfCancelled();
    /// At the start of a statement: a wish to stop the one before no longer counts. Throws what the progress object has
    /// thrown and nobody was told.
    void clearCancel();
    /// For what the inner engine calls: the statement that runs ends with this exception.
    void throwAfterwards(std::exception_ptr thrown);

    /// Keeps what is read consistent and cheap until the event loop is reached again: without it every row that is
    /// fetched locks and unlocks the file. Does nothing where no event loop runs, as nothing would end it there.
    void holdRead();
    void releaseRead();

private:
    friend class Statement;
    friend class SmallSorts;
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
    Progress *m_progress = nullptr;
    QElapsedTimer m_sinceConsulted;
    QElapsedTimer m_waiting; ///< since another program was first found in the way
    bool m_readOnlyFile = false;
    bool m_opening = false;
    bool m_userText = false;
    bool m_writing = false;
    bool m_consulting = false;
    bool m_cancelRequested = false;
    std::exception_ptr m_thrownMeanwhile; ///< by the progress object or a function, while the inner engine was running
    bool m_programTransaction = false;
    bool m_committing = false;
    bool m_transactionLost = false;
    Statement m_catalogVersion;
    Statement m_hold;
    TextPool m_texts; ///< of the cells that are read
    bool m_holding = false;
    QObject m_context; ///< receives the call that ends a held read
};

/// A savepoint for changes, undone when it is left without release(). Outside of a transaction it is one of its own.
class Savepoint
{
public:
    explicit Savepoint(Connection &connection);
    ~Savepoint();
    Savepoint(const Savepoint &) = delete;
    Savepoint &operator=(const Savepoint &) = delete;
    void release();

private:
    Connection &m_connection;
    bool m_outermost;
    bool m_open = true;
};

/// Sorting takes as much memory at a time as there is for pages of the file, and cannot be interrupted meanwhile. As
/// long as this lives it is done in small pieces, which takes no longer and lets a user in between.
class SmallSorts
{
public:
    explicit SmallSorts(Connection &connection);
    ~SmallSorts();
    SmallSorts(const SmallSorts &) = delete;
    SmallSorts &operator=(const SmallSorts &) = delete;

private:
    void setCache(int kibibytes);

    Connection &m_connection;
};

/// Rows are written without a look at CHECK constraints, as long as it lives: for rows that were looked at before, or
/// that shall stay as they are.
class UncheckedWrites
{
public:
    explicit UncheckedWrites(Connection &connection);
    ~UncheckedWrites();
    UncheckedWrites(const UncheckedWrites &) = delete;
    UncheckedWrites &operator=(const UncheckedWrites &) = delete;

private:
    Connection &m_connection;
};

/// Names the object that errors come from, as long as it lives.
class SourceScope
{
public:
    SourceScope(Connection &connection, const QString &source)
        : m_connection(connection)
        , m_before(connection.setSource(source))
    {
    }
    ~SourceScope() { m_connection.setSource(m_before); }
    SourceScope(const SourceScope &) = delete;
    SourceScope &operator=(const SourceScope &) = delete;

private:
    Connection &m_connection;
    QString m_before;
};

} // namespace dao::store
