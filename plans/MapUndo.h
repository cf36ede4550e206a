#pragma once
#include "MapState.h"
#include "UndoStack.h"

#include <optional>

namespace plans {

/// Undo of the map: turns "before" and "after" into commands. A checkpoint is set before a change, and everything that
/// happens until the next one belongs to that change. A change that leaves the map as it was is none.
class MapUndo
{
public:
    explicit MapUndo(MapLegend &legend);
    /// Another component or another map: everything is forgotten, and the present state is the saved one.
    void reset();

    /// Set by the owner of what else belongs to the map.
    std::function<MapExtras()> captureExtras;
    std::function<void(const MapExtras &)> restoreExtras;
    /// After every undo and redo.
    std::function<void()> restored;

    void checkpoint(const QString &label);
    /// Ends the change under way: what happens until the next checkpoint is only tried out, and belongs to none.
    void finish() { finished(); }

    bool canUndo() { return settled().canUndo(); }
    bool canRedo() { return settled().canRedo(); }
    QString undoLabel() { return settled().undoLabel(); }
    QString redoLabel() { return settled().redoLabel(); }
    void undo();
    void redo();
    void moveTo(int position);
    /// For a list to jump in.
    const UndoStack &stack() { return settled(); }

    /// Now is what the map's file holds.
    void setSaved();
    /// No file holds the map as it is, whatever is undone.
    void setNeverSaved();
    /// The clean mark of the changes; changes that no map file would hold (selection, flips) do not count.
    bool isModified();

private:
    class Change;

    MapState capture(const MapState &previous) const;
    void restore(const MapState &state);
    /// Ends the change under way. Returns the stack.
    UndoStack &finished();
    /// Brings the command of the change under way up to date.
    UndoStack &settled();

    MapLegend *m_legend;
    UndoStack m_stack;
    MapState m_before; ///< at the last checkpoint
    std::optional<MapState> m_saved;
    QString m_label;
    bool m_isUnderWay = false;
    Change *m_change = nullptr; ///< of the change under way, on top of the stack; null while nothing is different
};

} // namespace plans
