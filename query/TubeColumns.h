#pragma once
#include "QueryResult.h"

#include <ellery/SteamGen.h>

namespace query {

/// The columns of a result that name tubes: "row", "col" and, where the component has sections, "sec". Everything that
/// reads tubes from a query's records reads them through here.
class TubeColumns
{
public:
    /// The value of one of the columns in the record that is read. May throw the engine's exceptions.
    using Cell = std::function<dao::Value(int column)>;

    TubeColumns(const QStringList &columns, const ellery::SteamGen &steamGen);

    bool hasRow() const { return m_row >= 0; }
    bool hasCol() const { return m_col >= 0; }
    /// A result without "sec" will do where the component has no sections.
    bool hasSec() const { return m_sec >= 0 || !m_steamGen->hasSections(); }
    bool isComplete() const { return hasRow() && hasCol() && hasSec(); }

    /// Index of the tube that a record names, or -1. Whole numbers are the numbers of row, column and section, whatever
    /// the component's labels are; texts are its labels. No display format has a part in it. Without a "sec" column the
    /// section is 0. A record that was deleted meanwhile names no tube.
    int tube(const Cell &cell) const;
    /// Of a record without a tube: the column of the address that could not be calculated, or -1. May throw the
    /// engine's exceptions.
    int failedColumn(const Cell &cell) const;

private:
    int number(const dao::Value &value, ellery::Axis axis) const;

    const ellery::SteamGen *m_steamGen;
    int m_row;
    int m_col;
    int m_sec;
};

/// The number of distinct tubes of the component in a result, -1 when the result does not name tubes. The tubes stay
/// marked.
int totalTubes(const QueryResult &result, ellery::SteamGen &steamGen);

} // namespace query
