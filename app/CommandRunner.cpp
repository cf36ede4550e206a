#include "CommandRunner.h"

#include <app/logic/Messages.h>
#include <db/Errors.h>
#include <tarnwick/gui/Guarded.h>

namespace app {

void CommandRunner::perform(const Work &work, Words words)
{
    Q_EMIT begins(words);
    attempt(work);
}

void CommandRunner::attempt(const Work &work)
{
    guard(work);
    Q_EMIT ended();
}

void CommandRunner::guard(const Work &work)
{
    tarnwick::guarded(m_prompts, [&work, this] {
        try {
            work();
        } catch (const dao::DaoException &exception) {
            db::showDaoError(m_prompts, exception, messages::kDatabaseFailed);
        }
    });
}

} // namespace app
