#pragma once
#include <brannock/Project.h>
#include <QList>

namespace demo {

struct StoredQuery
{
    QString fileName; ///< with its extension
    QString title;    ///< printed above the result
    QString sql;      ///< Access SQL
};

/// Typical queries of inspection engineers on such a project. Those that return a tube address can be used as query
/// fills.
QList<StoredQuery> storedQueries(const brannock::Project &project);
/// Writes the queries as query files into the project's folder "queries".
void writeQueries(const brannock::Project &project);

} // namespace demo
