#pragma once
#include <functional>
#include <QByteArray>
#include <QString>
#include <QStringList>

struct sqlite3_stmt;

namespace dao::store {

class Connection;

/// The origin of a statement's text. A user's statement may change no system table and define nothing.
enum class Access { Engine, User };

/// A prepared statement of SQLite. Parameters count from 1, columns from 0. Errors are thrown as DaoException. After
/// its connection was closed a statement throws 3420.
class Statement
{
public:
    /// The storage class of a value, independent of the column's declared type.
    enum class Storage { Integer = 1, Real = 2, Text = 3, Blob = 4, Null = 5 };

    Statement() = default;
    Statement(Connection &connection, const QString &sql, Access access = Access::Engine);
    ~Statement();
    Statement(Statement &&other) noexcept;
    Statement &operator=(Statement &&other) noexcept;

    bool isValid() const { return m_statement != nullptr; }
    bool isReadOnly() const { return m_readOnly; }
    bool isOnRow() const { return m_onRow; }
    int parameterCount() const;
    int columnCount() const;
    QString columnName(int column) const;

    void bindNull(int parameter);
    void bind(int parameter, qint64 value);
    void bind(int parameter, double value);
    void bind(int parameter, const QString &text);
    void bind(int parameter, const QByteArray &bytes);
    /// Binds UTF-8 without copying; it must stay valid until the statement is reset.
    void bindUtf8(int parameter, const char *text, qsizetype length);
    /// Binds bytes without copying; they must stay valid until the statement is reset.
    void bindBytes(int parameter, const char *bytes, qsizetype length);
    /// Binds a column of another statement's current row as stored. That statement may belong to another connection.
    void bindColumn(int parameter, const Statement &from, int column);

    /// Moves to the next row; returns false at the end.
    bool step();
    void reset();
    /// Runs to the end, ignores rows, and resets.
    void run();

    Storage storage(int column) const;
    qint64 integer(int column) const;
    double real(int column) const;
    QString text(int column) const;
    QByteArray bytes(int column) const;

private:
    friend class Connection;
    void requireOpen() const;
    void check(int result) const;
    bool isChange() const;
    void finish();

    Connection *m_connection = nullptr;
    sqlite3_stmt *m_statement = nullptr;
    bool m_readOnly = true;
    bool m_onRow = false;
    bool m_started = false;
    bool m_sorts = false; ///< a user's SELECT that sorts and can be cancelled
};

/// Copies the current row of a statement, if there is one, and all following rows to a table with the same number of
/// columns; values are stored unchanged. The table name is quoted. places, if given, are the terms of VALUES. copied is
/// called after each row. Returns the number of rows.
qint64 copyRows(Statement &from, Connection &to, const QString &table, const QStringList &places = {},
                const std::function<void(qint64 rows)> &copied = {});

} // namespace dao::store
