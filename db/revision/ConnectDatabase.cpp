#include "ConnectDatabase.h"

#include "JetConnection.h"
#include "LegacyImport.h"
#include "Messages.h"
#include "RevisionConversion.h"

#include <db/CreateDatabase.h>
#include <db/Errors.h>
#include <db/TableGrowth.h>
#include <db/UnfinishedFile.h>
#include <jet/JetReader.h>
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

/// Brings what is open up to date. The conversion state goes on from what was asked before.
bool bringUpToDate(DatabaseSession &session, ConversionRequest &request, const ConnectContext &context)
{
    if (isLegacyDatabase(session.database()))
        return context.project && importLegacyDatabase(session, *context.project, context.progress);
    return reviseDatabase(session, request, context.project, context.progress);
}

void openDatabase(DatabaseSession &session, const QString &path, const ConnectContext &context)
{
    resetConversion(session);
    if (jet::isJetFile(path)) {
        openJetFile(session, path, context, bringUpToDate);
        return;
    }
    session.open(path, hasRoomForJournal(path) ? dao::OpenMode::Update : dao::OpenMode::ReadOnly);
    ConversionRequest request(session, context.project,
                              [&](const QString &backup) { session.database().backupTo(backup); });
    bringUpToDate(session, request, context);
    announceConversion(session);
}

} // namespace

bool connectDatabase(DatabaseSession &session, const QString &path, const ConnectContext &context)
{
    if (path.isEmpty())
        return false;
    try {
        session.close();
        openDatabase(session, path, context);
        if (session.isOpen() && session.isUpdatable())
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
    // Who did not want to wait gets no other database in place of that one.
    if (!session.isOpen() && context.progress && context.progress->cancelled())
        return false;
    if (!session.isOpen() && !standardTried && QFileInfo::exists(standard))
        connectDatabase(session, standard, context);
    if (session.isOpen())
        return true;
    // A file that is there but could not be connected was reported just now, and stays as it is.
    if (QFileInfo::exists(standard))
        return false;
    QDir(context.project->folder).mkpath(u"arvo"_s); // creating the file says why when there is no such folder
    if (!createDatabase(session.prompts(), standard, formatYear))
        return false;
    if (!connectDatabase(session, standard, context))
        return false;
    session.prompts().status(messages::kCreatedStatus, standard);
    return true;
}

} // namespace db
