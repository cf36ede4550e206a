#include "ConversionRequest.h"

#include "Messages.h"

#include <db/Errors.h>
#include <QDir>
#include <QFileInfo>

namespace db {

using namespace Qt::StringLiterals;
using tarnwick::Answer;
using tarnwick::Buttons;
using tarnwick::SuitePath;

ConversionRequest::ConversionRequest(DatabaseSession &session, const brannock::Project *project, Backup backup)
    : m_session(&session)
    , m_project(project)
    , m_backup(std::move(backup))
{
}

bool ConversionRequest::isInProject() const
{
    if (!m_project)
        return false;
    const auto below = [](const QString &path, const QString &folder) {
        return SuitePath(path).isBelow(SuitePath(folder).text() + u"\\arvo"_s);
    };
    const QString path = QDir::cleanPath(QFileInfo(m_session->path()).absoluteFilePath());
    const QString folder = QDir::cleanPath(QFileInfo(m_project->folder).absoluteFilePath());
    return below(path, folder) || below(QFileInfo(path).canonicalFilePath(), QFileInfo(folder).canonicalFilePath());
}

QString ConversionRequest::backupPath(const QString &databasePath)
{
    const QFileInfo file(databasePath);
    // A backup that was opened as a database must not be its own backup.
    const bool isBackup = file.suffix().compare(u"_db", Qt::CaseInsensitive) == 0;
    return QDir(file.absolutePath()).filePath((isBackup ? file.fileName() : file.completeBaseName()) + u"._db"_s);
}

bool ConversionRequest::request(const QString &description)
{
    ConversionState &state = m_session->conversion;
    state.list += tarnwick::format(messages::kStepLine.text, ++state.steps, description);
    if (!state.asked) {
        state.asked = true;
        state.approved = ask();
    }
    return state.approved;
}

bool ConversionRequest::ask()
{
    tarnwick::UserPrompts &prompts = m_session->prompts();
    const QString path = m_session->path();
    const QString shown = QDir::toNativeSeparators(path);
    if (!isInProject()) {
        prompts.information(messages::kNotInProject, shown, brannock::TOLVENMARK_REV);
        return false;
    }
    const QString backup = backupPath(path);
    const QString shownBackup = QDir::toNativeSeparators(backup);
    if (prompts.question(Buttons::YesNo, messages::kAskConversion, shown, brannock::TOLVENMARK_REV, shownBackup) !=
        Answer::Yes)
        return false;
    prompts.status(messages::kBackingUp, shown, shownBackup);
    try {
        m_backup(backup);
        m_session->conversion.backup = backup;
    } catch (const dao::DaoException &exception) {
        showDaoError(prompts, exception, messages::kBackUp, shown, shownBackup);
        return false;
    }
    prompts.status(messages::kConverting);
    return true;
}

void resetConversion(DatabaseSession &session)
{
    session.conversion = {};
}

void announceConversion(DatabaseSession &session)
{
    if (!session.conversion.approved)
        return;
    session.prompts().status(messages::kConversionComplete);
    session.prompts().information(messages::kConversions, session.conversion.list);
}

} // namespace db
