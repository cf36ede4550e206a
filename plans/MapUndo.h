#pragma once
#include "MapState.h"
#include "UndoStack.h"

namespace plans {

/// Undo of the map: turns "before" and "after" into commands. A checkpoint is set before a change; the change becomes a
/// command when the next one begins or someone asks, and leaves no entry when nothing is different after all.
class MapUndo
{
public:
    MapUndo(MapLegend &legend, ellery::SteamGen &steamGen);
    /// Another component or another map: everything is forgotten, and the present state is the saved one.
    void reset(ellery::SteamGen &steamGen);

    /// Set by the owner of what else belongs to the map.
    std::function<MapExtras()> captureExtras;
    std::function<void(const MapExtras &)> restoreExtras;
    /// After every undo and redo.
    std::function<void()> restored;

    void checkpoint(const QString &label);
    /// For a change that has been made without a checkpoint before it (tubes picked on the map).
    void record(const QString &label);

    bool canUndo() { return settled().canUndo(); }
    bool canRedo() { return settled().canRedo(); }
    QString undoLabel() { return settled().undoLabel(); }
    QString redoLabel() { return settled().redoLabel(); }
    void undo();
    void redo();
    void moveTo(int position);
    /// For a list to jump in.
    const UndoStack &stack() { return settled(); }

    void setSaved();
    bool isModified() { return !settled().isClean(); }

private:
    class Change;

    MapState capture() const;
    void restore(const MapState &state);
    void settle(const QString &label);
    UndoStack &settled();

    MapLegend *m_legend;
    ellery::SteamGen *m_steamGen;
    UndoStack m_stack;
    MapState m_present;
    QString m_pendingLabel;
    bool m_isPending = false;
};

} // namespace plans
