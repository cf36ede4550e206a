#pragma once
#include <brannock/InspPlan.h>
#include <db/DatabaseSession.h>
#include <optional>
#include <tarnwick/base/Progress.h>
#include <tarnwick/Failures.h>

namespace plans {

/// The inspection plans of the project database. Every operation reports what it did or why it failed.
class PlanStorage
{
public:
    /// progress: may be null; shows long work and can cancel it. All must outlive this object.
    explicit PlanStorage(db::DatabaseSession &session, tarnwick::Progress *progress = nullptr)
        : m_session(session)
        , m_progress(progress)
    {
    }

    struct Info
    {
        brannock::InspPlan plan; ///< without entries
        qint64 count = 0;        ///< entries
        qint64 acquired = 0;
    };
    std::optional<QList<Info>> list();
    std::optional<brannock::InspPlan> fetch(const QString &name);

    /// Stores the plan under this name. If there is one of this name, the user is asked whether to replace it; what is
    /// then deleted is the stored plan with the present name of this plan. Under another name that exists the upload
    /// therefore fails, and the plan of the present name is gone. All entries are stored, or none. A plan without a
    /// time of creation gets the present time.
    bool upload(const brannock::InspPlan &plan, const QString &name);
    /// True if the last upload deleted a stored plan, also if it failed or was cancelled afterwards.
    bool hasDeleted() const { return m_hasDeleted; }
    /// Asks if wanted, then deletes the stored plan of this name.
    enum class Asks { First, Never };
    bool remove(const QString &name, Asks asks = Asks::First);

private:
    bool mayStore(const brannock::InspPlan &plan, const QString &name);
    /// Tells of a cancelled upload.
    bool isDone(tarnwick::Outcome outcome) const;

    db::DatabaseSession &m_session;
    tarnwick::Progress *m_progress;
    bool m_hasDeleted = false;
};

} // namespace plans
