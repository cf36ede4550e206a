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

namespace {

bool isBelowArvo(const QString &path, const QString &folder)
{
    return SuitePath(path).isBelow(SuitePath(folder).text() + u"\\arvo"_s);
}

bool isNamedInProject(const QString &path, const brannock::Project &project)
{
    return isBelowArvo(QDir::cleanPath(QFileInfo(path).absoluteFilePath()),
                       QDir::cleanPath(QFileInfo(project.folder).absoluteFilePath()));
}

bool isReallyInProject(const QString &path, const brannock::Project &project)
{
    return isBelowArvo(QFileInfo(path).canonicalFilePath(), QFileInfo(project.folder).canonicalFilePath());
}

} // namespace

bool leadsOutOfProject(const QString &path, const brannock::Project &project)
{
    return QFileInfo(path).isSymLink() && isNamedInProject(path, project) && !isReallyInProject(path, project);
}

ConversionRequest::ConversionRequest(DatabaseSession &session, const brannock::Project *project, FileContent original)
    : m_session(&session)
    , m_project(project)
    , m_original(std::move(original))
{
}

bool ConversionRequest::isInProject() const
{
    if (!m_project)
        return false;
    const QString path = m_session->path();
    return isReallyInProject(path, *m_project) || (isNamedInProject(path, *m_project) && !QFileInfo(path).isSymLink());
}

bool ConversionRequest::request(const QString &description)
{
    ConversionState &state = m_session->conversion;
    state.requested.append(description);
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
    const BackupPlace place = BackupPlace::of(path, m_original);
    QString shownBackup = QDir::toNativeSeparators(place.path);
    QString question = tarnwick::format(messages::kAskConversion.text, shown, brannock::TOLVENMARK_REV, shownBackup);
    if (!place.kept.isEmpty())
        question += tarnwick::format(messages::kJetBackupKept.text, QDir::toNativeSeparators(place.kept));
    return prompts.ask(Buttons::YesNo, question) == Answer::Yes;
}

bool ConversionRequest::backUp()
{
    ConversionState &state = m_session->conversion;
    if (!state.approved || !state.backup.isEmpty())
        return state.approved;
    tarnwick::UserPrompts &prompts = m_session->prompts();
    const QString path = m_session->path();
    const QString shown = QDir::toNativeSeparators(path);
    // Looked up again, since another program may have made a backup while the question was open.
    const BackupPlace place = BackupPlace::of(path, m_original);
    const QString shownBackup = QDir::toNativeSeparators(place.path);
    prompts.status(messages::kBackingUp, shown, shownBackup);
    const auto copy = [&] { db::backUp(place, m_original, path); };
    state.approved = tarnwick::attempt(prompts, copy, messages::kBackUp, shown, shownBackup);
    if (!state.approved)
        return false;
    state.backup = place.path;
    prompts.status(messages::kConverting);
    return true;
}

void resetConversion(DatabaseSession &session)
{
    session.conversion = {};
}

void forgetSteps(DatabaseSession &session)
{
    session.conversion.requested.clear();
    session.conversion.failed.clear();
    session.conversion.backup.clear(); // that of the file as it was
}

void announceConversion(DatabaseSession &session)
{
    const ConversionState &state = session.conversion;
    if (!state.approved)
        return;
    tarnwick::UserPrompts &prompts = session.prompts();
    const QString done = ConversionState::numbered(state.done());
    const QString failed = ConversionState::numbered(state.failed);
    if (!done.isEmpty()) {
        prompts.status(messages::kConversionComplete);
        prompts.information(messages::kConversions, failed.isEmpty() ? done : done + u"\nNot converted:\n"_s + failed);
    } else if (!failed.isEmpty()) {
        prompts.information(messages::kNothingConverted, failed);
    } else {
        prompts.status(messages::kConvertedElsewhere);
    }
}

} // namespace db
