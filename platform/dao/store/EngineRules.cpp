#include "EngineRules.h"

#include "Connection.h"
#include "ErrorTranslation.h"
#include "TableDefinition.h"

#include <dao/sql/Compiler.h>

using namespace Qt::StringLiterals;

namespace dao::store {

namespace {

QString brokenText(const TableInfo &table, const FieldInfo &field)
{
    if (!field.validationText.isEmpty())
        return raiseText(error::ValidationText, field.validationText);
    return raiseText(error::ValidationRule,
                     errorText(error::ValidationRule, {field.validationRule, table.name + u'.' + field.name}));
}

void installRule(Connection &connection, const TableInfo &table, const FieldInfo &field)
{
    const QString column = sql::quotedName(field.name);
    const QString rule = sql::ruleWithFunctions(field.validationRule, field);
    for (const QString &event : {u"INSERT"_s, u"UPDATE"_s}) {
        const QString name = sql::quotedName(QString(u"rule:"_s + table.name + u'.' + field.name + u':' + event));
        // The rule names its field plainly; the inner select lends it that name. Null passes, as it does in the file's
        // rules.
        connection.run(u"CREATE TEMP TRIGGER "_s + name + u" BEFORE "_s + event + u" ON main."_s +
                       sql::quotedName(table.name) + u" WHEN NOT coalesce((SELECT "_s + rule + u" FROM (SELECT NEW."_s +
                       column + u" AS "_s + column + u")), 1) BEGIN SELECT RAISE(ABORT, "_s +
                       literal(brokenText(table, field)) + u"); END"_s);
    }
}

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

void installEngineRules(Connection &connection, const CatalogContents &contents)
{
    if (connection.isReadOnly())
        return;
    dropRules(connection);
    for (const StoredTable &table : contents.tables) {
        for (const FieldInfo &field : table.info.fields) {
            if (needsEngine(field))
                installRule(connection, table.info, field);
        }
    }
}

} // namespace dao::store
