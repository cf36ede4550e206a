#include "Connection.h"

#include "ErrorTranslation.h"
#include "SystemTables.h"

#include <dao/functions/Functions.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <memory>
#include <QScopeGuard>
#include <QThread>
#include <sqlite3.h>
#include <utility>

using namespace Qt::StringLiterals;

namespace dao::store {

namespace {

constexpr int kCacheKibibytes = 64 * 1024;
constexpr int kSortingKibibytes = 4 * 1024; // sorted in about 0.1 s
constexpr int kBusyMilliseconds = 1000;
// SQL functions called for each row of a change that must not be interrupted, and of an index that is being created.
constexpr char kCancelFunction[] = "dao_cancelled";
constexpr char kProceedFunction[] = "dao_proceed";
constexpr int kOperationsPerCheck = 10'000; // about 0.1 ms
constexpr int kConsultEveryMilliseconds = 100;
constexpr int kLongestWaitMilliseconds = 10 * 60 * 1000; // limit for waiting for other programs if the user can cancel
constexpr int kReportWaitingAfterMilliseconds = 300;
constexpr int kLongestSleepMilliseconds = 20;

/// The errno of the failed write. After a COMMIT sqlite3_system_errno() can be that of the following rollback; the file
/// control returns the last error of the file itself.
int systemError(sqlite3 *db)
{
    const int cause = sqlite3_system_errno(db);
    if (cause == ENOSPC || cause == EDQUOT || cause == EFBIG)
        return cause;
    int last = 0;
    sqlite3_file_control(db, "main", SQLITE_FCNTL_LAST_ERRNO, &last);
    return last != 0 ? last : cause;
}

bool isProtectedTable(const char *name)
{
    return name && (sqlite3_strnicmp(name, kSystemTablePrefix, int(std::strlen(kSystemTablePrefix))) == 0 ||
                    sqlite3_strnicmp(name, "sqlite_", 7) == 0);
}

} // namespace

struct ConnectionCallbacks
{
    // Authorizer: a user's statement may change rows of user tables and temporary tables and nothing else.
    static int authorize(void *self, int action, const char *table, const char *, const char *database, const char *)
    {
        if (!static_cast<Connection *>(self)->m_userText)
            return SQLITE_OK;
        const bool temporary = database && std::strcmp(database, "temp") == 0;
        switch (action) {
        case SQLITE_SELECT:
        case SQLITE_READ:
        case SQLITE_FUNCTION:
        case SQLITE_RECURSIVE:
            return SQLITE_OK;
        case SQLITE_INSERT:
        case SQLITE_UPDATE:
        case SQLITE_DELETE:
            return temporary || !isProtectedTable(table) ? SQLITE_OK : SQLITE_DENY;
        case SQLITE_CREATE_TEMP_TABLE:
        case SQLITE_CREATE_TEMP_INDEX:
        case SQLITE_DROP_TEMP_TABLE:
        case SQLITE_DROP_TEMP_INDEX:
            return SQLITE_OK;
        default:
            return SQLITE_DENY;
        }
    }

    // Progress handler, called every kOperationsPerCheck virtual machine operations. A result other than 0 interrupts
    // the statement. A change inside the program's transaction is not interrupted (see mustPollForCancel()).
    static int look(void *self)
    {
        auto *connection = static_cast<Connection *>(self);
        if (connection->m_progress && !connection->m_cancelRequested &&
            connection->m_sinceConsulted.hasExpired(kConsultEveryMilliseconds))
            connection->consult(false);
        const bool mayInterrupt = !connection->m_writing || !connection->m_programTransaction;
        return connection->m_cancelRequested && mayInterrupt ? 1 : 0;
    }

    static int busy(void *self, int calls) { return static_cast<Connection *>(self)->waitForOthers(calls) ? 1 : 0; }

