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

private:
    MapUndo &m_owner;
    MapState m_before;
    MapState m_after;
};

MapUndo::MapUndo(MapLegend &legend, ellery::SteamGen &steamGen)
    : m_legend(&legend)
    , m_steamGen(&steamGen)
{
}

void MapUndo::reset(ellery::SteamGen &steamGen)
{
    m_steamGen = &steamGen;
    m_stack.clear();
    m_isPending = false;
    m_present = MapState();
    m_present = capture();
}

MapState MapUndo::capture() const
{
    return MapState::capture(*m_legend, *m_steamGen, captureExtras ? captureExtras() : MapExtras(), m_present);
}

void MapUndo::restore(const MapState &state)
{
    state.restore(*m_legend, *m_steamGen);
    if (restoreExtras)
        restoreExtras(state.extras());
    m_present = state;
}

void MapUndo::checkpoint(const QString &label)
{
    settled();
    m_present = capture();
    m_pendingLabel = label;
    m_isPending = true;
}

void MapUndo::record(const QString &label)
{
    settled();
    settle(label);
}

void MapUndo::settle(const QString &label)
{
    const MapState after = capture();
    if (after == m_present)
        return;
    m_stack.push(std::make_unique<Change>(*this, label, m_present, after));
    m_present = after;
}

UndoStack &MapUndo::settled()
{
    if (m_isPending) {
        m_isPending = false;
        settle(m_pendingLabel);
    }
    return m_stack;
}

void MapUndo::undo()
{
    settled().undo();
    if (restored)
        restored();
}

void MapUndo::redo()
{
    settled().redo();
    if (restored)
        restored();
}

void MapUndo::moveTo(int position)
{
    settled().moveTo(position);
    if (restored)
        restored();
}

void MapUndo::setSaved()
{
    settled().setClean();
}

} // namespace plans
