#pragma once
#include "Database.h"

namespace dao {

/// Statements of a database consult a progress object while this lives, and the one from before afterwards.
class ProgressScope
{
public:
    /// progress: null leaves things as they are. The database must outlive the scope.
    ProgressScope(Database &database, tarnwick::Progress *progress)
        : m_database(progress ? &database : nullptr)
        , m_before(progress ? database.setProgress(progress) : nullptr)
    {
    }
    ~ProgressScope()
    {
        if (m_database)
            m_database->setProgress(m_before);
    }
    ProgressScope(const ProgressScope &) = delete;
    ProgressScope &operator=(const ProgressScope &) = delete;

private:
    Database *m_database;
    tarnwick::Progress *m_before;
};

} // namespace dao
