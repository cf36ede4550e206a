#pragma once
#include <dao/values/Errors.h>
#include <dao/values/Schema.h>

namespace dao::store {

/// The exception for an error number. source is the object that failed ("DAO.Database").
DaoException engineError(int number, const QString &source, const QStringList &arguments = {});

/// The exception for an error whose text does not name the field or index: the hint names it.
DaoException fieldError(int number, const QString &source, const QString &table, const FieldInfo &field);

/// The error for a path that now names another file than the open one (3024).
DaoException movedError(const QString &source, const QString &path);

/// An error reported by SQLite, with the context that is needed to translate it.
struct EngineFailure
{
    int extendedCode = 0;
    int systemError = 0;                ///< errno of a failure to read or write
    QString text;                       ///< SQLite's message; parsed for names, never shown
    QString path;                       ///< of the database file
    QString source;                     ///< the object that failed, "DAO.Database"
    bool opening = false;               ///< while the file was being opened
    bool writing = false;               ///< the statement changes something
    const SchemaView *schema = nullptr; ///< to name rules and fields; may be null
};

/// The only place that translates errors of SQLite to errors of the engine. Throws DaoException, or tarnwick::Cancelled
/// if the user cancelled the statement.
[[noreturn]] void raise(const EngineFailure &failure);

/// Throws the error for a violated CHECK constraint of that name.
[[noreturn]] void raiseCheck(const QString &constraintName, const QString &source, const SchemaView *schema);

/// Names of the CHECK constraints in the file. They identify the rule, table and field in an error: kind, ':', table,
/// and for a field '.' and the field. (Names of tables and fields cannot contain '.'.)
namespace constraint {
inline constexpr char16_t kType[] = u"type";
inline constexpr char16_t kSize[] = u"size";
inline constexpr char16_t kEmpty[] = u"empty";
inline constexpr char16_t kRule[] = u"rule";
/// "rule:report.pcnt"; without a field "rule:report".
QString name(const char16_t *kind, const QString &table, const QString &field = {});
} // namespace constraint

/// The text with which triggers and functions report an error of the engine: "dao:3201:You cannot ...".
QString raiseText(int number, const QString &text);

/// The text with which a function or trigger reports that the user cancelled.
inline constexpr char16_t kCancelText[] = u"dao:cancel";

} // namespace dao::store
