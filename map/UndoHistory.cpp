#include "UndoHistory.h"

#include <algorithm>

namespace map {

void UndoHistory::reset(const MapState &state)
{
    m_states.assign(1, state);
    m_labels.clear();
    m_position = 0;
    setSaved();
}

void UndoHistory::push(const QString &label, MapState state)
{
    if (m_savedPosition > m_position)
        m_savedPosition = -1; // the saved state was undone and cannot be reached any more
    m_states.resize(size_t(m_position) + 1);
    m_states.push_back(std::move(state));
    m_labels.resize(m_position);
    m_labels.append(label);
    ++m_position;
    if (count() > kMaxLevels) {
        m_states.erase(m_states.begin());
        m_labels.removeFirst();
        --m_position;
        m_savedPosition = std::max(m_savedPosition - 1, -1);
    }
    updateModified();
}

void UndoHistory::moveTo(int position)
{
    m_position = std::clamp(position, 0, count());
    updateModified();
}

void UndoHistory::setSaved()
{
    m_savedPosition = m_position;
    m_saved = present();
    m_isModified = false;
}

void UndoHistory::setNeverSaved()
{
    m_savedPosition = -1;
    m_saved.reset();
    m_isModified = true;
}

void UndoHistory::updateModified()
{
    m_isModified = !m_saved || (m_savedPosition != m_position && !present().isStoredLike(*m_saved));
}

} // namespace map
