#pragma once
#include "Database.h"

namespace dao {

/// What the engine makes of a statement: for whoever wants to know what it reads, why it is slow, or why its rows
/// cannot be edited.
struct Explanation
{
    /// One text that the inner engine is given, and how it goes about it.
    struct Step
    {
        QString purpose; ///< one or a few words: "rows", "keys", "step 2"
        QString sql;
        QStringList plan; ///< the inner engine's plan, a line each, indented; empty when only the step before tells
    };

    QString kind; ///< "SELECT", "UPDATE" and so on, or what a definition does
    QList<sql::Parameter> parameters;
    QList<sql::Column> columns; ///< of a select, also one INTO a table; a cross table has only its row heads here
    bool returnsRows = false;
    /// Of the statement itself; a database that was opened for reading is another matter.
    sql::NotUpdatable whyNot = sql::NotUpdatable::No;
    QList<Step> steps;
};

/// Compiles a statement and asks for the plans; runs nothing. Throws as the statement itself would when it is compiled.
Explanation explain(Database &database, const QString &sql);

/// The inner engine's plan for one of its own texts: a line each, indented by depth.
QStringList queryPlan(Database &database, const QString &innerSql);

} // namespace dao
