#pragma once
#include <brannock/Report.h>
#include <dao/Database.h>

namespace results {

/// The identity of a cal, a calibration group of eddy-current data: the rows of 'report' that agree in these six
/// columns. Texts are compared exactly, case included.
struct Cal
{
    QString siteCode;
    QString comp;
    QString operType;
    QString outage;
    int sec = 0;
    int calNum = 0;

    static Cal of(const brannock::ReportEntry &entry);
    /// All texts are there, the section is 0 or more, the cal number greater than 0.
    bool isValid() const;
    bool operator==(const Cal &) const = default;
};

/// Whether an entry belongs to that cal, without making one.
bool belongsTo(const brannock::ReportEntry &entry, const Cal &cal);

/// Rows of 'report' that belong to the cal. Throws the engine's exceptions, and one for a text with a single quote.
qint64 countCalRows(dao::Database &database, const Cal &cal);
/// Deletes them and returns how many they were.
int deleteCalRows(dao::Database &database, const Cal &cal);

} // namespace results
