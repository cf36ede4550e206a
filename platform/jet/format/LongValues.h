#pragma once
#include "Pages.h"

namespace jet::format {

/// Reads Memo and OLE values, which are stored in the row, in one row of another page, or in a chain of such rows.
class LongValues
{
public:
    explicit LongValues(Pages &pages);

    /// Returns the whole value, valid until the next call. Throws Damage if it is shorter than its length. Values never
    /// share bytes, so if all values together are longer than the file, the file is damaged.
    Bytes read(Bytes field);

private:
    void chargeBytes(size_t length);
    Bytes rowAt(RowPointer pointer);
    void readChain(RowPointer first, size_t length);

    Pages &m_pages;
    quint64 m_allowance;
    std::vector<uchar> m_value;
};

} // namespace jet::format
