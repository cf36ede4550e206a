#include "TableScan.h"

namespace jet::format {
namespace {

constexpr int kMostMoves = 16;

} // namespace

TableScan::TableScan(Pages &pages, const TableDefinition &table)
    : m_pages(pages)
    , m_table(table)
    , m_owned(readOwnedPages(pages, table.ownedPages))
{
    m_faults.pages = m_owned.faults;
    m_faults.firstPage = m_owned.firstFault;
}

const Row *TableScan::next()
{
    for (;;) {
        if (m_slot >= m_slots && !nextPage())
            return nullptr;
        while (m_slot < m_slots) {
            if (readSlot(m_slot++)) {
                ++m_rows;
                return &m_row;
            }
        }
    }
}

// Pages of long values can be in a table's map; they contain no rows.
bool TableScan::nextPage()
{
    while (m_nextPage < m_owned.pages.size()) {
        const quint32 number = m_owned.pages[m_nextPage++];
        try {
            m_pages.copy(number, m_page);
            if (m_page[0] != kDataPage)
                throw Damage(Fault::WrongPageKind, number);
            if (Pages::owner(m_page) == kLongValueOwner)
                continue;
            if (Pages::owner(m_page) != m_table.page)
                throw Damage(Fault::WrongPageKind, number);
            m_slot = 0;
            m_slots = m_pages.slotCount(m_page);
            return true;
        } catch (const Damage &damage) {
            ++m_faults.pages;
            if (!m_faults.firstPage)
                m_faults.firstPage = Damage(damage.fault(), number);
        }
    }
    return false;
}

bool TableScan::readSlot(int slot)
{
    const quint32 number = m_owned.pages[m_nextPage - 1];
    try {
        const quint16 flags = m_pages.slot(m_page, slot) & kSlotDeleted;
        if (flags & kSlotHidden)
            return false;
        Bytes bytes = m_pages.row(m_page, slot);
        if (flags & kSlotPointer)
            bytes = follow(bytes);
        m_row.parse(bytes, m_table, m_pages.isJet4());
        return true;
    } catch (const Damage &damage) {
        ++m_faults.rows;
        if (!m_faults.firstRow)
            m_faults.firstRow = Damage(damage.fault(), damage.page() ? damage.page() : number);
        return false;
    }
}

Bytes TableScan::follow(Bytes pointer)
{
    for (int moves = 0; moves < kMostMoves; ++moves) {
        const RowPointer target = RowPointer::of(u32At(pointer, 0));
        m_pages.copy(target.page, m_movedPage);
        if (m_movedPage[0] != kDataPage || Pages::owner(m_movedPage) != m_table.page)
            throw Damage(Fault::WrongPageKind, target.page);
        const quint16 flags = m_pages.slot(m_movedPage, target.slot) & kSlotDeleted;
        const Bytes bytes = m_pages.row(m_movedPage, target.slot);
        if (flags == kSlotHidden)
            return bytes;
        if (!(flags & kSlotPointer))
            throw Damage(Fault::BadOffset, target.page);
        pointer = bytes;
    }
    throw Damage(Fault::EndlessChain);
}

} // namespace jet::format