    // Raises an error once the user cancels. A statement that fails is undone alone; an interrupted one would roll back
    // the whole transaction.
    template <int otherwise>
    static void ask(sqlite3_context *context, int, sqlite3_value **)
    {
        const auto *connection = static_cast<const Connection *>(sqlite3_user_data(context));
        if (connection->m_cancelRequested) {
            const QByteArray text = QString::fromUtf16(kCancelText).toUtf8();
            sqlite3_result_error(context, text.constData(), int(text.size()));
            return;
        }
        sqlite3_result_int(context, otherwise);
    }
};

Connection::~Connection()
{
    close();
}

sqlite3 *Connection::open(const QByteArray &name, int flags)
{
    sqlite3 *db = nullptr;
    // NOMUTEX: connections are used by one thread, so SQLite need not lock a mutex for each cell.
    const int result =
        sqlite3_open_v2(name.constData(), &db, flags | SQLITE_OPEN_EXRESCODE | SQLITE_OPEN_NOMUTEX, nullptr);
    if (result == SQLITE_OK)
        return db;
    EngineFailure failure;
    failure.extendedCode = result;
    failure.path = m_path;
    failure.source = m_source;
    failure.opening = true;
    sqlite3_close_v2(db);
    raise(failure);
}

void Connection::open(const QString &path, Mode mode)
{
    close();
    m_path = path;
    m_readOnlyFile = mode == Mode::ReadOnly;
    int flags = SQLITE_OPEN_READONLY;
    if (mode == Mode::ReadWrite)
        flags = SQLITE_OPEN_READWRITE;
    else if (mode == Mode::Create)
        flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE;
    m_db = open(path.toUtf8(), flags);
    setUp();
}

void Connection::openScratch()
{
    close();
    m_db = open(QByteArray(), SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
    run(u"PRAGMA journal_mode = MEMORY"_s);
    run(u"PRAGMA synchronous = OFF"_s);
}

void Connection::setUp()
{
    sqlite3_busy_handler(m_db, &ConnectionCallbacks::busy, this);
    sqlite3_db_config(m_db, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    // A file can come from anywhere: its schema must not call functions with side effects, and no statement may corrupt
    // the file or load code.
    sqlite3_db_config(m_db, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    // Without this SQLite treats an unknown name in double quotes as a text.
    sqlite3_db_config(m_db, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
    sqlite3_db_config(m_db, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
    sqlite3_db_config(m_db, SQLITE_DBCONFIG_ENABLE_LOAD_EXTENSION, 0, nullptr);
    // ATTACH could open other files.
    sqlite3_limit(m_db, SQLITE_LIMIT_ATTACHED, 0);
    sqlite3_set_authorizer(m_db, &ConnectionCallbacks::authorize, this);
    functions::registerAll(m_db);
    sqlite3_create_function_v2(m_db, kCancelFunction, 0, SQLITE_UTF8, this, &ConnectionCallbacks::ask<0>, nullptr,
                               nullptr, nullptr);
    // Declared deterministic because SQLite requires that of functions in the condition of a partial index.
    sqlite3_create_function_v2(m_db, kProceedFunction, 1, SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS, this,
                               &ConnectionCallbacks::ask<1>, nullptr, nullptr, nullptr);
    setProgress(m_progress);
    run(u"PRAGMA cache_size = -"_s + QString::number(kCacheKibibytes));
    run(u"PRAGMA foreign_keys = ON"_s);
    // Without recursive triggers REPLACE runs no delete triggers, and a cascade stops at the first table.
    run(u"PRAGMA recursive_triggers = ON"_s);
    run(u"PRAGMA synchronous = FULL"_s);
    // Without secure_delete large deletes take a third less time; deleted rows need not be overwritten on the disk.
    run(u"PRAGMA secure_delete = OFF"_s);
}

void Connection::close()
{
    releaseRead();
    while (!m_statements.empty())
        m_statements.back()->finish();
    sqlite3_close_v2(m_db);
    m_db = nullptr;
    m_schema = nullptr;
    m_programTransaction = m_transactionLost = m_cancelRequested = false;
}

void Connection::run(const QString &sql)
{
    Statement(*this, sql).run();
}

qint64 Connection::number(const QString &sql)
{
    Statement statement(*this, sql);
    return statement.step() ? statement.integer(0) : 0;
}

qint64 Connection::catalogVersion()
{
    if (!m_catalogVersion.isValid())
        m_catalogVersion = Statement(*this, u"PRAGMA user_version"_s);
    const qint64 version = m_catalogVersion.step() ? m_catalogVersion.integer(0) : 0;
    m_catalogVersion.reset();
    return version;
}

bool Connection::inTransaction() const
{
    return sqlite3_get_autocommit(m_db) == 0;
}

qint64 Connection::lastRowId() const
{
    return sqlite3_last_insert_rowid(m_db);
}

qint64 Connection::changes() const
{
    return sqlite3_changes64(m_db);
}

qint64 Connection::totalChanges() const
{
    return sqlite3_total_changes64(m_db);
}

void Connection::beginProgramTransaction(bool writing)
{
    if (writing)
        releaseRead();
    run(writing ? u"BEGIN IMMEDIATE"_s : u"BEGIN"_s);
    m_programTransaction = true;
    m_transactionLost = false;
}

void Connection::commitProgramTransaction()
{
    commit();
    m_programTransaction = false;
}

void Connection::commit()
{
    requireSameFile();
    if (m_thrownMeanwhile)
        throwStopped();
    m_committing = true;
    const auto ended = qScopeGuard([this] { m_committing = false; });
    run(u"COMMIT"_s);
}

// SQLite keeps writing to a file that was renamed or deleted; the result would be lost.
void Connection::requireSameFile() const
{
    int moved = 0;
    if (!m_path.isEmpty() && sqlite3_file_control(m_db, "main", SQLITE_FCNTL_HAS_MOVED, &moved) == SQLITE_OK && moved)
        throw movedError(m_source, m_path);
}

// Busy handler: returning true lets SQLite try again.
bool Connection::waitForOthers(int calls)
{
    // The page cache is full while another program reads: returning false keeps the changed pages in memory, and the
    // statement continues.
    if (!m_committing && inTransaction() && sqlite3_txn_state(m_db, "main") == SQLITE_TXN_WRITE)
        return false;
    if (calls == 0)
        m_waiting.start();
    const bool watched = m_progress && !m_consulting;
    if (m_cancelRequested || m_waiting.hasExpired(watched ? kLongestWaitMilliseconds : kBusyMilliseconds))
        return false;
    if (watched && m_sinceConsulted.hasExpired(kConsultEveryMilliseconds))
        consult(m_waiting.hasExpired(kReportWaitingAfterMilliseconds));
    // Waits 1, 2, ... up to 20 ms: short at first, because most locks are released within milliseconds.
    QThread::msleep(ulong(std::min(calls + 1, kLongestSleepMilliseconds)));
    return !m_cancelRequested;
}

// Called from within SQLite, through which nothing may be thrown.
void Connection::consult(bool isWaiting) noexcept
{
    // The progress object may process events, which must not run statements on this connection.
    m_consulting = true;
    try {
        if (isWaiting)
            m_progress->waiting();
        m_cancelRequested = m_progress->cancelled();
    } catch (...) {
        throwAfterwards(std::current_exception());
    }
    m_consulting = false;
    m_sinceConsulted.restart();
}

void Connection::throwAfterwards(std::exception_ptr thrown)
{
    m_thrownMeanwhile = std::move(thrown);
    m_cancelRequested = true;
}

void Connection::throwStopped()
{
    m_cancelRequested = false;
    if (m_thrownMeanwhile)
        std::rethrow_exception(std::exchange(m_thrownMeanwhile, nullptr));
    throw tarnwick::Cancelled();
}

void Connection::requireTransaction() const
{
    if (m_transactionLost)
        throw engineError(error::NoTransaction, m_source)
            .withHint(u"An earlier error has undone the whole transaction."_s);
}

void Connection::rollbackProgramTransaction()
{
    releaseRead();
    m_programTransaction = m_transactionLost = false;
    if (inTransaction())
        run(u"ROLLBACK"_s);
}

QString Connection::setSource(const QString &source)
{
    QString before = m_source;
    m_source = source;
    return before;
}

void Connection::setProgress(tarnwick::Progress *progress)
{
    m_progress = progress;
    m_cancelRequested = false;
    m_sinceConsulted.start();
    if (m_db)
        sqlite3_progress_handler(m_db, progress ? kOperationsPerCheck : 0, &ConnectionCallbacks::look, this);
}

void Connection::throwIfCancelled()
{
    if (m_cancelRequested || m_thrownMeanwhile)
        throwStopped();
}

void Connection::clearCancel()
{
    m_cancelRequested = false;
    if (m_thrownMeanwhile)
        throwStopped();
}

void Connection::holdRead()
{
    if (m_holding || inTransaction() || QThread::currentThread()->loopLevel() == 0)
        return;
    // A SELECT that stays on its row holds SQLite's shared lock.
    if (!m_hold.isValid())
        m_hold = Statement(*this, u"SELECT 1 FROM sqlite_schema"_s);
    if (!m_hold.step())
        return;
    m_holding = true;
    QMetaObject::invokeMethod(
        &m_context, [this] { releaseRead(); }, Qt::QueuedConnection);
}

void Connection::releaseRead()
{
    if (!m_holding)
        return;
    m_holding = false;
    m_hold.reset();
}

bool Connection::beforeStep(const Statement &statement)
{
    if (m_consulting)
        throw engineError(error::StatementRunning, m_source, {m_path});
    const bool writing = !statement.m_readOnly;
    if (writing)
        requireTransaction();
    // A function can run a statement inside another one, so an outer change stays marked as writing.
    return std::exchange(m_writing, m_writing || writing);
}

void Connection::afterFailure()
{
    // After a full disk or an I/O error SQLite can roll back the program's transaction. Statements after that would be
    // committed without the earlier ones.
    if (m_programTransaction && !inTransaction())
        m_transactionLost = true;
}

void Connection::fail(bool writing)
{
    EngineFailure failure;
    failure.extendedCode = sqlite3_extended_errcode(m_db);
    // The user cancelled the waiting for another program.
    if ((failure.extendedCode & 0xff) == SQLITE_BUSY && m_cancelRequested)
        throwStopped();
    failure.systemError = systemError(m_db);
    failure.text = QString::fromUtf8(sqlite3_errmsg(m_db));
    failure.path = m_path;
    failure.source = m_source;
    failure.opening = m_opening;
    failure.writing = writing;
    failure.schema = m_schema;
    try {
        raise(failure);
    } catch (const tarnwick::Cancelled &) {
        throwStopped();
    }
}

void Connection::adopt(Statement *statement)
{
    m_statements.push_back(statement);
}

void Connection::release(Statement *statement)
{
    std::erase(m_statements, statement);
}

void Connection::setCache(int kibibytes)
{
    const QByteArray sql = "PRAGMA cache_size = -" + QByteArray::number(kibibytes);
    sqlite3_exec(m_db, sql.constData(), nullptr, nullptr, nullptr);
}

void Connection::rewriteIndex(const QString &name, const QString &sql)
{
    // sqlite_schema is writable only with defensive mode off and writable_schema on.
    sqlite3_db_config(m_db, SQLITE_DBCONFIG_DEFENSIVE, 0, nullptr);
    const auto guardAgain = [this](Connection *) {
        sqlite3_exec(m_db, "PRAGMA writable_schema = RESET", nullptr, nullptr, nullptr);
        sqlite3_db_config(m_db, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    };
    const std::unique_ptr<Connection, decltype(guardAgain)> guard(this, guardAgain);
    run(u"PRAGMA writable_schema = ON"_s);
    Statement update(*this, u"UPDATE sqlite_schema SET sql = ?1 WHERE type = 'index' AND name = ?2"_s);
    update.bind(1, sql);
    update.bind(2, name);
    update.run();
}

SmallSorts::SmallSorts(Connection &connection)
    : m_connection(connection)
{
    m_connection.setCache(kSortingKibibytes);
}

SmallSorts::~SmallSorts()
{
    m_connection.setCache(kCacheKibibytes);
}

} // namespace dao::store
