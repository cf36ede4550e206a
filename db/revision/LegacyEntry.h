#pragma once
#include <brannock/Project.h>
#include <brannock/Report.h>
#include <dao/Recordset.h>

namespace db {

/// Site and component of a foreign database, from its table IDENT.
struct LegacyIdent
{
    QString site;
    QString comp;
};

/// Reads the rows of EXAMDATA as report entries. project supplies outage, site and component if the foreign data has
/// none.
class LegacyEntries
{
public:
    /// Opens the rows, ordered by PRIMEKEY. Throws the engine's exceptions.
    LegacyEntries(dao::Database &database, const LegacyIdent &ident, const brannock::Project &project);

    /// The columns of EXAMDATA that are read.
    static QStringList columns();

    /// Moves to the next row. Returns false at the end.
    bool next();
    // Throw dao::DaoException (3421) if a value is not a number of the required size, or not a date.
    qint32 recordNumber() const;
    brannock::ReportEntry entry() const;

private:
    QString text(const QString &field) const;
    template <typename T>
    T value(const QString &field, dao::DataType type) const;
    qint16 shortNumber(const QString &field) const;
    qint32 longNumber(const QString &field) const;
    void setMeasurement(brannock::ReportEntry &entry) const;
    void setPlaces(brannock::ReportEntry &entry) const;

    dao::Recordset m_rows;
    LegacyIdent m_ident;
    const brannock::Project *m_project;
    bool m_started = false;
};

/// The digits of a reel's name ("R012A": 12) as file number; 0 if there are none or too many.
int fileNumberOf(const QString &reel);
/// Splits a test extent into begin and end: six characters are two landmarks of three characters ("TEHTEC"), except
/// full-length extents ("F/L..."). Any other text is the begin.
void splitExtent(const QString &extent, QString &begin, QString &end);

} // namespace db
