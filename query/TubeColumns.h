#pragma once
#include "QueryResult.h"

#include <ellery/SteamGen.h>

namespace query {

/// The columns of a result that name tubes: "row", "col" and, where the component has sections, "sec".
class TubeColumns
{
public:
    TubeColumns(const QueryResult &result, const ellery::SteamGen &steamGen);

    bool hasRow() const { return m_row >= 0; }
    bool hasCol() const { return m_col >= 0; }
    /// A result without "sec" will do where the component has no sections.
    bool hasSec() const { return m_sec >= 0 || !m_steamGen->hasSections(); }
    bool isComplete() const { return hasRow() && hasCol() && hasSec(); }

    /// The address that a row names: whole numbers as they are, texts through the component's labels, -1 for what is
    /// none; a missing "sec" is section 0.
    struct Address
    {
        int sec = 0;
        int row = -1;
        int col = -1;
    };
    Address address(qint64 row) const;
    /// Index of the tube a row names, or -1.
    int tube(qint64 row) const;

private:
    int number(qint64 row, int column, ellery::Axis axis) const;

    const QueryResult *m_result;
    const ellery::SteamGen *m_steamGen;
    int m_row;
    int m_col;
    int m_sec;
};

/// The number of distinct tubes of the component in a result, -1 when the result does not name tubes. The tubes stay
/// marked.
int totalTubes(const QueryResult &result, ellery::SteamGen &steamGen);

} // namespace query
