#pragma once
#include <QList>
#include <QString>

namespace jet::format {

/// A source of a stored query: a table or query with an alias, or a derived table with its SQL.
struct JoinSource
{
    QString table;
    QString alias;
    QString statement;
};

/// A join condition between two sources, given by alias or name. Several conditions of one pair are combined with AND.
struct JoinTerm
{
    QString left;
    QString right;
    QString condition;
    int kind = 1; ///< 1 inner, 2 left, 3 right
};

/// Text after FROM or UPDATE: joined sources in parentheses as the dialect requires, the others after commas. Throws
/// Damage if a term refers to an unknown source.
QString joinText(const QList<JoinSource> &sources, const QList<JoinTerm> &terms);

} // namespace jet::format
