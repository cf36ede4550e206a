#pragma once
#include "Pages.h"

namespace jet::format {

/// Memo and OLE values, which lie in the row, in one row of another page, or in a chain of such rows.
class LongValues
{
public:
    explicit LongValues(Pages &pages);

    /// The whole value; it lives until the next call. Damage when it is not there as its length says. No two values of
    /// a file share their bytes, so all values together cannot be longer than the file: what asks for more is damaged.
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
