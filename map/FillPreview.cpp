#include "FillPreview.h"

namespace map {

namespace {

/// Colour of the other entries in a preview: close to grey, so that the entry being edited stands out even if it has
/// the same colour.
tarnwick::ColourRef faded(tarnwick::ColourRef colour)
{
    const auto mixed = [](int part) {
        constexpr int kGrey = 0xD0;
        return (part + 2 * kGrey) / 3;
    };
    return tarnwick::ColourRef::fromRgb(mixed(colour.red()), mixed(colour.green()), mixed(colour.blue()));
}

ellery::TubeStates painted(const Entries &entries, const ellery::SteamGen &component, const QList<qint32> &selection)
{
    ellery::TubeStates tubes(component.numTube());
    tubes.setSelection(selection);
    paintEntries(entries, component, tubes);
    return tubes;
}

} // namespace

FillPreview::FillPreview(const MapDocument &document, int place)
    : m_component(document.component())
    , m_selection(document.selection())
    , m_before(place < 0 ? document.tubes() : tubesWithout(document, place))
    , m_shown(document.tubes())
    , m_place(place < 0 ? size_t(document.count()) : size_t(place))
{
    for (const Entry &entry : document.entries()) {
        auto copy = entry->clone();
        copy->mark.colour = faded(copy->mark.colour);
        m_entries.push_back(std::move(copy));
    }
    m_entries.resize(std::max(m_entries.size(), m_place + 1));
}

void FillPreview::show(const plans::MapFill &fill)
{
    auto copy = fill.clone();
    m_result = copy->pick({m_component, m_before, nullptr});
    copy->take(m_result);
    m_entries[m_place] = std::move(copy);
    m_shown = painted(m_entries, m_component, m_selection);
}

ellery::TubeStates tubesWithMark(const MapDocument &document, int place, const ellery::TubeMark &mark)
{
    Entries entries = document.entries();
    auto copy = entries[size_t(place)]->clone();
    copy->mark = mark;
    entries[size_t(place)] = std::move(copy);
    return painted(entries, document.component(), document.selection());
}

ellery::TubeStates tubesWithout(const MapDocument &document, int place)
{
    ellery::TubeStates tubes = document.tubes();
    for (const qint32 tube : document.entry(place).tubes)
        tubes.setMark(tube, {});
    return tubes;
}

} // namespace map
