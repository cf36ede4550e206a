#pragma once
#include <db/DatabaseSession.h>
#include <optional>

namespace query {

/// What to do if a query of the name exists already.
enum class Overwrite { Ask, Yes };

/// Stores a query in the database under a name. The text that it replaces is kept as a version (QueryVersions). Refuses
/// names of views (1072). A text with a syntax error and other failures are reported (1073). Returns true if it was
/// stored.
bool storeQuery(db::DatabaseSession &session, const QString &name, const QString &sql, Overwrite overwrite);

/// Deletes a stored query without a question; its text is kept as a version. Failures are reported (1075).
bool deleteQuery(db::DatabaseSession &session, const QString &name);

/// The text of a stored query. A failure is reported (1074).
std::optional<QString> fetchQuery(db::DatabaseSession &session, const QString &name);

/// One line about a stored query.
struct StoredQueryInfo
{
    QString name;
    QString kind;           ///< "select", "cross table", "update", ...; empty if the text has a syntax error
    QStringList parameters; ///< names with types: "[least] Double"
    QString error;          ///< why it cannot be compiled; else empty
};

/// The stored queries shown to a user, in the order of the database. Throws the engine's exceptions.
QList<StoredQueryInfo> storedQueries(dao::Database &database);

} // namespace query
