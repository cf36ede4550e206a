#pragma once
#include <brannock/Report.h>
#include <dao/Database.h>

namespace results {

/// Identity of a cal (a calibration group of eddy-current data): the rows of 'report' with equal values in these six
/// columns. Texts are compared exactly, including case.
struct Cal
{
    QString siteCode;
    QString comp;
    QString operType;
    QString outage;
    int sec = 0;
    int calNum = 0;

    static Cal of(const brannock::ReportEntry &entry);
    /// All texts are filled in, the section is at least 0 and the cal number greater than 0.
    bool isValid() const;
    bool operator==(const Cal &) const = default;
};

/// Returns true if the entry belongs to the cal. Does not build a Cal of the entry, which would be slower.
bool belongsTo(const brannock::ReportEntry &entry, const Cal &cal);

/// Counts the rows of 'report' that belong to the cal. Throws the engine's exceptions, also if a text contains a single
/// quote.
qint64 countCalRows(dao::Database &database, const Cal &cal);
/// Deletes these rows and returns their number.
int deleteCalRows(dao::Database &database, const Cal &cal);

} // namespace results
