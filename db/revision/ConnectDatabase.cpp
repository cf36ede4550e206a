#include "ConnectDatabase.h"

#include "JetConnection.h"
#include "LegacyImport.h"
#include "Messages.h"
#include "RevisionConversion.h"

#include <db/CreateDatabase.h>
#include <db/DamageCheck.h>
#include <db/Errors.h>
#include <db/TableGrowth.h>
#include <db/UnfinishedFile.h>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <tarnwick/FileWriter.h>
#include <tarnwick/Paths.h>

namespace db {

using namespace Qt::StringLiterals;
using tarnwick::SuitePath;

namespace {

QString pathBelowArvo(const QString &path, const ConnectContext &context)
{
    if (!context.project)
        return QDir::toNativeSeparators(path);
    return SuitePath::fromMachine(path, context.project->roots()).shown(u"arvo"_s);
}

bool samePath(const QString &one, const QString &other)
{
    return SuitePath(one).text().compare(SuitePath(other).text(), Qt::CaseInsensitive) == 0;
}

/// Warns that foreign tables were not imported. An import that failed has already reported it.
void reportNotImported(DatabaseSession &session, const ConnectContext &context)
{
    if (context.onlyReads || session.conversion.asked || !isLegacyDatabase(session.database()))
        return;
    if (!context.project)
        session.prompts().information(messages::kNotImported, u"no project is loaded."_s);
    else if (!context.importsForeign)
        session.prompts().information(messages::kNotImported, u"this was not asked for."_s);
    else if (!session.isUpdatable())
        session.prompts().information(messages::kNotImported, u"the database cannot be written to."_s);
}

/// Marker file beside a database in which damage was found after a crash. The journal that indicated the crash is gone
/// by then; without the marker the next connection would write into the damaged file.
QString damageMark(const QString &path)
{
    return path + u".damaged"_s;
}

void setDamageMark(DatabaseSession &session, const QString &path)
{
    const auto write = [&] {
        tarnwick::writeFileAtomically(damageMark(path),
                                      "Damage was found in this database. It is opened for reading only "
                                      "until a connection finds none.\n");
    };
    tarnwick::attempt(session.prompts(), write, {0, u""});
}

/// If a program is killed before it has changed the file, its journal is empty or begins with a zero; there is nothing
/// to roll back.
bool isUnused(const QString &journal)
{
    QFile file(journal);
    char first = 0;
    return file.open(QIODevice::ReadOnly) && (file.read(&first, 1) == 0 || first == 0);
}

/// Without this it would stay until the next change of the file.
void removeUnusedJournal(DatabaseSession &session, const QString &journal)
{
    if (!isUnused(journal))
        return;
    try {
        // As long as this transaction lives, no other program begins a journal.
        const dao::Transaction transaction(session.workspace());
        if (isUnused(journal))
            QFile::remove(journal);
    } catch (const dao::DaoException &) {
        // It belongs to another program that is at work.
    }
}

/// Brings the open database up to date. The conversion state continues from earlier questions.
bool bringUpToDate(DatabaseSession &session, ConversionRequest &request, const ConnectContext &context)
{
    if (isLegacyDatabase(session.database())) {
        if (!context.project || !context.importsForeign)
            return false;
        if (importLegacyDatabase(session, *context.project, context.progress))
            return true;
        if (isLegacyDatabase(session.database()))
            return false;
        // While this program waited to write, another one has done it.
        session.prompts().status(messages::kImportedElsewhere);
    }
    return reviseDatabase(session, request, context.project, context.progress);
}

void openDatabase(DatabaseSession &session, const QString &path, const ConnectContext &context)
{
    resetConversion(session);
    if (openJetFile(session, path, context, bringUpToDate))
        return;
    // An interrupted change is rolled back whenever the file is opened.
    const bool mustUndo = QFileInfo::exists(path + u"-journal");
    const bool isOutOfProject = context.project && leadsOutOfProject(path, *context.project);
    const bool mayWrite = (!context.onlyReads || mustUndo) && hasRoomForJournal(path) && !isOutOfProject;
    session.open(path, mayWrite ? dao::OpenMode::Update : dao::OpenMode::ReadOnly, context.progress);
    // If the journal is still there, it had nothing to roll back or belongs to another program that is running.
    const bool wasUndone = mustUndo && !QFileInfo::exists(path + u"-journal");
    if (mustUndo && !wasUndone && session.isUpdatable())
        removeUnusedJournal(session, path + u"-journal"_s);
    const bool isMarked = !context.onlyReads && QFileInfo::exists(damageMark(path));
    if ((wasUndone || isMarked) &&
        !refuseDamaged(session, QString::fromUtf16(messages::kReadOnlyAsDamaged.text), context.progress)) {
        setDamageMark(session, path);
        session.open(path, dao::OpenMode::ReadOnly, context.progress);
        return;
    }
    if (isMarked) // a backup was restored in its place
        QFile::remove(damageMark(path));
    if (context.onlyReads)
        return;
    if (isOutOfProject)
        session.prompts().information(messages::kLinkedDatabase, QDir::toNativeSeparators(path),
                                      QDir::toNativeSeparators(QFileInfo(path).symLinkTarget()));
    ConversionRequest request(session, context.project, [&](const std::function<void(QByteArrayView)> &take) {
        session.database().readFile(take);
    });
    // If the conversion was declined or failed, the file is not written to, not even to store statistics.
    if (bringUpToDate(session, request, context) && session.conversion.asked == session.conversion.approved)
        completeStatistics(session.database());
    announceConversion(session);
}

} // namespace

bool connectDatabase(DatabaseSession &session, const QString &path, const ConnectContext &context)
{
    if (path.isEmpty())
        return false;
    const auto connect = [&] {
        session.close();
        openDatabase(session, path, context);
        reportNotImported(session, context);
        if (context.listener)
            context.listener->databaseConnected(path);
        session.prompts().status(messages::kConnectedStatus, pathBelowArvo(path, context));
        if (session.conversion.cancelled)
            session.prompts().status(messages::kConversionCancelled);
        else if (session.conversion.refreshCancelled)
            session.prompts().status(messages::kRefreshCancelled);
    };
    const tarnwick::Outcome outcome = attemptCancellable(session.prompts(), connect, messages::kConnectDatabase);
    if (outcome == tarnwick::Outcome::Done)
        return true;
    if (outcome == tarnwick::Outcome::Cancelled)
        session.prompts().status(messages::kConnectCancelled);
    session.close();
    return false;
}

bool createProjectDatabase(tarnwick::UserPrompts &prompts, const brannock::Project &project, int formatYear)
{
    const QString path = project.databasePath();
    QDir().mkpath(QFileInfo(path).path()); // if the folder cannot be made, creating the file reports the reason
    return createDatabase(prompts, path, formatYear);
}

bool connectAtStart(DatabaseSession &session, const QStringList &recentDatabases, int formatYear,
                    const ConnectContext &context)
{
    const QString standard = context.project->databasePath();
    bool standardTried = false;
    if (!recentDatabases.isEmpty()) {
        const QString recent = context.project->pathOf(recentDatabases.first());
        if (!samePath(recent, standard) || QFileInfo::exists(recent)) {
            connectDatabase(session, recent, context);
            standardTried = samePath(recent, standard);
        }
    }
    // If the user cancelled the wait for a lock, no other database is opened instead.
    if (!session.isOpen() && context.progress && context.progress->cancelled())
        return false;
    if (!session.isOpen() && !standardTried && QFileInfo::exists(standard))
        connectDatabase(session, standard, context);
    if (session.isOpen())
        return true;
    // The file exists but could not be opened; this was reported above, and the file is left unchanged.
    if (QFileInfo::exists(standard))
        return false;
    if (!createProjectDatabase(session.prompts(), *context.project, formatYear))
        return false;
    if (!connectDatabase(session, standard, context))
        return false;
    session.prompts().status(messages::kCreatedStatus, standard);
    return true;
}

} // namespace db
