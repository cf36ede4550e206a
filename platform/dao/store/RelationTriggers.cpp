#include "RelationTriggers.h"

#include "ErrorTranslation.h"
#include "TableDefinition.h"

#include <dao/sql/Compiler.h>

using namespace Qt::StringLiterals;

namespace dao::store {

namespace {

enum class Event { ForeignInsert, ForeignUpdate, KeyDelete, KeyUpdate };
constexpr Event kEvents[] = {Event::ForeignInsert, Event::ForeignUpdate, Event::KeyDelete, Event::KeyUpdate};

QString triggerName(const RelationInfo &relation, Event event)
{
    static const char16_t *const names[] = {u"insert", u"update", u"key_delete", u"key_update"};
    return u"relation:"_s + relation.name + u':' + QString::fromUtf16(names[int(event)]);
}

QString joined(const RelationInfo &relation, const QString &separator, auto &&term)
{
    QStringList terms;
    for (const RelationField &field : relation.fields)
        terms.append(term(sql::quotedName(field.field), sql::quotedName(field.foreignField)));
    return terms.join(separator);
}

QString raise(int number, const QString &table)
{
    return u"SELECT RAISE(ABORT, "_s + literal(raiseText(number, errorText(number, {table}))) + u");"_s;
}

QString trigger(const RelationInfo &relation, Event event, const QString &when, const QString &condition,
                const QString &body)
{
    const bool foreign = event == Event::ForeignInsert || event == Event::ForeignUpdate;
    QString sql = u"CREATE TRIGGER "_s + sql::quotedName(triggerName(relation, event)) + u" AFTER "_s + when +
                  u" ON "_s + sql::quotedName(foreign ? relation.foreignTable : relation.table);
    if (!condition.isEmpty())
        sql += u" WHEN "_s + condition;
    return sql + u" BEGIN "_s + body + u" END"_s;
}

// Refuses rows of the foreign table without a related row. Example, relation report.sec -> section.sec:
//     CREATE TRIGGER "relation:r:insert" AFTER INSERT ON "report" WHEN NEW."sec" IS NOT NULL AND NOT EXISTS (SELECT 1
//         FROM "section" AS _p WHERE _p."sec" = NEW."sec") BEGIN SELECT RAISE(ABORT, 'dao:3201:...'); END
QString foreignTrigger(const RelationInfo &relation, Event event)
{
    // A foreign key that contains Null needs no related row.
    const QString given = joined(relation, u" AND "_s, [](const QString &, const QString &foreign) -> QString {
        return u"NEW."_s + foreign + u" IS NOT NULL"_s;
    });
    const QString match = joined(relation, u" AND "_s, [](const QString &key, const QString &foreign) -> QString {
        return u"_p."_s + key + u" = NEW."_s + foreign;
    });
    QString when = u"INSERT"_s;
    if (event == Event::ForeignUpdate) {
        when = u"UPDATE OF "_s +
               joined(relation, u", "_s, [](const QString &, const QString &foreign) { return foreign; });
    }
    return trigger(relation, event, when,
                   given + u" AND NOT EXISTS (SELECT 1 FROM "_s + sql::quotedName(relation.table) + u" AS _p WHERE "_s +
                       match + u')',
                   raise(error::RelatedRecordRequired, relation.table));
}

// The rows of the foreign table that refer to the old row.
QString related(const RelationInfo &relation)
{
    return joined(relation, u" AND "_s,
                  [](const QString &key, const QString &foreign) -> QString { return foreign + u" = OLD."_s + key; });
}

QString existsRelated(const RelationInfo &relation)
{
    return u"EXISTS (SELECT 1 FROM "_s + sql::quotedName(relation.foreignTable) + u" WHERE "_s + related(relation) +
           u')';
}

// Deletes the related rows, or refuses the deletion of a row that has some.
QString deleteTrigger(const RelationInfo &relation)
{
    if (relation.attributes & DeleteCascade) {
        return trigger(relation, Event::KeyDelete, u"DELETE"_s, {},
                       u"DELETE FROM "_s + sql::quotedName(relation.foreignTable) + u" WHERE "_s + related(relation) +
                           u';');
    }
    return trigger(relation, Event::KeyDelete, u"DELETE"_s, existsRelated(relation),
                   raise(error::RelatedRecords, relation.foreignTable));
}

// Passes a changed key on to the related rows, or refuses the change.
QString updateTrigger(const RelationInfo &relation)
{
    const bool cascade = relation.attributes & UpdateCascade;
    // A change in letter case only leaves the key equal, but the new spelling must be cascaded.
    const QString collation = cascade ? u" COLLATE BINARY"_s : QString();
    const QString changed = joined(relation, u" OR "_s, [&](const QString &key, const QString &) -> QString {
        return u"OLD."_s + key + collation + u" IS NOT NEW."_s + key;
    });
    const QString when =
        u"UPDATE OF "_s + joined(relation, u", "_s, [](const QString &key, const QString &) { return key; });
    if (!cascade) {
        return trigger(relation, Event::KeyUpdate, when, u"("_s + changed + u") AND "_s + existsRelated(relation),
                       raise(error::RelatedRecords, relation.foreignTable));
    }
    const QString assignments = joined(relation, u", "_s, [](const QString &key, const QString &foreign) -> QString {
        return foreign + u" = NEW."_s + key;
    });
    return trigger(relation, Event::KeyUpdate, when, changed,
                   u"UPDATE "_s + sql::quotedName(relation.foreignTable) + u" SET "_s + assignments + u" WHERE "_s +
                       related(relation) + u';');
}

} // namespace

QStringList relationTriggers(const RelationInfo &relation)
{
    if (relation.attributes & DontEnforce)
        return {};
    return {foreignTrigger(relation, Event::ForeignInsert), foreignTrigger(relation, Event::ForeignUpdate),
            deleteTrigger(relation), updateTrigger(relation)};
}

QStringList relationTriggerNames(const RelationInfo &relation)
{
    QStringList names;
    for (const Event event : kEvents)
        names.append(triggerName(relation, event));
    return names;
}

QString relationIndexName(const RelationInfo &relation)
{
    return u"relation:"_s + relation.name;
}

QString relationIndexSql(const RelationInfo &relation)
{
    return u"CREATE INDEX "_s + sql::quotedName(relationIndexName(relation)) + u" ON "_s +
           sql::quotedName(relation.foreignTable) + u" ("_s +
           joined(relation, u", "_s, [](const QString &, const QString &foreign) { return foreign; }) + u')';
}

// Checks the rows that exist when a relation is created.
QString relationViolationSql(const RelationInfo &relation)
{
    const QString given = joined(relation, u" AND "_s, [](const QString &, const QString &foreign) -> QString {
        return u"_f."_s + foreign + u" IS NOT NULL"_s;
    });
    const QString match = joined(relation, u" AND "_s, [](const QString &key, const QString &foreign) -> QString {
        return u"_p."_s + key + u" = _f."_s + foreign;
    });
    return u"SELECT 1 FROM "_s + sql::quotedName(relation.foreignTable) + u" AS _f WHERE "_s + given +
           u" AND NOT EXISTS (SELECT 1 FROM "_s + sql::quotedName(relation.table) + u" AS _p WHERE "_s + match +
           u") LIMIT 1"_s;
}

} // namespace dao::store
