#pragma once
#include <brannock/Report.h>
#include <dao/Recordset.h>

#include <optional>
#include <vector>

namespace db {

/// Adds report entries as rows of table 'report', field by field (brannock::visitReportFields). Create one writer for
/// many entries: the constructor looks up the fields. Throws the engine's exceptions.
class ReportWriter
{
public:
    explicit ReportWriter(dao::Database &database);

    /// Adds one row. An entry without a valid time gets the zero date-time, in the entry too. Channel, measurement and
    /// locations of an "NDD" entry are not stored. Without a record number the table assigns the next one. After an
    /// exception nothing of the row is stored, and further entries can be added.
    void add(brannock::ReportEntry &entry, std::optional<qint32> recordNumber = std::nullopt);

private:
    class Row;

    dao::Recordset m_recordset;
    int m_recordNumber;         ///< ordinal of recd_num
    std::vector<int> m_columns; ///< ordinals in the order of visitReportFields(); -1: the table has no such column
    tarnwick::JDateTime m_lastTime;
    dao::Value m_lastTimeValue;
};

/// Reads rows of table 'report', or of a query that has columns of these names, as report entries.
class ReportReader
{
public:
    /// The recordset must be open and outlive the reader.
    explicit ReportReader(const dao::Recordset &recordset);

    /// The current row. A column that is missing or Null leaves the entry's default. Throws the engine's exceptions.
    brannock::ReportEntry read() const;

private:
    const dao::Recordset &m_recordset;
    std::vector<int> m_columns; ///< as in ReportWriter
};

} // namespace db
