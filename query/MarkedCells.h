#pragma once
#include "QueryResult.h"

#include <vector>

namespace query {

/// Sum, mean, least and largest of the marked cells of a result, and their number. Whole numbers and currency are added
/// exactly. Cells without a value, and cells that hold no number, only count. Reads the cells in portions, so that a
/// window stays responsive with a million marked rows.
class MarkedCells
{
public:
    /// A block of marked cells in rows as shown; blocks do not overlap.
    struct Block
    {
        int top;
        int left;
        int bottom;
        int right;
    };
    /// sourceRow: row of the result that is shown at a place.
    MarkedCells(const QueryResult &result, std::vector<Block> blocks, std::function<int(int)> sourceRow);

    /// Reads on for about so many milliseconds. Throws the engine's exceptions.
    void readOn(int milliseconds);
    bool isDone() const { return m_block == m_blocks.size(); }

    /// "Count 3   Sum 120   Mean 40   Min 20   Max 60"; "Count 3" if no cell holds a number; empty for fewer than two
    /// cells. Ends in "..." until all cells were read.
    QString text() const;

private:
    void readRow();
    void add(const dao::Value &value);
    void addExact(qint64 tenThousandths);
    void addReal(double number, bool isSingle);
    double sum() const;

    const QueryResult &m_result;
    std::vector<Block> m_blocks;
    std::function<int(int)> m_sourceRow;
    size_t m_block = 0;
    int m_row = 0; ///< the next row of the block
    qint64 m_cells = 0;
    qint64 m_values = 0; ///< cells with a value
    qint64 m_numbers = 0;
    // Sum of whole numbers and currency in ten-thousandths: high * kCarry + low.
    qint64 m_high = 0;
    qint64 m_low = 0;
    double m_real = 0;
    double m_lost = 0; ///< what rounding has lost of m_real
    int m_realDigits = 0;
    double m_least = 0;
    double m_largest = 0;
};

} // namespace query
