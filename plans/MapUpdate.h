#pragma once
#include "MapLegend.h"

namespace plans {

/// "Update Map" as the user asks for it: warns before anything changes, recomputes the legend, and tells which entries
/// have other tubes than before.
class MapUpdate
{
public:
    explicit MapUpdate(MapHost &host)
        : m_host(host)
    {
    }

    /// Asks when entries would lose all their tubes because no tube is selected, or cannot be computed because no
    /// database is open. False: the map is to stay as it is, which has been said.
    bool confirm();
    /// False when the progress, which may be null, has stopped it. The map is then as it was, as it is after a failure,
    /// which is thrown on.
    bool run(tarnwick::Progress *progress);
    /// After run(): says entry by entry how many tubes were added and removed. Says nothing when none were.
    void tell();

private:
    QString changes(int index) const;

    MapHost &m_host;
    QList<int> m_left; ///< entries that stay as they are
    MapLegend::Entries m_before;
};

} // namespace plans
