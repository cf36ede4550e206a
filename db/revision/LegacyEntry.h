#pragma once
#include <brannock/Project.h>
#include <brannock/Report.h>
#include <dao/Recordset.h>

namespace db {

/// The site and component of a foreign database, as its table IDENT gives them.
struct LegacyIdent
{
    QString site;
    QString comp;
};

/// The rows of EXAMDATA as report entries. project supplies the outage, site and component where the foreign data has
/// none.
class LegacyEntries
{
public:
    /// Opens the rows, ordered by PRIMEKEY. Throws the engine's exceptions.
    LegacyEntries(dao::Database &database, const LegacyIdent &ident, const brannock::Project &project);

    /// What is read of EXAMDATA.
    static QStringList columns();

    /// False when there are no more.
    bool next();
    // Throw dao::DaoException (3421) for a value that is no number of the size that is wanted, or no date.
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

/// The digits of a reel's name ("R012A": 12) as a file number; 0 without digits, or with too many for a number.
int fileNumberOf(const QString &reel);
/// A test extent as its begin and end: six characters are two landmarks of three ("TEHTEC"), except full-length ones
/// ("F/L..."); everything else is the begin alone.
void splitExtent(const QString &extent, QString &begin, QString &end);

} // namespace db
