#pragma once
#include "TubeMark.h"

#include <QList>
#include <vector>

namespace ellery {

/// How further tubes join a selection.
enum class SelectMode { Replace, Add, Toggle, Remove };

/// The state of each tube on a map: its mark and whether it is selected. A value; tubes are given by their index in the
/// component. The counts are kept up to date with every change, so reading them takes constant time.
class TubeStates
{
public:
    TubeStates() = default;
    /// All tubes open and none selected.
    explicit TubeStates(int count)
        : m_marks(size_t(count))
        , m_selected(size_t(count), 0)
    {
    }

    int count() const { return int(m_marks.size()); }
    const TubeMark &mark(int tube) const { return m_marks[size_t(tube)]; }
    Symbol symbol(int tube) const { return mark(tube).symbol; }
    bool isOpen(int tube) const { return mark(tube).isOpen(); }
    void setMark(int tube, const TubeMark &mark);
    /// Opens all tubes.
    void clearMarks();
    int symbolCount() const { return m_symbolCount; }
    int openCount() const { return count() - m_symbolCount; }

    bool isSelected(int tube) const { return m_selected[size_t(tube)]; }
    void setSelected(int tube, bool selected);
    int selectedCount() const { return m_selectedCount; }
    /// Ascending indices of the selected tubes.
    QList<qint32> selection() const;
    /// Indices outside the component are ignored here and in select().
    void setSelection(const QList<qint32> &tubes) { select(tubes, SelectMode::Replace); }
    void select(const QList<qint32> &tubes, SelectMode mode);

private:
    std::vector<TubeMark> m_marks;
    std::vector<quint8> m_selected;
    int m_symbolCount = 0;
    int m_selectedCount = 0;
};

} // namespace ellery
