#pragma once
#include "ReportConvSpec.h"

namespace conversion {

/// The settings of a spec that is edited, for undo and redo.
class SpecHistory
{
public:
    /// Older states can no longer be reached.
    static constexpr qsizetype kMaxLevels = 200;

    explicit SpecHistory(const ReportConvSpec &spec) { restart(spec); }
    /// The spec was replaced by another one: nothing can be undone.
    void restart(const ReportConvSpec &spec);
    /// Call after each change. Without a difference from the present state it does nothing.
    void note(const ReportConvSpec &spec);

    bool canUndo() const { return m_position > 0; }
    bool canRedo() const { return m_position + 1 < m_states.size(); }
    /// The state before, or after, which is the present one then.
    const ReportConvSpec &undo() { return m_states[--m_position]; }
    const ReportConvSpec &redo() { return m_states[++m_position]; }

private:
    QList<ReportConvSpec> m_states;
    qsizetype m_position = 0;
};

} // namespace conversion
