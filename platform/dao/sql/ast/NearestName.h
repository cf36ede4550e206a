#pragma once
#include <QStringList>

namespace dao::sql {

/// The candidate that a mistyped name probably means: the one with the smallest edit distance (insertions, deletions,
/// substitutions, transpositions). Empty if none is near enough.
QString nearestName(QStringView name, const QStringList &candidates);

/// The text "Did you mean 'row'?", or empty.
QString didYouMean(QStringView name, const QStringList &candidates);

/// didYouMean() for a function name; it also knows names that other SQL systems use for our functions ("LENGTH").
QString didYouMeanFunction(const QString &name, const QStringList &functions);

} // namespace dao::sql
