#pragma once
#include <bench/PlainDatabase.h>
#include <dao/Database.h>
#include <dao/Recordset.h>

namespace bench {

/// A 'report' table with that many rows, opened by the engine and by plain SQLite.
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

/// Reads all cells of the current row. The sum only ensures that every cell is read.
qint64 readRow(const dao::Recordset &rows);

/// A sum over the rows of a result that does not depend on their order: the same for the same rows, and, but for
/// chance, no other. Numbers count to ten digits, since sums of reals depend on the order of the rows.
class Checksum
{
public:
    void add(const dao::Recordset &row);
    void add(const PlainStatement &row);

    bool operator==(const Checksum &other) const = default;
    qint64 rows() const { return m_rows; }

private:
    void addRow(const QByteArray &cells);

    quint64 m_sum = 0;
    qint64 m_rows = 0;
};

} // namespace bench
