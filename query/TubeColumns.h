#pragma once
#include "QueryResult.h"

#include <ellery/SteamGen.h>

namespace query {

/// The columns of a result that identify tubes: "row", "col" and, if the component has sections, "sec". All code that
/// finds the tubes of a query's records uses this class.
class TubeColumns
{
public:
    /// Reads one of the columns in the current record. May throw the engine's exceptions.
    using Cell = std::function<dao::Value(int column)>;

    TubeColumns(const QStringList &columns, const ellery::SteamGen &steamGen);

    bool hasRow() const { return m_row >= 0; }
    bool hasCol() const { return m_col >= 0; }
    /// True if the result has a column "sec" or the component has no sections.
    bool hasSec() const { return m_sec >= 0 || !m_steamGen->hasSections(); }
    bool isComplete() const { return hasRow() && hasCol() && hasSec(); }

    /// Index of the tube that a record identifies, or -1. Whole numbers are numbers of row, column and section, even if
    /// the component has labels; texts are labels. Display formats are not used. Without a "sec" column the section is
    /// 0. A record that was deleted meanwhile gives -1.
    int tube(const Cell &cell) const;
    /// For a record without a tube: the address column that could not be calculated, or -1. May throw the engine's
    /// exceptions.
    int failedColumn(const Cell &cell) const;

private:
    int number(const dao::Value &value, ellery::Axis axis) const;

    const ellery::SteamGen *m_steamGen;
    int m_row;
    int m_col;
    int m_sec;
};

/// The columns of a result.
TubeColumns tubeColumnsOf(const QueryResult &result, const ellery::SteamGen &steamGen);

/// Number of distinct tubes of the component in a result; -1 if the result does not identify tubes.
int totalTubes(const QueryResult &result, const ellery::SteamGen &steamGen);

} // namespace query
