#pragma once
#include <brannock/Project.h>
#include <brannock/Report.h>
#include <functional>

namespace bench {

/// The results of a component of some 3,400 tubes, inspected again and again until there are that many: as an upload
/// would get them, cal by cal.
void makeResults(qint64 rows, const std::function<void(const brannock::ReportEntry &)> &take);

/// The project that they belong to.
const brannock::Project &resultsProject();

/// A database of the whole schema without rows, under that name; one that is there is replaced.
void makeDatabase(const QString &path);

/// A database with that many rows in 'report', its eleven indexes and statistics. Made once and kept below the folder
/// for temporary files, since five million rows take minutes: it is to be read only.
QString reportDatabase(qint64 rows);

} // namespace bench
