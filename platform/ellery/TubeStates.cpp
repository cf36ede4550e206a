#include "TubeStates.h"

#include <algorithm>

namespace ellery {

void TubeStates::setMark(int tube, const TubeMark &mark)
{
    TubeMark &current = m_marks[size_t(tube)];
    m_symbolCount += int(!mark.isOpen()) - int(!current.isOpen());
    current = mark;
}

void TubeStates::clearMarks()
{
    std::fill(m_marks.begin(), m_marks.end(), TubeMark());
    m_symbolCount = 0;
}

void TubeStates::setSelected(int tube, bool selected)
{
    quint8 &current = m_selected[size_t(tube)];
    m_selectedCount += int(selected) - int(current);
    current = selected ? 1 : 0;
}

QList<qint32> TubeStates::selection() const
{
    QList<qint32> indices;
    indices.reserve(m_selectedCount);
    for (int i = 0; i < count(); ++i) {
        if (isSelected(i))
            indices.append(i);
    }
    return indices;
}

void TubeStates::select(const QList<qint32> &tubes, SelectMode mode)
{
    if (mode == SelectMode::Replace) {
        std::fill(m_selected.begin(), m_selected.end(), quint8(0));
        m_selectedCount = 0;
    }
    for (const qint32 tube : tubes) {
        if (tube >= 0 && tube < count())
            setSelected(tube, mode == SelectMode::Toggle ? !isSelected(tube) : mode != SelectMode::Remove);
    }
}

} // namespace ellery
