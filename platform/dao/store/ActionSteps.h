#pragma once
#include "Statement.h"

#include <dao/sql/Compiled.h>

#include <functional>

namespace dao::store {

/// Carries out the steps of a change, inside a savepoint of the caller's; bind gives each statement its parameters.
/// Returns the rows affected.
qint64 runSteps(Connection &connection, const QList<sql::ActionPlan::Step> &steps, Access access,
                const std::function<void(Statement &)> &bind);

} // namespace dao::store
