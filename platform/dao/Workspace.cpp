#include "DatabaseImpl.h"

#include <dao/store/ErrorTranslation.h>

using namespace Qt::StringLiterals;

namespace dao {

namespace {

constexpr int kDeepestNesting = 5;
const QString kSource = u"DAO.Workspace"_s;

QString savepointName(int level)
{
    return u"dao_level_%1"_s.arg(level);
}

void beginLevel(DatabaseImpl &database, int level, Workspace::Begin kind = Workspace::Begin::AsNeeded)
{
    if (level == 0)
        database.connection.beginProgramTransaction(kind == Workspace::Begin::Writing);
    else
        database.connection.run(u"SAVEPOINT "_s + savepointName(level));
}

void rollbackLevel(DatabaseImpl &database, int level)
{
    database.secureReaders();
    if (level == 0) {
        database.connection.rollbackProgramTransaction();
    } else if (database.connection.inTransaction()) {
        database.connection.run(u"ROLLBACK TO "_s + savepointName(level));
        database.connection.run(u"RELEASE "_s + savepointName(level));
    }
    database.rolledBack();
}

} // namespace

void Workspace::Impl::begin(Workspace::Begin kind)
{
    if (depth >= kDeepestNesting)
        throw store::engineError(error::TooManyTransactions, kSource);
    size_t begun = 0;
    try {
        for (; begun < databases.size(); ++begun) {
            store::SourceScope scope(databases[begun]->connection, kSource);
            beginLevel(*databases[begun], depth, kind);
        }
    } catch (...) {
        while (begun > 0)
            rollbackLevel(*databases[--begun], depth);
        throw;
    }
    ++depth;
}

void Workspace::Impl::commit()
{
    if (depth == 0)
        throw store::engineError(error::NoTransaction, kSource);
    const int level = depth - 1;
    for (DatabaseImpl *database : databases) {
        store::SourceScope scope(database->connection, kSource);
        database->connection.requireTransaction();
        if (level > 0)
            database->connection.run(u"RELEASE "_s + savepointName(level));
        else if (database->connection.inProgramTransaction())
            database->connection.commitProgramTransaction();
    }
    depth = level;
}

void Workspace::Impl::rollback()
{
    if (depth == 0)
        throw store::engineError(error::NoTransaction, kSource);
    --depth;
    for (DatabaseImpl *database : databases) {
        store::SourceScope scope(database->connection, kSource);
        rollbackLevel(*database, depth);
    }
}

void Workspace::Impl::join(DatabaseImpl &database)
{
    for (int level = 0; level < depth; ++level)
        beginLevel(database, level);
    databases.push_back(&database);
}

Workspace::Workspace()
    : m_impl(std::make_shared<Impl>())
{
}

Workspace::~Workspace()
{
    try {
        while (m_impl->depth > 0)
            m_impl->rollback();
    } catch (const std::exception &) {
        // A destructor must not throw. Closing the files rolls back what is still open.
    }
}

void Workspace::beginTrans(Begin begin)
{
    m_impl->begin(begin);
}

void Workspace::commitTrans()
{
    m_impl->commit();
}

void Workspace::rollback()
{
    m_impl->rollback();
}

int Workspace::transactionDepth() const
{
    return m_impl->depth;
}

Transaction::~Transaction()
{
    if (!m_workspace)
        return;
    try {
        m_workspace->rollback();
    } catch (const std::exception &) {
        // The transaction is left by an exception, which is more useful to the caller than this failure.
    }
}

void Transaction::commit()
{
    m_workspace->commitTrans();
    m_workspace = nullptr;
}

void Transaction::rollback()
{
    Workspace *workspace = std::exchange(m_workspace, nullptr);
    workspace->rollback();
}

} // namespace dao
