#pragma once
#include "PlainDatabase.h"

#include <brannock/Report.h>
#include <memory>

namespace bench {

/// Inserts the rows of 'report' that an upload would store, with one prepared statement of SQLite in one transaction:
/// the lower bound of the cost. Aborts on any error.
class PlainInserts
{
public:
    explicit PlainInserts(const QString &databasePath);

    void add(const brannock::ReportEntry &entry);
    void commit();

private:
    PlainDatabase m_database;
    std::unique_ptr<PlainStatement> m_insert;
};

void insertPlainly(const QString &databasePath, const brannock::Report &report);

} // namespace bench
