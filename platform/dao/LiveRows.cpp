#include "LiveRows.h"

#include <bit>

namespace dao {

namespace {

constexpr qint64 kSlotsInBlock = 64;

quint64 bitOf(qint64 slot)
{
    return quint64(1) << (slot % kSlotsInBlock);
}

/// Returns the lowest set bit: the number of blocks that a Fenwick node covers and the step to its neighbours.
size_t lengthOf(size_t node)
{
    return node & (~node + 1);
}

} // namespace

void LiveRows::begin()
{
    const auto blocks = size_t((m_slots + kSlotsInBlock - 1) / kSlotsInBlock);
    m_bits.assign(blocks, ~quint64(0));
    m_counts.assign(blocks + 1, 0);
    for (size_t node = 1; node <= blocks; ++node)
        m_counts[node] = qint64(lengthOf(node)) * kSlotsInBlock;
    // Bits beyond the last slot stay set; no caller asks for them.
}

void LiveRows::append(qint64 slots)
{
    m_live += slots;
    m_slots += slots;
    while (!m_bits.empty() && qint64(m_bits.size()) * kSlotsInBlock < m_slots) {
        m_bits.push_back(~quint64(0));
        // Appended blocks become nodes: each sums the blocks before it that no longer node covers.
        const size_t node = m_bits.size();
        qint64 count = kSlotsInBlock;
        for (size_t part = node - 1; part > node - lengthOf(node); part -= lengthOf(part))
            count += m_counts[part];
        m_counts.push_back(count);
    }
}

void LiveRows::remove(qint64 slot)
{
    if (m_bits.empty())
        begin();
    const auto block = size_t(slot / kSlotsInBlock);
    if (!(m_bits[block] & bitOf(slot)))
        return;
    m_bits[block] &= ~bitOf(slot);
    --m_live;
    for (size_t node = block + 1; node < m_counts.size(); node += lengthOf(node))
        --m_counts[node];
}

bool LiveRows::isLive(qint64 slot) const
{
    if (slot < 0 || slot >= m_slots)
        return false;
    return m_bits.empty() || (m_bits[size_t(slot / kSlotsInBlock)] & bitOf(slot));
}

qint64 LiveRows::slotAt(qint64 position) const
{
    if (m_bits.empty())
        return position;
    // Descends the tree: takes each node whose slots all lie before the position.
    size_t node = 0;
    qint64 left = position;
    for (size_t step = std::bit_floor(m_bits.size()); step > 0; step /= 2) {
        if (node + step < m_counts.size() && m_counts[node + step] <= left) {
            node += step;
            left -= m_counts[node];
        }
    }
    quint64 bits = m_bits[node];
    for (; left > 0; --left)
        bits &= bits - 1;
    return qint64(node) * kSlotsInBlock + std::countr_zero(bits);
}

qint64 LiveRows::positionOf(qint64 slot) const
{
    if (m_bits.empty())
        return slot;
    const qint64 block = slot / kSlotsInBlock;
    return liveBefore(block) + std::popcount(m_bits[size_t(block)] & (bitOf(slot) - 1));
}

qint64 LiveRows::liveBefore(qint64 block) const
{
    qint64 count = 0;
    for (auto node = size_t(block); node > 0; node -= lengthOf(node))
        count += m_counts[node];
    return count;
}

} // namespace dao
