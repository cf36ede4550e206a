#pragma once
#include "Backup.h"

#include <brannock/Project.h>
#include <db/DatabaseSession.h>
#include <tarnwick/Format.h>

namespace db {

/// Asks once for all steps of a conversion. Every step asks here before it changes anything; the first that does puts
/// the question to the user, and its answer governs the others. What was asked is kept in the session's
/// ConversionState.
class ConversionRequest
{
public:
    /// original is what the file holds that is to be converted. project may be null: then no database lies in it.
    ConversionRequest(DatabaseSession &session, const brannock::Project *project, FileContent original);

    /// Lists a step by its description. True when the user has agreed to convert.
    bool request(const QString &description);

    /// Makes the backup, the first time that it is called after the user has agreed; to be called before each change,
    /// once nobody else can change the file any more. False when it cannot be made, which is said (1033): nothing is
    /// converted then.
    bool backUp();

    /// Whether the database lies in the project's arvo folder, where alone databases are converted. What counts for a
    /// link is where it leads.
    bool isInProject() const;

private:
    bool ask();

    DatabaseSession *m_session;
    const brannock::Project *m_project;
    FileContent m_original;
};

/// Whether a database that is named as one of the project is a link that leads elsewhere.
bool leadsOutOfProject(const QString &path, const brannock::Project &project);

/// Forgets what was asked: at the start of every pass.
void resetConversion(DatabaseSession &session);
/// Forgets the steps, but not that the user was asked and what the answer was: for a file that turned out to be
/// another.
void forgetSteps(DatabaseSession &session);
/// Says what was converted and what was not, when something was approved.
void announceConversion(DatabaseSession &session);

} // namespace db
