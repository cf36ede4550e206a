#pragma once
#include <dao/values/DaoException.h>

namespace db {

/// Whether the failure is one of the whole file, or of the disk: what is tried next on that database will fail as well.
bool isOfWholeFile(const dao::DaoException &exception);

} // namespace db
