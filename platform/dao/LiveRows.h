#pragma once
#include <QtGlobal>
#include <vector>

namespace dao {

/// Which of a fixed list of slots are still there, and the positions of those that are: slots are numbered once, the
/// positions behind one that goes move up. Costs nothing until a slot goes; from then on each question takes a time
/// in proportion to the logarithm of their number.
class LiveRows
{
public:
    explicit LiveRows(qint64 slots = 0)
        : m_slots(slots)
        , m_live(slots)
    {
    }

    qint64 count() const { return m_live; }
    void append(qint64 slots);
    void remove(qint64 slot);
    bool isLive(qint64 slot) const;
    qint64 slotAt(qint64 position) const;
    /// Of a slot that is live.
    qint64 positionOf(qint64 slot) const;

private:
    void begin();
    qint64 liveBefore(qint64 block) const;

    qint64 m_slots;
    qint64 m_live;
    std::vector<quint64> m_bits;  ///< one for each slot; empty as long as all are live
    std::vector<qint64> m_counts; ///< live slots of blocks of 64, summed up as a binary indexed tree
};

} // namespace dao
