#include "FileFailure.h"

#include <dao/values/Errors.h>

namespace db {

bool isOfWholeFile(const dao::DaoException &exception)
{
    switch (exception.number()) {
    case dao::error::DiskFull:
    case dao::error::DiskError:
    case dao::error::DatabaseDamaged:
    case dao::error::FileInUse:
    case dao::error::FileLocked:
    case dao::error::FileNotFound:
    case dao::error::NoTransaction:
    case dao::error::TooManyTransactions:
        return true;
    default:
        return false;
    }
}

} // namespace db
