#pragma once
#include <brannock/Project.h>
#include <brannock/Report.h>
#include <functional>

namespace bench {

/// Generates the results of a component with about 3,400 tubes, inspected repeatedly until there are that many: cal by
/// cal, as for an upload.
void makeResults(qint64 rows, const std::function<void(const brannock::ReportEntry &)> &take);

/// The project that they belong to.
const brannock::Project &resultsProject();

/// Creates a database with the whole schema and no rows. An existing file is replaced.
void makeDatabase(const QString &path);

/// A database with that many rows in 'report', its eleven indexes and statistics. Creating five million rows takes
/// minutes, so it is created once and kept in the folder for temporary files; open it read-only.
QString reportDatabase(qint64 rows);

} // namespace bench
