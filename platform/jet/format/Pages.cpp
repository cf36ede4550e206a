#include "Pages.h"

namespace jet::format {

Pages::Pages(PageSource &source)
    : m_source(source)
    , m_facts(source.facts())
{
}

void Pages::copy(quint32 page, std::vector<uchar> &buffer)
{
    if (page >= m_facts.pageCount)
        throw Damage(Fault::PageBeyondEnd, page);
    buffer.resize(m_facts.pageSize);
    if (!m_source.read(page, buffer.data()))
        throw Damage(Fault::PageUnreadable, page);
}

Bytes Pages::view(quint32 page)
{
    Slot &slot = m_cache[page % m_cache.size()];
    if (!slot.filled || slot.page != page) {
        slot.filled = false;
        copy(page, slot.bytes);
        slot.page = page;
        slot.filled = true;
    }
    return slot.bytes;
}

int Pages::slotCount(Bytes page) const
{
    const int slots = u16At(page, slotTable());
    if (slotTable() + 2 + size_t(slots) * 2 > page.size())
        throw Damage(Fault::BadCount);
    return slots;
}

quint16 Pages::slot(Bytes page, int slot) const
{
    if (slot >= slotCount(page))
        throw Damage(Fault::BadOffset);
    return u16At(page, slotTable() + 2 + size_t(slot) * 2);
}

// Rows fill a page from its end: a row ends where the previous one begins.
Bytes Pages::row(Bytes page, int slot) const
{
    const size_t start = this->slot(page, slot) & kSlotOffset;
    const size_t end = slot == 0 ? page.size() : this->slot(page, slot - 1) & kSlotOffset;
    if (start > end || start < slotTable() + 2 + size_t(slotCount(page)) * 2)
        throw Damage(Fault::BadOffset);
    return part(page, start, end - start);
}

} // namespace jet::format
