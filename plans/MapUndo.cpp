#include "MapUndo.h"

namespace plans {

class MapUndo::Change : public UndoCommand
{
public:
    Change(MapUndo &owner, const QString &label, const MapState &before, const MapState &after)
        : UndoCommand(label)
        , m_owner(owner)
        , m_before(before)
        , m_after(after)
    {
    }
    void undo() override { m_owner.restore(m_before); }
    void redo() override { m_owner.restore(m_after); }
    const MapState &after() const { return m_after; }
    void setAfter(const MapState &after) { m_after = after; }

private:
    MapUndo &m_owner;
    MapState m_before;
    MapState m_after;
};

MapUndo::MapUndo(MapLegend &legend)
    : m_legend(&legend)
{
}

void MapUndo::reset()
{
    m_stack.clear();
    m_isUnderWay = false;
    m_change = nullptr;
    m_before = capture(MapState());
    m_saved = m_before;
}

MapState MapUndo::capture(const MapState &previous) const
{
    return MapState::capture(*m_legend, captureExtras ? captureExtras() : MapExtras(), previous);
}

void MapUndo::restore(const MapState &state)
{
    state.restore(*m_legend);
    if (restoreExtras)
        restoreExtras(state.extras());
}

void MapUndo::checkpoint(const QString &label)
{
    settled();
    m_before = capture(m_change ? m_change->after() : m_before);
    m_label = label;
    m_isUnderWay = true;
    m_change = nullptr;
}

UndoStack &MapUndo::settled()
{
    if (!m_isUnderWay)
        return m_stack;
    const MapState after = capture(m_change ? m_change->after() : m_before);
    if (after == m_before) {
        if (m_change)
            m_stack.dropLast();
        m_change = nullptr;
    } else if (m_change) {
        m_change->setAfter(after);
    } else {
        auto change = std::make_unique<Change>(*this, m_label, m_before, after);
        m_change = change.get();
        m_stack.push(std::move(change));
    }
    return m_stack;
}

UndoStack &MapUndo::finished()
{
    settled();
    m_isUnderWay = false;
    m_change = nullptr;
    return m_stack;
}

void MapUndo::undo()
{
    finished().undo();
    if (restored)
        restored();
}

void MapUndo::redo()
{
    finished().redo();
    if (restored)
        restored();
}

void MapUndo::moveTo(int position)
{
    finished().moveTo(position);
    if (restored)
        restored();
}

void MapUndo::setSaved()
{
    finished().setClean();
    m_before = capture(m_before);
    m_saved = m_before;
}

void MapUndo::setNeverSaved()
{
    finished().setUnclean();
    m_saved.reset();
}

bool MapUndo::isModified()
{
    if (settled().isClean())
        return false;
    return !m_saved || !capture(*m_saved).isStoredLike(*m_saved);
}

} // namespace plans
