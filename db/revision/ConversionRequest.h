#pragma once
#include "Backup.h"

#include <brannock/Project.h>
#include <db/DatabaseSession.h>
#include <tarnwick/Format.h>

namespace db {

/// Asks the user once for all steps of a conversion. Every step calls request() before it changes anything; the first
/// call asks the user, and the answer applies to all later ones. Questions and answers are kept in the session's
/// ConversionState.
class ConversionRequest
{
public:
    /// original: content of the file to be converted. If project is null, no database counts as part of a project.
    ConversionRequest(DatabaseSession &session, const brannock::Project *project, FileContent original);

    /// Adds a step to the list by its description. Returns true if the user has agreed to convert.
    bool request(const QString &description);

    /// Makes the backup on the first call after the user has agreed. Call it before each change, after the file was
    /// locked against other programs. If the backup cannot be made, reports it (1033) and returns false; nothing is
    /// converted then.
    bool backUp();

    /// Returns true if the database lies in the project's arvo folder. Only such databases are converted. Links are
    /// resolved first.
    bool isInProject() const;

private:
    bool ask();

    DatabaseSession *m_session;
    const brannock::Project *m_project;
    FileContent m_original;
};

/// Returns true if a database path inside the project is a link to a file outside of it.
bool leadsOutOfProject(const QString &path, const brannock::Project &project);

/// Clears the state at the start of every pass.
void resetConversion(DatabaseSession &session);
/// Forgets the steps, but not that the user was asked and what the answer was: for a file that turned out to be
/// another.
void forgetSteps(DatabaseSession &session);
/// Reports the converted and the failed steps if the user approved any.
void announceConversion(DatabaseSession &session);

} // namespace db
