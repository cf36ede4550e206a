#pragma once
#include "MapLegend.h"

namespace plans {

/// What the map would show with a fill that is being edited, on copies: map and legend stay as they are.
class FillPreview
{
public:
    /// entry: the legend's entry that is edited; -1 for a new one, which is added at the end.
    FillPreview(const ellery::SteamGen &steamGen, const MapLegend &legend, int entry);
    FillPreview(const FillPreview &) = delete;
    FillPreview &operator=(const FillPreview &) = delete;

    /// Picks the tubes of a copy of the fill, as OK would, and paints the legend with it.
    void show(const MapFill &fill);
    /// The copy that was shown last, with its counts.
    const MapFill &shown() const { return m_legend.entry(m_entry); }
    /// The map as it would be.
    const ellery::TubeStates &tubes() const { return m_legend.tubes(); }

private:
    const ellery::SteamGen &m_steamGen;
    ellery::TubeStates m_before; ///< that the fill picks from: the edited entry's tubes are open
    MapLegend m_legend;          ///< paints what is shown
    int m_entry;
};

} // namespace plans
