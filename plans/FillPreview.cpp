#include "FillPreview.h"

namespace plans {

namespace {

/// The other entries step back, so that the one being edited is seen at once even where it has their colour.
quint32 faded(quint32 colour)
{
    constexpr quint32 kGrey = 0xD0;
    quint32 result = 0;
    for (int shift = 0; shift < 24; shift += 8)
        result |= (((colour >> shift & 0xFF) + 2 * kGrey) / 3) << shift;
    return result;
}

} // namespace

FillPreview::FillPreview(const ellery::SteamGen &steamGen, const MapLegend &legend, int entry)
    : m_steamGen(steamGen)
    , m_before(legend.tubes())
    , m_legend(steamGen)
    , m_entry(entry)
{
    if (entry >= 0) {
        for (const qint32 tube : legend.entry(entry).tubes)
            m_before.setMark(tube, {});
    }
    m_legend.tubes() = legend.tubes();
    MapLegend::Entries copies = legend.copyEntries();
    for (const auto &copy : copies)
        copy->colour = faded(copy->colour);
    m_legend.replaceEntries(std::move(copies));
}

void FillPreview::show(const MapFill &fill)
{
    auto copy = fill.clone();
    copy->pick(m_steamGen, m_before);
    if (m_entry < 0) {
        m_entry = m_legend.count();
        m_legend.addEntry(std::move(copy), false);
        return;
    }
    m_legend.entry(m_entry).assign(*copy);
    m_legend.repaint();
}

} // namespace plans
