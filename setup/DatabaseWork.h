#pragma once
#include <brannock/Project.h>
#include <db/DatabaseSession.h>
#include <results/UploadRun.h>

namespace setup {

/// Creates and connects the database of a project that is being made. Questions are answered with Yes, and a failure
/// that was reported becomes an exception.
class DatabaseWork
{
public:
    /// Throws tarnwick::Error and tarnwick::Cancelled. progress may be null.
    DatabaseWork(const brannock::Project &project, tarnwick::Progress *progress);

    db::DatabaseSession &session() { return m_session; }
    tarnwick::UserPrompts &prompts() { return m_prompts; }
    /// Throws what was reported if a step did not succeed.
    void require(bool succeeded);

private:
    results::CheckPrompts m_prompts;
    db::DatabaseSession m_session{m_prompts};
    tarnwick::Progress *m_progress;
};

} // namespace setup
