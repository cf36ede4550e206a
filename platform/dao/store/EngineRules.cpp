#include "EngineRules.h"

#include "Connection.h"
#include "ErrorTranslation.h"
#include "TableDefinition.h"

#include <dao/sql/Compiler.h>

using namespace Qt::StringLiterals;

namespace dao::store {

namespace {

/// set: the field or table that the rule belongs to.
QString brokenText(const QString &text, const QString &rule, const QString &set)
{
    return text.isEmpty() ? raiseText(error::ValidationRule, errorText(error::ValidationRule, {rule, set}))
                          : raiseText(error::ValidationText, text);
}

/// The rule uses plain field names; an inner SELECT gives the NEW values these names. Null passes, as in CHECK
/// constraints.
void install(Connection &connection, const TableInfo &table, const QString &name, const QList<FieldInfo> &fields,
             const QString &rule, const QString &broken)
{
    QStringList columns;
    for (const FieldInfo &field : fields)
        columns.append(u"NEW."_s + sql::quotedName(field.name) + u" AS "_s + sql::quotedName(field.name));
    for (const QString &event : {u"INSERT"_s, u"UPDATE"_s}) {
        connection.run(u"CREATE TEMP TRIGGER "_s + sql::quotedName(QString(u"rule:"_s + name + u':' + event)) +
                       u" BEFORE "_s + event + u" ON main."_s + sql::quotedName(table.name) +
                       u" WHEN NOT coalesce((SELECT "_s + rule + u" FROM (SELECT "_s + columns.join(u", "_s) +
                       u")), 1) BEGIN SELECT RAISE(ABORT, "_s + literal(broken) + u"); END"_s);
    }
}

// A rule that plain SQLite can check is a CHECK constraint already (see TableDefinition.h).
void installRules(Connection &connection, const TableInfo &table)
{
    for (const FieldInfo &field : table.fields) {
        const QString name = table.name + u'.' + field.name;
        if (needsEngine(field))
            install(connection, table, name, {field}, sql::ruleWithFunctions(field.validationRule, field),
                    brokenText(field.validationText, field.validationRule, name));
    }
    if (needsEngine(table))
        install(connection, table, table.name, table.fields, sql::tableRuleWithFunctions(table.validationRule, table),
                brokenText(table.validationText, table.validationRule, table.name));
}

// Temporary triggers are listed in temp.sqlite_schema only.
void dropRules(Connection &connection)
{
    QStringList names;
    {
        Statement triggers(connection, u"SELECT name FROM temp.sqlite_schema WHERE type = 'trigger' "
                                       "AND name LIKE 'rule:%'"_s);
        while (triggers.step())
            names.append(triggers.text(0));
    }
    for (const QString &name : names)
        connection.run(u"DROP TRIGGER temp."_s + sql::quotedName(name));
}

} // namespace

bool needsEngine(const FieldInfo &field)
{
    return !field.validationRule.trimmed().isEmpty() && !sql::ruleAsCheck(field.validationRule, field);
}

bool needsEngine(const TableInfo &table)
{
    return !table.validationRule.trimmed().isEmpty() && !sql::tableRuleAsCheck(table.validationRule, table);
}

void installEngineRules(Connection &connection, const CatalogContents &contents)
{
    if (connection.isReadOnly())
        return;
    dropRules(connection);
    for (const StoredTable &table : contents.tables)
        installRules(connection, table.info);
}

} // namespace dao::store
