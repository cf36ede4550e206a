#pragma once
#include <dao/values/Errors.h>
#include <dao/values/Schema.h>

namespace dao::store {

/// The exception for one of the engine's numbers; source is the object that failed ("DAO.Database").
DaoException engineError(int number, const QString &source, const QStringList &arguments = {});

/// The same where the number's own text does not say which field (or index) it is about: that stands in the hint.
DaoException fieldError(int number, const QString &source, const QString &table, const FieldInfo &field);

/// The file is no longer the one that was opened (3024).
DaoException movedError(const QString &source, const QString &path);

/// What the inner engine reported, with what is needed to say it in the words of the engine.
struct EngineFailure
{
    int extendedCode = 0;
    int systemError = 0;                ///< errno of a failure to read or write
    QString text;                       ///< the inner engine's own; read for names, never shown
    QString path;                       ///< of the database file
    QString source;                     ///< the object that failed, "DAO.Database"
    bool opening = false;               ///< while the file was being opened
    bool writing = false;               ///< the statement changes something
    const SchemaView *schema = nullptr; ///< to name rules and fields; may be null
};

/// The one place where failures of the inner engine become the engine's own. Throws DaoException, or DaoCancelled when
/// the user stopped the statement.
[[noreturn]] void raise(const EngineFailure &failure);

/// The same for a CHECK constraint, by its name, that rows were found to break.
[[noreturn]] void raiseCheck(const QString &constraintName, const QString &source, const SchemaView *schema);

/// Names of the CHECK constraints in the file. They tell which field of which table refused and why: a kind, ':', the
/// table, and, for a rule of a field, '.' and the field. (Names of tables and fields never hold a '.'.)
namespace constraint {
inline constexpr char16_t type[] = u"type";
inline constexpr char16_t size[] = u"size";
inline constexpr char16_t empty[] = u"empty";
inline constexpr char16_t rule[] = u"rule";
/// "rule:report.pcnt"; without a field "rule:report".
QString name(const char16_t *kind, const QString &table, const QString &field = {});
} // namespace constraint

/// The text with which triggers and functions report an error of the engine: "dao:3201:You cannot ...".
QString raiseText(int number, const QString &text);

/// The same for a function or trigger that saw that the user wants to stop.
inline constexpr char16_t cancelText[] = u"dao:cancel";

} // namespace dao::store
