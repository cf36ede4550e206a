#pragma once
#include "Row.h"
#include "UsageMap.h"

namespace jet::format {

/// Faults found in a table's rows.
struct ScanFaults
{
    int pages = 0;
    int rows = 0;
    std::optional<Damage> firstPage;
    std::optional<Damage> firstRow;
};

/// Reads a table's rows in the order of their pages. A moved row is returned at its original place.
class TableScan
{
public:
    /// Throws Damage if the table's page map cannot be read.
    TableScan(Pages &pages, const TableDefinition &table);

    /// The next readable row, or null at the end. Valid until the next call; pages may be viewed meanwhile.
    const Row *next();
    qint64 rowsRead() const { return m_rows; }
    const ScanFaults &faults() const { return m_faults; }

private:
    bool nextPage();
    bool readSlot(int slot);
    Bytes follow(Bytes pointer);

    Pages &m_pages;
    const TableDefinition &m_table;
    OwnedPages m_owned;
    size_t m_nextPage = 0;
    std::vector<uchar> m_page;
    std::vector<uchar> m_movedPage;
    int m_slot = 0;
    int m_slots = 0;
    Row m_row;
    qint64 m_rows = 0;
    ScanFaults m_faults;
};

} // namespace jet::format
