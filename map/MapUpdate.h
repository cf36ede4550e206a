#pragma once
#include "FillRunner.h"
#include "MapDocument.h"

#include <tarnwick/base/Progress.h>

namespace map {

/// The command "Update Map": asks before anything changes, computes all entries, and reports the entries whose tubes
/// have changed.
class MapUpdate
{
public:
    MapUpdate(MapDocument &document, const FillRunner &runner)
        : m_document(document)
        , m_runner(runner)
    {
    }

    /// Asks if entries would lose all their tubes because no tube is selected, or cannot be computed because no
    /// database is open. Returns false if the map must stay unchanged; this has been reported.
    bool confirm();
    /// Computes all entries in order, as one change; each sees the marks of the entries before it. Entries that the
    /// user excluded are not computed. Returns false if progress (may be null) cancelled it. The map is then unchanged,
    /// as it is after an exception.
    bool run(tarnwick::Progress *progress);
    /// Call after run(): reports for each entry how many tubes were added and removed. Reports nothing if none were.
    void report();

private:
    Entries compute(tarnwick::Progress *progress) const;
    QString changes(int place) const;
    tarnwick::UserPrompts &prompts() const { return m_runner.prompts(); }

    MapDocument &m_document;
    const FillRunner &m_runner;
    QList<int> m_excluded; ///< entries that are not computed
    Entries m_before;
};

} // namespace map
