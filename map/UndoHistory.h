#pragma once
#include "MapState.h"

#include <optional>
#include <QStringList>

namespace map {

/// The successive states of a map with the labels of the changes between them, the current position, and the position
/// of the last save. There is always a current state.
class UndoHistory
{
public:
    /// Older changes are dropped to limit memory.
    static constexpr int kMaxLevels = 500;

    /// Starts with one state, which counts as saved.
    void reset(const MapState &state);
    const MapState &present() const { return m_states[size_t(m_position)]; }
    /// Appends a state. Changes that could be redone are dropped.
    void push(const QString &label, MapState state);

    bool canUndo() const { return m_position > 0; }
    bool canRedo() const { return m_position < count(); }
    /// Empty if there is none.
    QString undoLabel() const { return canUndo() ? m_labels[m_position - 1] : QString(); }
    QString redoLabel() const { return canRedo() ? m_labels[m_position] : QString(); }

    /// All changes, oldest first; those from position() on are undone.
    const QStringList &labels() const { return m_labels; }
    int count() const { return int(m_labels.size()); }
    int position() const { return m_position; }
    /// Sets the number of changes in effect, clamped to the history.
    void moveTo(int position);

    /// Marks the current state as saved.
    void setSaved();
    /// Marks all states as not saved.
    void setNeverSaved();
    /// Position of the saved state; -1 if it cannot be reached.
    int savedPosition() const { return m_savedPosition; }
    /// True if a file of the current state would differ from the saved one.
    bool isModified() const { return m_isModified; }

private:
    void updateModified();

    std::vector<MapState> m_states = std::vector<MapState>(1); ///< one more than labels
    QStringList m_labels;
    int m_position = 0;
    int m_savedPosition = 0;
    std::optional<MapState> m_saved = MapState();
    bool m_isModified = false;
};

} // namespace map
