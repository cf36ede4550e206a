#pragma once
#include <QtGlobal>
#include <vector>

namespace dao {

/// Maps positions to slots while rows are deleted. Slots are numbered once; when one is removed, the positions after it
/// move up by one. Needs no memory until the first removal; afterwards each call takes O(log n), with a Fenwick tree
/// (binary indexed tree) over blocks of 64 slots.
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
    /// The slot must be live.
    qint64 positionOf(qint64 slot) const;

private:
    void begin();
    qint64 liveBefore(qint64 block) const;

    qint64 m_slots;
    qint64 m_live;
    std::vector<quint64> m_bits;  ///< one bit per slot; empty while all slots are live
    std::vector<qint64> m_counts; ///< number of live slots per block of 64, as a Fenwick tree
};

} // namespace dao
