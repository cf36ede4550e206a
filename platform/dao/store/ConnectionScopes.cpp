#include "ConnectionScopes.h"

using namespace Qt::StringLiterals;

namespace dao::store {

// BEGIN IMMEDIATE takes the write lock at once. With a plain BEGIN another program could write between the first read
// and the first change, and the change would fail.
Savepoint::Savepoint(Connection &connection)
    : m_connection(connection)
    , m_outermost(!connection.inTransaction())
{
    m_connection.run(m_outermost ? u"BEGIN IMMEDIATE"_s : u"SAVEPOINT dao_statement"_s);
}

Savepoint::~Savepoint()
{
    if (!m_open || !m_connection.isOpen() || !m_connection.inTransaction())
        return;
    try {
        if (m_outermost) {
            m_connection.run(u"ROLLBACK"_s);
        } else {
            m_connection.run(u"ROLLBACK TO dao_statement"_s);
            m_connection.run(u"RELEASE dao_statement"_s);
        }
    } catch (const std::exception &) {
        // The original error must be reported, not this one.
    }
}

void Savepoint::release()
{
    if (m_outermost)
        m_connection.commit();
    else
        m_connection.run(u"RELEASE dao_statement"_s);
    m_open = false;
}

UncheckedWrites::UncheckedWrites(Connection &connection)
    : m_connection(connection)
{
    m_connection.run(u"PRAGMA ignore_check_constraints = ON"_s);
}

UncheckedWrites::~UncheckedWrites()
{
    try {
        if (m_connection.isOpen())
            m_connection.run(u"PRAGMA ignore_check_constraints = OFF"_s);
    } catch (const std::exception &) {
        // If even this fails, the connection cannot write any more.
    }
}

} // namespace dao::store
