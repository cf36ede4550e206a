#pragma once
#include <brannock/Report.h>
#include <dao/Recordset.h>
#include <optional>

namespace db {

/// Adds report entries as rows of table 'report', field by field. Create one writer for many entries: the constructor
/// looks up the fields. Throws the engine's exceptions.
class ReportWriter
{
public:
    explicit ReportWriter(dao::Database &database);
    ~ReportWriter();

    /// Adds one row. An entry without a valid time gets the zero date-time, in the entry too. Channel, measurement and
    /// locations of an "NDD" entry are not stored. Without a record number the table assigns the next one. After an
    /// exception nothing of the row is stored, and further entries can be added.
    void add(brannock::ReportEntry &entry, std::optional<qint32> recordNumber = std::nullopt);

private:
    struct Columns;

    void setNull(int column);
    void setText(int column, const QString &text);
    void setAddress(const brannock::ReportEntry &entry);
    void setMeasurement(const brannock::ReportEntry &entry);
    bool setPlace(const brannock::TubeLoc &place, bool wanted, int landmark, int offset, int point);
    void setLocations(const brannock::ReportEntry &entry);
    void setIdentity(const brannock::ReportEntry &entry);
    void setOrigin(const brannock::ReportEntry &entry);
    void setTime(brannock::ReportEntry &entry);

    dao::Recordset m_recordset;
    std::unique_ptr<Columns> m_columns;
    tarnwick::JDateTime m_lastTime;
    dao::Value m_lastTimeValue;
};

} // namespace db
