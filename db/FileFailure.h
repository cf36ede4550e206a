#pragma once
#include <dao/values/DaoException.h>

namespace db {

/// Returns true if the failure concerns the whole file or the disk, so every further operation on the database will
/// fail too.
bool isOfWholeFile(const dao::DaoException &exception);

} // namespace db
