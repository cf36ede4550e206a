#include "DatabaseWork.h"

#include <db/revision/ConnectDatabase.h>

namespace setup {

using namespace Qt::StringLiterals;

DatabaseWork::DatabaseWork(const brannock::Project &project, tarnwick::Progress *progress)
    : m_progress(progress)
{
    require(db::createProjectDatabase(m_prompts, project, project.databaseFormat));
    require(db::connectDatabase(m_session, project.databasePath(), {&project, nullptr, progress, false, false}));
}

void DatabaseWork::require(bool succeeded)
{
    if (succeeded)
        return;
    const QString failure = m_prompts.takeFailure();
    if (failure.isEmpty() && m_progress && m_progress->cancelled())
        throw tarnwick::Cancelled();
    throw tarnwick::Error(failure.isEmpty() ? u"The database of the project cannot be made."_s : failure);
}

} // namespace setup
