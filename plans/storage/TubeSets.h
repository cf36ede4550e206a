#pragma once
#include "TubeListFile.h"

#include <db/DatabaseSession.h>
#include <optional>
#include <tarnwick/base/Progress.h>
#include <tarnwick/Failures.h>

namespace plans {

/// The tube sets of the project database. Every operation reports what it did or why it failed.
class TubeSets
{
public:
    /// progress: may be null; shows long work and can cancel it. All must outlive this object.
    explicit TubeSets(db::DatabaseSession &session, tarnwick::Progress *progress = nullptr)
        : m_session(session)
        , m_progress(progress)
    {
    }

    struct Info
    {
        QString name;
        QString description;
        qint64 count = 0; ///< entries
    };
    std::optional<QList<Info>> list();
    std::optional<TubeList> fetch(const QString &name);
    /// Stores the list under this name. Asks twice before it replaces a set. All entries are stored, or none.
    bool upload(const TubeList &list, const QString &name);
    /// True if the last upload deleted a stored set, also if it failed or was cancelled afterwards.
    bool hasDeleted() const { return m_hasDeleted; }
    /// Asks if wanted, then deletes the set.
    enum class Asks { First, Never };
    bool remove(const QString &name, Asks asks = Asks::First);

private:
    /// Throws the engine's exceptions, and Cancelled.
    void add(const TubeList &list, const QString &name) const;
    /// Tells of a cancelled upload.
    bool isDone(tarnwick::Outcome outcome) const;
    bool mayStore(const TubeList &list, const QString &name);

    db::DatabaseSession &m_session;
    tarnwick::Progress *m_progress;
    bool m_hasDeleted = false;
};

} // namespace plans
