#pragma once
#include <QStringList>

namespace dao::sql {

/// The name that a mistyped one probably means: the nearest by letters inserted, left out, changed or swapped. Empty
/// when none is near enough.
QString nearestName(QStringView name, const QStringList &candidates);

/// "Did you mean 'row'?", or empty.
QString didYouMean(QStringView name, const QStringList &candidates);

/// The same for the name of a function: also where other systems call ours by that name ("LENGTH").
QString didYouMeanFunction(const QString &name, const QStringList &functions);

} // namespace dao::sql
