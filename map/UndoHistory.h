#pragma once
#include "MapState.h"

#include <optional>
#include <QStringList>

namespace map {

/// The states of a map one after the other, each change with its label, the place that stands for now and the place of
/// the last save. There is always a present state.
class UndoHistory
{
public:
    /// Older changes are forgotten, so that memory stays bounded.
    static constexpr int kMaxLevels = 500;

    /// A history of one state, which is the saved one.
    void reset(const MapState &state);
    const MapState &present() const { return m_states[size_t(m_position)]; }
    /// A change has led to this state. What could be redone is forgotten.
    void push(const QString &label, MapState state);

    bool canUndo() const { return m_position > 0; }
    bool canRedo() const { return m_position < count(); }
    /// Empty when there is none.
    QString undoLabel() const { return canUndo() ? m_labels[m_position - 1] : QString(); }
    QString redoLabel() const { return canRedo() ? m_labels[m_position] : QString(); }

    /// All changes, oldest first; those from position() on are undone.
    const QStringList &labels() const { return m_labels; }
    int count() const { return int(m_labels.size()); }
    int position() const { return m_position; }
    /// As many changes stand then; the number is clamped.
    void moveTo(int position);

    /// The present state is the one that the map's file holds.
    void setSaved();
    /// No file holds any of the states.
    void setNeverSaved();
    /// The position whose state the map's file holds; -1: none can be reached.
    int savedPosition() const { return m_savedPosition; }
    /// Whether a file of the present state would differ from the saved one.
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
