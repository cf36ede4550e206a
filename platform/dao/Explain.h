#pragma once
#include "Database.h"

namespace dao {

/// The result of explain(): what a statement reads, how it is run, and why its rows cannot be edited.
struct Explanation
{
    /// One SQL text that is passed to SQLite, and SQLite's plan for it.
    struct Step
    {
        QString purpose; ///< one or a few words: "rows", "keys", "step 2"
        QString sql;
        QStringList plan; ///< one line of EXPLAIN QUERY PLAN each, indented; empty if the text reads a table that an
                          ///< earlier step creates
    };

    QString kind; ///< "SELECT", "UPDATE" and so on, or what a definition does
    QList<sql::Parameter> parameters;
    QList<sql::Column> columns; ///< for SELECT and SELECT INTO; for a cross table only the row headings
    bool returnsRows = false;
    /// For the statement itself; the read-only state of the database is not considered.
    sql::NotUpdatable whyNot = sql::NotUpdatable::No;
    QList<Step> steps;
};

/// Compiles a statement and queries the plans without running it. Throws the same errors as compiling.
Explanation explain(Database &database, const QString &sql);

/// SQLite's plan for a text of SQLite SQL, one line per entry, indented by depth.
QStringList queryPlan(Database &database, const QString &innerSql);

} // namespace dao
