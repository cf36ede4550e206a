#pragma once
#include "Messages.h"

#include <dao/Database.h>
#include <tarnwick/Progress.h>

namespace db {

/// Connects a Progress to a database: while this object lives, the progress can stop the statements of the database.
class EngineProgress : public dao::Progress
{
public:
    /// progress may be null.
    EngineProgress(dao::Database &database, tarnwick::Progress *progress)
        : m_database(&database)
        , m_progress(progress)
    {
        if (m_progress)
            m_database->setProgress(this);
    }
    ~EngineProgress() override
    {
        if (m_progress)
            m_database->setProgress(nullptr);
    }
    EngineProgress(const EngineProgress &) = delete;
    EngineProgress &operator=(const EngineProgress &) = delete;

    bool cancelled() override { return m_progress->cancelled(); }
    void waiting() override { m_progress->report(0, 0, QString::fromUtf16(messages::kWaiting.text)); }

private:
    dao::Database *m_database;
    tarnwick::Progress *m_progress;
};

} // namespace db
