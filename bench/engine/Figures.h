#pragma once
#include <bench/PlainDatabase.h>
#include <dao/Database.h>
#include <dao/Recordset.h>

namespace bench {

/// Table 'report' of that many rows, open both ways.
class Opened
{
public:
    explicit Opened(qint64 rows);
    explicit Opened(const QString &path);

    PlainDatabase plain;
    dao::Workspace workspace;
    dao::Database database{workspace};
};

extern const QString kHistorySql;
extern const QString kCalListSql;

/// Reads all cells of the current row; the sum is of no meaning but that all was read.
qint64 readRow(const dao::Recordset &rows);

/// Bytes that this process holds, and the most it held since resetPeak().
qint64 residentBytes();
qint64 peakBytes();
void resetPeak();

} // namespace bench
