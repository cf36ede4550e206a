#include "ErrorTranslation.h"

#include "SystemTables.h"

#include <algorithm>
#include <cerrno>
#include <QLoggingCategory>
#include <sqlite3.h>

using namespace Qt::StringLiterals;

Q_LOGGING_CATEGORY(lcEngine, "dao.engine", QtWarningMsg)

namespace dao::store {

namespace {

[[noreturn]] void raise(const EngineFailure &failure, int number, const QStringList &arguments = {})
{
    throw engineError(number, failure.source, arguments);
}

struct FieldName
{
    QString table;
    QString field;
    QString full() const { return field.isEmpty() ? table : QString(table + u'.' + field); }
};

// "table.field", as SQLite names columns in its messages.
FieldName splitName(QStringView name)
{
    const qsizetype dot = name.indexOf(u'.');
    if (dot < 0)
        return {name.toString(), {}};
    return {name.left(dot).toString(), name.mid(dot + 1).toString()};
}

const TableInfo *tableOf(const EngineFailure &failure, const FieldName &name)
{
    return failure.schema ? failure.schema->findTable(name.table) : nullptr;
}

const FieldInfo *fieldOf(const EngineFailure &failure, const FieldName &name)
{
    const TableInfo *table = tableOf(failure, name);
    return table ? table->field(name.field) : nullptr;
}

[[noreturn]] void raiseForField(const EngineFailure &failure, int number, const FieldName &name)
{
    const TableInfo *table = tableOf(failure, name);
    const FieldInfo *field = fieldOf(failure, name);
    if (!table || !field)
        raise(failure, number);
    throw fieldError(number, failure.source, table->name, *field);
}

/// Parses the names after the colon: "UNIQUE constraint failed: report.sec, report.row".
[[noreturn]] void raiseDuplicate(const EngineFailure &failure)
{
    const QStringList columns = failure.text.mid(failure.text.indexOf(u": "_s) + 2).split(u", "_s);
    const TableInfo *table = tableOf(failure, splitName(columns.first()));
    QStringList fields;
    for (const QString &column : columns)
        fields.append(splitName(column).field);
    const DaoException error = engineError(error::DuplicateKey, failure.source);
    if (!table)
        throw error;
    for (const IndexInfo &index : table->indexes) {
        const bool same =
            index.unique && std::ranges::equal(index.fields, fields, [](const auto &field, const auto &name) {
                return field.name.compare(name, Qt::CaseInsensitive) == 0;
            });
        if (same)
            throw DaoException(error).withHint(u"It is index '%1' of table '%2'."_s.arg(index.name, table->name));
    }
    // The index that is being created.
    throw DaoException(error).withHint(
        u"Rows of table '%1' are the same in '%2'."_s.arg(table->name, fields.join(u"', '"_s)));
}

// Parses "NOT NULL constraint failed: report.sec". A field that is not required is part of a key.
[[noreturn]] void raiseNotNull(const EngineFailure &failure)
{
    FieldName name = splitName(QStringView(failure.text).mid(failure.text.indexOf(u": "_s) + 2));
    const FieldInfo *field = fieldOf(failure, name);
    if (field && !field->required)
        raiseForField(failure, error::NullKey, name);
    // While a table is rebuilt it has a temporary name.
    if (const TableInfo *table = tableOf(failure, name))
        name.table = table->name;
    raise(failure, error::RequiredField, {name.full()});
}

// The text of the rule's author has priority over the standard text.
[[noreturn]] void raiseRule(const EngineFailure &failure, const FieldName &name)
{
    QString rule;
    QString text;
    if (name.field.isEmpty()) {
        if (const TableInfo *table = tableOf(failure, name)) {
            rule = table->validationRule;
            text = table->validationText;
        }
    } else if (const FieldInfo *field = fieldOf(failure, name)) {
        rule = field->validationRule;
        text = field->validationText;
    }
    if (!text.isEmpty())
        throw DaoException(error::ValidationText, failure.source, text);
    raise(failure, error::ValidationRule, {rule, name.full()});
}

// Parses the name of a constraint: see the namespace constraint.
[[noreturn]] void raiseCheck(const EngineFailure &failure, const QString &constraintName)
{
    const qsizetype colon = constraintName.indexOf(u':');
    const QStringView kind = QStringView(constraintName).left(qMax<qsizetype>(colon, 0));
    const FieldName name = splitName(QStringView(constraintName).mid(colon + 1));
    if (kind == constraint::kSize)
        raiseForField(failure, error::FieldTooSmall, name);
    if (kind == constraint::kEmpty)
        raise(failure, error::ZeroLength, {name.full()});
    if (kind == constraint::kType) {
        const FieldInfo *field = fieldOf(failure, name);
        raiseForField(failure, field && isNumericType(field->type) ? error::NumericOverflow : error::ConversionFailed,
                      name);
    }
    raiseRule(failure, name);
}

/// Translates errors that triggers and functions report as text. Returns if the text is not one of these.
void raiseOwn(const EngineFailure &failure)
{
    if (!failure.text.startsWith(u"dao:"_s))
        return;
    if (failure.text == kCancelText)
        throw tarnwick::Cancelled();
    const qsizetype colon = failure.text.indexOf(u':', 4);
    if (colon < 0)
        return;
    // "dao:11@7,5:Division by zero.": number, start and length in the user's text. The text is not known here, so line
    // and column are set later.
    const QStringView head = QStringView(failure.text).mid(4, colon - 4);
    const qsizetype at = head.indexOf(u'@');
    SourceRange where;
    if (at >= 0) {
        const QStringView place = head.mid(at + 1);
        const qsizetype comma = place.indexOf(u',');
        where.start = place.left(comma).toInt();
        where.length = place.mid(comma + 1).toInt();
    }
    throw DaoException((at < 0 ? head : head.left(at)).toInt(), failure.source, failure.text.mid(colon + 1), where);
}

[[noreturn]] void raiseConstraint(const EngineFailure &failure)
{
    switch (failure.extendedCode) {
    case SQLITE_CONSTRAINT_NOTNULL:
        raiseNotNull(failure);
    case SQLITE_CONSTRAINT_CHECK:
        raiseCheck(failure, failure.text.mid(failure.text.indexOf(u": "_s) + 2));
    case SQLITE_CONSTRAINT_UNIQUE:
    case SQLITE_CONSTRAINT_PRIMARYKEY:
    case SQLITE_CONSTRAINT_ROWID:
        raiseDuplicate(failure);
    case SQLITE_CONSTRAINT_DATATYPE:
        raise(failure, error::ConversionFailed);
    default:
        raise(failure, error::Internal, {QString::number(failure.extendedCode)});
    }
}

[[noreturn]] void raiseSqlError(const EngineFailure &failure)
{
    static const QString kNoTable = u"no such table: "_s;
    QString missingTable;
    if (failure.text.startsWith(kNoTable))
        missingTable = failure.text.mid(kNoTable.size()).remove(u"main."_s);
    // SQLite does not find a name that the catalog contains: another program has changed the file.
    if (failure.opening || failure.text.startsWith(u"no such column"_s) || isSystemTableName(missingTable))
        raise(failure, error::DatabaseDamaged, {failure.path});
    if (!missingTable.isEmpty())
        raise(failure, error::UnknownSource, {missingTable});
    // Messages of SQLite's limits for parser, planner and expressions; all become 3360 "too complex".
    for (const QStringView limit : {u"parser stack overflow", u"Expression tree is too large", u"too many",
                                    u"at most 64 tables", u"no query solution"}) {
        if (failure.text.contains(limit))
            raise(failure, error::TooComplex);
    }
    if (failure.text.contains(u"overflow"_s))
        raise(failure, error::Overflow);
    raise(failure, error::Internal, {QString::number(failure.extendedCode)});
}

} // namespace

void raiseCheck(const QString &constraintName, const QString &source, const SchemaView *schema)
{
    EngineFailure failure;
    failure.source = source;
    failure.schema = schema;
    raiseCheck(failure, constraintName);
}

QString constraint::name(const char16_t *kind, const QString &table, const QString &field)
{
    QString name = QString::fromUtf16(kind) + u':' + table;
    if (!field.isEmpty())
        name += u'.' + field;
    return name;
}

DaoException engineError(int number, const QString &source, const QStringList &arguments)
{
    return DaoException(number, source, errorText(number, arguments));
}

DaoException fieldError(int number, const QString &source, const QString &table, const FieldInfo &field)
{
    const QString name = table.isEmpty() ? field.name : QString(table + u'.' + field.name);
    QString hint = u"It is field '%1'."_s.arg(name);
    if (number == error::FieldTooSmall && field.size > 0)
        hint = u"Field '%1' holds %2 characters."_s.arg(name).arg(field.size);
    return engineError(number, source).withHint(hint);
}

DaoException movedError(const QString &source, const QString &path)
{
    return engineError(error::FileNotFound, source, {path})
        .withHint(
            u"It was moved, deleted or replaced by another file while it was open. Nothing was stored in the file "
            u"that is there now; connect to it again."_s);
}

/// Reading and writing that the system refused.
[[noreturn]] static void raiseDisk(const EngineFailure &failure)
{
    switch (failure.systemError) {
    case EFBIG:
        throw engineError(error::DiskFull, failure.source)
            .withHint(u"A file would become larger than this program may make it (limit on the size of files), or "
                      u"than the file system allows."_s);
    case EDQUOT:
        throw engineError(error::DiskFull, failure.source)
            .withHint(u"What this user may store on the disk (quota) is used up."_s);
    case ENOSPC:
        raise(failure, error::DiskFull);
    default:
        raise(failure, error::DiskError, {failure.path});
    }
}

QString raiseText(int number, const QString &text)
{
    return u"dao:"_s + QString::number(number) + u':' + text;
}

[[noreturn]] void raise(const EngineFailure &failure)
{
    qCDebug(lcEngine) << failure.extendedCode << failure.text;
    raiseOwn(failure);
    switch (failure.extendedCode & 0xff) {
    case SQLITE_CONSTRAINT:
        raiseConstraint(failure);
    case SQLITE_INTERRUPT:
        throw tarnwick::Cancelled();
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
    case SQLITE_PROTOCOL:
        raise(failure, failure.writing && !failure.opening ? error::FileLocked : error::FileInUse, {failure.path});
    case SQLITE_FULL:
        raise(failure, error::DiskFull);
    case SQLITE_READONLY:
        if (failure.extendedCode == SQLITE_READONLY_DBMOVED)
            throw movedError(failure.source, failure.path);
        // The rollback journal of an interrupted change must be rolled back first, which needs write permission.
        if (failure.extendedCode == SQLITE_READONLY_ROLLBACK && failure.opening)
            throw engineError(error::CannotOpenFile, failure.source, {failure.path})
                .withHint(
                    u"An unfinished change must be undone first, but the file or its folder cannot be written to."_s);
        if (failure.opening)
            raise(failure, error::CannotOpenFile, {failure.path});
        raise(failure, error::ReadOnly);
    case SQLITE_NOTADB:
        raise(failure, error::UnrecognizedFormat, {failure.path});
    case SQLITE_CORRUPT:
        raise(failure, error::DatabaseDamaged, {failure.path});
    case SQLITE_CANTOPEN:
    case SQLITE_PERM:
        raise(failure, error::CannotOpenFile, {failure.path});
    case SQLITE_IOERR:
        raiseDisk(failure);
    case SQLITE_NOMEM:
        raise(failure, error::OutOfResources);
    case SQLITE_TOOBIG:
        raise(failure, error::FieldTooSmall);
    case SQLITE_MISMATCH:
        raise(failure, error::ConversionFailed);
    case SQLITE_AUTH:
        raise(failure, error::ReadOnly);
    default:
        raiseSqlError(failure);
    }
}

} // namespace dao::store
