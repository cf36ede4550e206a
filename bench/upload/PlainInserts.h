#pragma once
#include <brannock/Report.h>

namespace bench {

/// The rows of 'report' that an upload would make, inserted by one prepared statement straight on the inner engine, in
/// one transaction: the least that storing them can cost. Aborts on any error.
void insertPlainly(const QString &databasePath, const brannock::Report &report);

} // namespace bench
