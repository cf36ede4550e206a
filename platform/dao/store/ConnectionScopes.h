#pragma once
#include "Connection.h"

namespace dao::store {

/// A savepoint; the destructor undoes its changes unless release() was called. Outside of a transaction it is a
/// transaction of its own.
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

/// While it exists, CHECK constraints are not evaluated: for rows that were checked before or that must be stored
/// unchanged.
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

/// While it exists, errors name this object as their source.
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
