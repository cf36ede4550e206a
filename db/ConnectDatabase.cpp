#include "ConnectDatabase.h"

#include "Errors.h"
#include "Messages.h"
#include "TableGrowth.h"
#include "Views.h"

#include <QDir>
#include <QFileInfo>
#include <tarnwick/Paths.h>

namespace db {

using namespace Qt::StringLiterals;
using tarnwick::SuitePath;

namespace {

QString pathBelowArvo(const QString &path, const ConnectContext &context)
{
    if (!context.project)
        return QDir::toNativeSeparators(path);
    return SuitePath::fromMachine(path, context.project->roots()).relativeTo(u"arvo"_s);
}

bool samePath(const QString &one, const QString &other)
{
    return SuitePath(one).text().compare(SuitePath(other).text(), Qt::CaseInsensitive) == 0;
}

} // namespace

bool isLegacyDatabase(const dao::Database &database)
{
    return database.hasTable(u"EXAMDATA") && !database.hasTable(u"report");
}

namespace {

/// The views and labels every connection finds in place. A database that cannot be updated stays as it is.
void bringUpToDate(DatabaseSession &session, const ConnectContext &context)
{
    if (!session.isUpdatable() || isLegacyDatabase(session.database()))
        return;
    refreshViews(session);
    if (context.project)
        refreshAliases(session, context.project->steamGen);
}

} // namespace

bool connectDatabase(DatabaseSession &session, const QString &path, const ConnectContext &context)
{
    if (path.isEmpty())
        return false;
    try {
        session.close();
        if (context.opener) {
            context.opener->open(session, path, context);
        } else {
            session.open(path);
            bringUpToDate(session, context);
        }
        if (session.isUpdatable())
            completeStatistics(session.database());
        if (context.listener)
            context.listener->databaseConnected(path);
        session.prompts().status(messages::kConnectedStatus, pathBelowArvo(path, context));
        return true;
    } catch (const dao::DaoException &exception) {
        showDaoError(session.prompts(), exception, messages::kConnectDatabase);
    } catch (const dao::DaoCancelled &) {
        session.prompts().status(messages::kConnectCancelled);
    } catch (const tarnwick::Cancelled &) {
        session.prompts().status(messages::kConnectCancelled);
    }
    session.close();
    return false;
}

bool connectAtStart(DatabaseSession &session, const QStringList &recentDatabases, int formatYear,
                    const ConnectContext &context)
{
    const QString standard = context.project->databasePath();
    bool standardTried = false;
    if (!recentDatabases.isEmpty()) {
        const QString recent = context.project->pathOf(recentDatabases.first());
        if (!samePath(recent, standard) || QFileInfo::exists(standard)) {
            connectDatabase(session, recent, context);
            standardTried = samePath(recent, standard);
        }
    }
    if (!session.isOpen() && !standardTried && QFileInfo::exists(standard))
        connectDatabase(session, standard, context);
    if (session.isOpen())
        return true;
    // A file that is there but could not be connected was reported just now, and stays as it is.
    if (QFileInfo::exists(standard) || !createDatabase(session.prompts(), standard, formatYear))
        return false;
    if (!connectDatabase(session, standard, context))
        return false;
    session.prompts().status(messages::kCreatedStatus, standard);
    return true;
}

} // namespace db
