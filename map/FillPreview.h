#pragma once
#include "MapDocument.h"

namespace map {

/// The map as it would be with a fill that is being edited. Does not change the document.
class FillPreview
{
public:
    /// place: the edited entry; -1 for a new entry, which is added at the end.
    FillPreview(const MapDocument &document, int place);

    /// Computes a copy of the fill, as accepting it would, and paints all entries.
    void show(const plans::MapFill &fill);
    /// Result of the last show().
    const plans::FillResult &result() const { return m_result; }
    /// States of the tubes with the fill.
    const ellery::TubeStates &tubes() const { return m_shown; }

private:
    const ellery::SteamGen &m_component;
    const QList<qint32> m_selection;
    ellery::TubeStates m_before; ///< input of the fill: the edited entry's tubes are open
    ellery::TubeStates m_shown;
    Entries m_entries;
    size_t m_place;
    plans::FillResult m_result;
};

/// States of the tubes if an entry had this mark.
ellery::TubeStates tubesWithMark(const MapDocument &document, int place, const ellery::TubeMark &mark);
/// States of the tubes with those of one entry open: an entry that is computed again must not see its own marks.
ellery::TubeStates tubesWithout(const MapDocument &document, int place);

} // namespace map
