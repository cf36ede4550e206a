#pragma once
#include "Statement.h"

#include <dao/sql/plan/Compiled.h>

#include <functional>

namespace dao::store {

/// Runs the steps of a change inside the caller's savepoint. bind sets the parameters of each statement. Returns the
/// number of affected rows.
qint64 runSteps(Connection &connection, const QList<sql::ActionPlan::Step> &steps, Access access,
                const std::function<void(Statement &)> &bind);

} // namespace dao::store
