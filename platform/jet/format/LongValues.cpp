#include "LongValues.h"

namespace jet::format {
namespace {

constexpr quint32 kInRow = 0x80000000;
constexpr quint32 kOneRow = 0x40000000;
constexpr quint32 kLengthBits = 0x3FFFFFFF;
constexpr size_t kHead = 12;

} // namespace

LongValues::LongValues(Pages &pages)
    : m_pages(pages)
    , m_allowance(quint64(pages.count()) * pages.pageSize())
{
}

Bytes LongValues::read(Bytes field)
{
    if (field.size() < kHead)
        throw Damage(Fault::BadLength);
    const quint32 head = u32At(field, 0);
    const size_t length = head & kLengthBits;
    if (head & kInRow)
        return part(field, kHead, length);
    if (length == 0)
        return {};
    chargeBytes(length);
    const RowPointer pointer = RowPointer::of(u32At(field, 4));
    if (head & kOneRow)
        return part(rowAt(pointer), 0, length);
    readChain(pointer, length);
    return m_value;
}

void LongValues::chargeBytes(size_t length)
{
    if (length > m_allowance)
        throw Damage(Fault::Overlapping);
    m_allowance -= length;
}

Bytes LongValues::rowAt(RowPointer pointer)
{
    const Bytes page = m_pages.view(pointer.page);
    if (page[0] != kDataPage || Pages::owner(page) != kLongValueOwner)
        throw Damage(Fault::WrongPageKind, pointer.page);
    if (m_pages.slot(page, pointer.slot) & kSlotDeleted)
        throw Damage(Fault::BadOffset, pointer.page);
    return m_pages.row(page, pointer.slot);
}

// Every link contains at least one byte, so the chain ends once the stated length is reached.
void LongValues::readChain(RowPointer first, size_t length)
{
    m_value.clear();
    m_value.reserve(length);
    RowPointer next = first;
    while (m_value.size() < length) {
        const Bytes row = rowAt(next);
        if (row.size() <= 4 || row.size() - 4 > length - m_value.size())
            throw Damage(Fault::BadLength, next.page);
        m_value.insert(m_value.end(), row.begin() + 4, row.end());
        next = RowPointer::of(u32At(row, 0));
    }
}

} // namespace jet::format
