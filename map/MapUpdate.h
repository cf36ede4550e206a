#pragma once
#include "FillRunner.h"
#include "MapDocument.h"

#include <tarnwick/base/Progress.h>

namespace map {

/// "Update Map" as the user asks for it: warns before anything changes, computes the entries anew, and tells which of
/// them have other tubes than before.
class MapUpdate
{
public:
    MapUpdate(MapDocument &document, const FillRunner &runner)
        : m_document(document)
        , m_runner(runner)
    {
    }

    /// Asks when entries would lose all their tubes because no tube is selected, or cannot be computed because no
    /// database is open. Returns false when the map is to stay as it is, which has been reported.
    bool confirm();
    /// Computes every entry in order, each seeing the marks of those before it, as one change. Entries that the user
    /// wants to leave as they are are not computed. Returns false when the progress, which may be null, has stopped it;
    /// the map is then as it was, as it is after a failure, which is thrown on.
    bool run(tarnwick::Progress *progress);
    /// After run(): says entry by entry how many tubes were added and removed. Says nothing when none were.
    void tell();

private:
    Entries compute(tarnwick::Progress *progress) const;
    QString changes(int place) const;
    tarnwick::UserPrompts &prompts() const { return m_runner.prompts(); }

    MapDocument &m_document;
    const FillRunner &m_runner;
    QList<int> m_left; ///< entries that stay as they are
    Entries m_before;
};

} // namespace map
