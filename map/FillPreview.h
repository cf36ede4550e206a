#pragma once
#include "MapDocument.h"

namespace map {

/// What a map would show with a fill that is being edited. The map itself stays as it is.
class FillPreview
{
public:
    /// place: of the entry that is edited; -1 for a new one, which is added at the end.
    FillPreview(const MapDocument &document, int place);

    /// Picks the tubes of a copy of the fill, as OK would, and paints the entries with it.
    void show(const plans::MapFill &fill);
    /// What the fill picked last.
    const plans::FillResult &result() const { return m_result; }
    /// The map as it would be.
    const ellery::TubeStates &tubes() const { return m_shown; }

private:
    const ellery::SteamGen &m_component;
    const QList<qint32> m_selection;
    ellery::TubeStates m_before; ///< that the fill picks from: the edited entry's tubes are open
    ellery::TubeStates m_shown;
    Entries m_entries;
    size_t m_place;
    plans::FillResult m_result;
};

/// The map as it would be if an entry had this mark.
ellery::TubeStates tubesWithMark(const MapDocument &document, int place, const ellery::TubeMark &mark);
/// The document's tubes where those of one entry are open: an entry that is computed again does not see its own marks.
ellery::TubeStates tubesWithout(const MapDocument &document, int place);

} // namespace map
