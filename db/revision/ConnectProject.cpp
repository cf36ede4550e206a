#include "ConnectProject.h"

#include "JetConnection.h"
#include "LegacyImport.h"
#include "RevisionConversion.h"

#include <jet/JetReader.h>

namespace db {

namespace {

/// Brings what is open up to date. The conversion state goes on from what was asked before.
bool bringUpToDate(DatabaseSession &session, ConversionRequest &request, const ConnectContext &context)
{
    if (!isLegacyDatabase(session.database()))
        return reviseDatabase(session, request, context.project, context.progress);
    return context.project && importLegacyDatabase(session, *context.project, context.progress);
}

class ProjectDatabaseOpener : public DatabaseOpener
{
public:
    void open(DatabaseSession &session, const QString &path, const ConnectContext &context) override
    {
        if (jet::isJetFile(path)) {
            openJetFile(session, path, context, bringUpToDate);
            return;
        }
        session.open(path);
        resetConversion(session);
        ConversionRequest request(session, context.project,
                                  [&](const QString &backup) { session.database().backupTo(backup); });
        bringUpToDate(session, request, context);
        announceConversion(session);
    }
};

template <typename Connect>
bool withOpener(const ConnectContext &context, Connect connect)
{
    ProjectDatabaseOpener opener;
    ConnectContext own = context;
    own.opener = &opener;
    return connect(own);
}

} // namespace

bool connectProjectDatabase(DatabaseSession &session, const QString &path, const ConnectContext &context)
{
    return withOpener(context, [&](const ConnectContext &own) { return connectDatabase(session, path, own); });
}

bool connectProjectAtStart(DatabaseSession &session, const QStringList &recentDatabases, int formatYear,
                           const ConnectContext &context)
{
    return withOpener(
        context, [&](const ConnectContext &own) { return connectAtStart(session, recentDatabases, formatYear, own); });
}

} // namespace db
