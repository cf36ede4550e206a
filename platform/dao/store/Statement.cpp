#include "Statement.h"

#include "Connection.h"
#include "ErrorTranslation.h"

#include <cstring>
#include <optional>
#include <QScopeGuard>
#include <sqlite3.h>
#include <utility>

namespace dao::store {

namespace {

/// True if SQLite's plan sorts with a temporary B-tree instead of reading an index in order.
bool sorts(sqlite3 *db, const QByteArray &text)
{
    sqlite3_stmt *explain = nullptr;
    // SQLite's plan names a temporary B-tree for ORDER BY, GROUP BY and DISTINCT.
    const QByteArray question = "EXPLAIN QUERY PLAN " + text;
    bool found = false;
    if (sqlite3_prepare_v2(db, question.constData(), int(question.size()) + 1, &explain, nullptr) == SQLITE_OK) {
        while (!found && sqlite3_step(explain) == SQLITE_ROW) {
            const auto *step = reinterpret_cast<const char *>(sqlite3_column_text(explain, 3));
            found = step && std::strstr(step, "TEMP B-TREE");
        }
    }
    sqlite3_finalize(explain);
    return found;
}

} // namespace

Statement::Statement(Connection &connection, const QString &sql, Access access)
    : m_connection(&connection)
{
    if (!connection.isOpen() || connection.m_consulting)
        throw engineError(connection.isOpen() ? error::StatementRunning : error::ObjectInvalid, connection.m_source,
                          connection.isOpen() ? QStringList{connection.m_path} : QStringList{});
    // SQLite calls the authorizer while it prepares a statement, not while it runs.
    connection.m_userText = access == Access::User;
    const QByteArray text = sql.toUtf8();
    // The length includes the terminating NUL, which saves SQLite a copy of the text.
    const int result = sqlite3_prepare_v3(connection.m_db, text.constData(), int(text.size()) + 1,
                                          SQLITE_PREPARE_PERSISTENT, &m_statement, nullptr);
    connection.m_userText = false;
    if (result != SQLITE_OK)
        connection.fail(false);
    m_readOnly = sqlite3_stmt_readonly(m_statement) != 0;
    m_sorts = m_readOnly && access == Access::User && connection.m_progress && sorts(connection.m_db, text);
    connection.adopt(this);
}

Statement::~Statement()
{
    finish();
}

Statement::Statement(Statement &&other) noexcept
{
    *this = std::move(other);
}

Statement &Statement::operator=(Statement &&other) noexcept
{
    if (this == &other)
        return *this;
    finish();
    m_connection = other.m_connection;
    m_statement = std::exchange(other.m_statement, nullptr);
    m_readOnly = other.m_readOnly;
    m_onRow = std::exchange(other.m_onRow, false);
    m_started = std::exchange(other.m_started, false);
    m_sorts = other.m_sorts;
    if (m_statement) {
        m_connection->release(&other);
        m_connection->adopt(this);
    }
    return *this;
}

// Called when the statement is destroyed and when its connection is closed.
void Statement::finish()
{
    if (!m_statement)
        return;
    m_connection->release(this);
    sqlite3_finalize(std::exchange(m_statement, nullptr));
}

void Statement::requireOpen() const
{
    if (!m_statement)
        throw engineError(error::ObjectInvalid, m_connection ? m_connection->m_source : QStringLiteral("DAO.Database"));
}

void Statement::check(int result) const
{
    if (result != SQLITE_OK)
        m_connection->fail(isChange());
}

bool Statement::isChange() const
{
    // COMMIT writes to the file, although sqlite3_stmt_readonly() reports it as read-only.
    return !m_readOnly || sqlite3_column_count(m_statement) == 0;
}

int Statement::parameterCount() const
{
    requireOpen();
    return sqlite3_bind_parameter_count(m_statement);
}

int Statement::columnCount() const
{
    requireOpen();
    return sqlite3_column_count(m_statement);
}

QString Statement::columnName(int column) const
{
    requireOpen();
    return QString::fromUtf8(sqlite3_column_name(m_statement, column));
}

void Statement::bindNull(int parameter)
{
    requireOpen();
    check(sqlite3_bind_null(m_statement, parameter));
}

void Statement::bind(int parameter, qint64 value)
{
    requireOpen();
    check(sqlite3_bind_int64(m_statement, parameter, value));
}

void Statement::bind(int parameter, double value)
{
    requireOpen();
    check(sqlite3_bind_double(m_statement, parameter, value));
}

// SQLITE_TRANSIENT: SQLite copies the bytes, which exist only during this call.
void Statement::bind(int parameter, const QString &text)
{
    requireOpen();
    const QByteArray utf8 = text.toUtf8();
    check(sqlite3_bind_text64(m_statement, parameter, utf8.constData(), sqlite3_uint64(utf8.size()), SQLITE_TRANSIENT,
                              SQLITE_UTF8));
}

void Statement::bind(int parameter, const QByteArray &bytes)
{
    requireOpen();
    check(
        sqlite3_bind_blob64(m_statement, parameter, bytes.constData(), sqlite3_uint64(bytes.size()), SQLITE_TRANSIENT));
}

void Statement::bindUtf8(int parameter, const char *text, qsizetype length)
{
    requireOpen();
    check(sqlite3_bind_text64(m_statement, parameter, text, sqlite3_uint64(length), SQLITE_STATIC, SQLITE_UTF8));
}

void Statement::bindBytes(int parameter, const char *bytes, qsizetype length)
{
    requireOpen();
    check(sqlite3_bind_blob64(m_statement, parameter, bytes, sqlite3_uint64(length), SQLITE_STATIC));
}

// Copies the stored value without conversion, whatever its storage class.
void Statement::bindColumn(int parameter, const Statement &from, int column)
{
    requireOpen();
    from.requireOpen();
    check(sqlite3_bind_value(m_statement, parameter, sqlite3_column_value(from.m_statement, column)));
}

// A failed statement is reset at once, so that it holds no lock.
bool Statement::step()
{
    requireOpen();
    // SQLite sorts all rows before it returns the first one, so the small cache is only needed for the first step.
    std::optional<SmallSorts> small;
    if (m_sorts && !m_started)
        small.emplace(*m_connection);
    m_started = true;
    const bool writingBefore = m_connection->beforeStep(*this);
    const int result = sqlite3_step(m_statement);
    m_connection->m_writing = writingBefore;
    if (result == SQLITE_ROW) {
        m_onRow = true;
        return true;
    }
    m_onRow = false;
    if (result == SQLITE_DONE)
        return false;
    m_connection->afterFailure();
    const auto reset = qScopeGuard([this] {
        m_started = false;
        sqlite3_reset(m_statement);
    });
    m_connection->fail(isChange());
}

void Statement::reset()
{
    if (!m_statement)
        return;
    m_onRow = false;
    m_started = false;
    sqlite3_reset(m_statement);
}

void Statement::run()
{
    while (step()) {
    }
    reset();
}

Statement::Storage Statement::storage(int column) const
{
    return Storage(sqlite3_column_type(m_statement, column));
}

qint64 Statement::integer(int column) const
{
    return sqlite3_column_int64(m_statement, column);
}

double Statement::real(int column) const
{
    return sqlite3_column_double(m_statement, column);
}

// Columns repeat few texts, so equal ones share one QString (see TextPool).
QString Statement::text(int column) const
{
    const auto *utf8 = reinterpret_cast<const char *>(sqlite3_column_text(m_statement, column));
    return m_connection->m_texts.text(utf8, sqlite3_column_bytes(m_statement, column));
}

QByteArray Statement::bytes(int column) const
{
    const auto *data = static_cast<const char *>(sqlite3_column_blob(m_statement, column));
    return QByteArray(data, sqlite3_column_bytes(m_statement, column));
}

qint64 copyRows(Statement &from, Connection &to, const QString &table, const QStringList &places,
                const std::function<void(qint64)> &copied)
{
    const int columns = from.columnCount();
    const QStringList terms = places.isEmpty() ? QStringList(columns, QStringLiteral("?")) : places;
    Statement insert(to, u"INSERT INTO " + table + u" VALUES (" + terms.join(u", ") + u')');
    qint64 rows = 0;
    for (bool onRow = from.isOnRow() || from.step(); onRow; onRow = from.step()) {
        for (int i = 0; i < columns; ++i)
            insert.bindColumn(i + 1, from, i);
        insert.run();
        ++rows;
        if (copied)
            copied(rows);
    }
    return rows;
}

} // namespace dao::store
