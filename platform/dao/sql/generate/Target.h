#pragma once
#include <dao/sql/plan/QuotedName.h>

namespace dao::sql::generate {

/// The spellings of the target SQL dialect: another database server would be added here.
struct Target
{
    QStringView functionPrefix;  ///< prefix of the engine's functions
    QStringView notingPrefix;    ///< prefix of the functions that note a failure and return Null
    QStringView placing;         ///< function that ends the statement with the place of a noted failure
    QStringView sourcePrefix;    ///< prefix of source aliases, followed by the source number
    QStringView columnPrefix;    ///< prefix of output columns of nested queries
    QStringView keyPrefix;       ///< prefix of key columns
    QStringView parameterPrefix; ///< prefix of parameters
    QStringView caseless;        ///< suffix of a text expression that is compared without case
    QStringView trueValue;       ///< a condition that is always true
    QStringView limit;           ///< " LIMIT "
    QStringView lesser;          ///< scalar minimum of two values
    QStringView greater;
    QStringView materialisedTable; ///< name of the temporary table of materialised rows
    QStringView temporary;         ///< schema of temporary tables
    QStringView stopFunction;      ///< returns 0; fails after the user has cancelled
};

/// SQLite.
const Target &sqliteTarget();

} // namespace dao::sql::generate
