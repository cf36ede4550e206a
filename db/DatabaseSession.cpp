#include "DatabaseSession.h"

#include "Errors.h"
#include "Messages.h"

#include <dao/ProgressScope.h>
#include <tarnwick/Format.h>

namespace db {

QStringList ConversionState::done() const
{
    QStringList steps = requested;
    for (const QString &step : failed)
        steps.removeOne(step);
    return steps;
}

QString ConversionState::numbered(const QStringList &steps)
{
    QString list;
    for (qsizetype i = 0; i < steps.size(); ++i)
        list += tarnwick::format(u"    %d) %S\n", i + 1, steps[i]);
    return list;
}

DatabaseSession::DatabaseSession(tarnwick::UserPrompts &prompts)
    : m_prompts(&prompts)
    , m_workspace(std::make_unique<dao::Workspace>())
{
}

DatabaseSession::~DatabaseSession() = default;

bool DatabaseSession::isOpen() const
{
    return m_database && m_database->isOpen();
}

bool DatabaseSession::isUpdatable() const
{
    return isOpen() && m_database->isUpdatable();
}

QString DatabaseSession::path() const
{
    if (!isOpen())
        return {};
    return m_copiedPath.isEmpty() ? m_database->name() : m_copiedPath;
}

void DatabaseSession::open(const QString &path, dao::OpenMode mode, tarnwick::Progress *progress)
{
    close();
    auto database = std::make_unique<dao::Database>(*m_workspace);
    {
        const dao::ProgressScope stoppable(*database, progress);
        database->open(path, mode);
    }
    m_database = std::move(database);
}

void DatabaseSession::openCopy(const QString &path, const QString &copy, dao::OpenMode mode,
                               std::shared_ptr<void> keeper)
{
    open(copy, mode);
    m_copiedPath = path;
    m_copyKeeper = std::move(keeper);
}

void DatabaseSession::close()
{
    if (!m_database)
        return;
    while (m_workspace->transactionDepth() > 0)
        m_workspace->rollback();
    m_database->close();
    m_database.reset();
    m_copiedPath.clear();
    m_copyKeeper.reset();
}

bool checkConnected(DatabaseSession &session)
{
    if (session.isOpen())
        return true;
    session.prompts().error(messages::kConnectFirst);
    return false;
}

namespace {

template <typename Operation>
bool onWorkspace(DatabaseSession &session, bool rethrow, const tarnwick::Message &message, Operation operation)
{
    const auto run = [&] { operation(session.workspace()); };
    if (!rethrow)
        return tarnwick::attempt(session.prompts(), run, message);
    run();
    return true;
}

} // namespace

bool beginTrans(DatabaseSession &session, bool rethrow, Begin begin)
{
    return onWorkspace(session, rethrow, messages::kBeginTransaction,
                       [begin](dao::Workspace &workspace) { workspace.beginTrans(begin); });
}

bool commitTrans(DatabaseSession &session, bool rethrow)
{
    return onWorkspace(session, rethrow, messages::kCommitTransaction,
                       [](dao::Workspace &workspace) { workspace.commitTrans(); });
}

bool rollbackTrans(DatabaseSession &session, bool rethrow)
{
    return onWorkspace(session, rethrow, messages::kRollbackTransaction,
                       [](dao::Workspace &workspace) { workspace.rollback(); });
}

} // namespace db
