#pragma once
#include <QByteArray>
#include <QString>
#include <QStringList>

struct sqlite3_stmt;

namespace dao::store {

class Connection;

/// Whose text a statement runs: that of users may change no system table and define nothing.
enum class Access { Engine, User };

/// A prepared statement of the inner engine. Parameters count from 1, columns from 0. Every failure is thrown as the
/// engine's own DaoException. A statement whose connection was closed throws 3420 from then on.
class Statement
{
public:
    /// How a value is stored, whatever the column says.
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
    /// UTF-8 that stays where it is until the statement is reset; nothing is copied.
    void bindUtf8(int parameter, const char *text, qsizetype length);
    /// Bytes that stay where they are until the statement is reset.
    void bindBytes(int parameter, const char *bytes, qsizetype length);
    /// A column of another statement's current row, as it is stored; that statement may be of another connection.
    void bindColumn(int parameter, const Statement &from, int column);

    /// True while there is a row.
    bool step();
    void reset();
    /// Runs to the end, dropping rows, and resets.
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
    bool m_sorts = false; ///< reading, a user's, and one who may want to stop it
};

/// Adds the rows that a statement is to give, or still has to give when it stands on one, to a table of as many
/// columns, each value as it is stored. The table's name is quoted; places, when given, are the terms of VALUES.
/// Returns how many.
qint64 copyRows(Statement &from, Connection &to, const QString &table, const QStringList &places = {});

} // namespace dao::store
