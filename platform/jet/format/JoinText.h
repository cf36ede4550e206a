#pragma once
#include <QList>
#include <QString>

namespace jet::format {

/// A source of a stored query: a table or query with an alias, or a derived table with its statement.
struct JoinSource
{
    QString table;
    QString alias;
    QString statement;
};

/// A join term between two sources, called by alias or name. Several terms of one pair are joined by AND.
struct JoinTerm
{
    QString left;
    QString right;
    QString condition;
    int kind = 1; ///< 1 inner, 2 left, 3 right
};

/// What stands behind FROM or UPDATE: joined sources in parentheses as the dialect asks, the others after commas.
/// Damage when a term names no source.
QString joinText(const QList<JoinSource> &sources, const QList<JoinTerm> &terms);

} // namespace jet::format
