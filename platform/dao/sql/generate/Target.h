#pragma once
#include <QString>

namespace dao::sql::generate {

/// How the inner engine spells what the generator needs: the seam at which another server engine would be added.
struct Target
{
    QStringView functionPrefix;  ///< before the names of our own functions
    QStringView notingPrefix;    ///< likewise, of those that note a failure and go on
    QStringView placing;         ///< function of a value whose failure, when noted, ends the statement with its place
    QStringView sourcePrefix;    ///< before the number of a source: its alias
    QStringView columnPrefix;    ///< before the number of an output column of a nested query
    QStringView keyPrefix;       ///< before the number of a key column
    QStringView parameterPrefix; ///< before the position of a parameter
    QStringView caseless;        ///< behind a text expression: compare without case
    QStringView trueValue;       ///< a condition that always holds
    QStringView limit;           ///< " LIMIT "
    QStringView lesser;          ///< scalar minimum of two values
    QStringView greater;
    QStringView materialisedTable; ///< name of the temporary table of rows that a change reads first
    QStringView temporary;         ///< schema of temporary tables
    QStringView stopFunction;      ///< gives 0, and fails once the user wants to stop
};

/// SQLite.
const Target &sqliteTarget();

QString quoted(QStringView name);

} // namespace dao::sql::generate
