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

/// Queries that inspection engineers ask of such a project. Those with a tube address can be used as query fills of the
/// map.
QList<StoredQuery> storedQueries(const brannock::Project &project);
/// Writes them as query files into the project's folder "queries".
void writeQueries(const brannock::Project &project);

} // namespace demo
