#pragma once
#include <ellery/SteamGen.h>
#include <tarnwick/base/Error.h>

namespace setup {

/// Where the tubes are if the table has no columns x and y.
struct TubePattern
{
    double pitch = 0;               ///< distance of neighbouring tubes; 0: not given
    std::optional<bool> triangular; ///< not given: square or triangular is found from the positions
};

/// A table has lines that cannot be used. text() names each with file, line and reason.
class TableError : public tarnwick::Error
{
public:
    explicit TableError(const QStringList &problems);
};

/// The tubes of a table that a spreadsheet program has written.
struct TubeTable
{
    QList<ellery::Tube> tubes; ///< in the order of the file
    double pitch = 1;
    bool triangular = false;
    QStringList remarks; ///< what was found or left out, for the user

    /// Reads a text with cells apart by tabs, semicolons or commas, which the heading decides. The heading names the
    /// columns in any order: row (required), col or column (required), sec or section, x, y, periphery; others are
    /// left out. In texts with tabs or semicolons numbers may have a decimal comma. Without x and y the pattern gives
    /// the positions: rows lie upwards, columns to the right.
    ///
    /// Throws TableError with every line that cannot be used, tarnwick::FileError if the file cannot be read.
    static TubeTable read(const QString &path, const TubePattern &pattern);
};

} // namespace setup
