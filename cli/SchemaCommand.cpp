#include "ColumnPrinter.h"
#include "CommandLine.h"
#include "CommandTable.h"
#include "Target.h"
#include "TextOrJson.h"

#include <db/FieldDefinition.h>
#include <db/UnfinishedFile.h>
#include <jet/JetReader.h>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace cli {

using namespace Qt::StringLiterals;

namespace {

bool isSystemTable(const dao::TableInfo &table)
{
    return (table.attributes & dao::SystemObject) != 0;
}

bool isHiddenTable(const dao::TableInfo &table)
{
    return (table.attributes & dao::HiddenObject) != 0;
}

QString yes(bool flag)
{
    return flag ? u"yes"_s : QString();
}

/// The fields of an index in the notation of SQL.
QString fieldsText(const dao::IndexInfo &index)
{
    QStringList fields;
    for (const dao::IndexField &field : index.fields)
        fields.append(field.descending ? field.name + u" DESC"_s : field.name);
    return fields.join(u", "_s);
}

QStringList indexTraits(const dao::IndexInfo &index)
{
    const std::pair<bool, QString> traits[] = {{index.primary, u"primary"_s},
                                               {index.unique, u"unique"_s},
                                               {index.required, u"required"_s},
                                               {index.ignoreNulls, u"ignores nulls"_s},
                                               {index.foreign, u"of a relation"_s}};
    QStringList texts;
    for (const auto &[holds, text] : traits)
        if (holds)
            texts.append(text);
    return texts;
}

QStringList relationTraits(const dao::RelationInfo &relation)
{
    const std::pair<int, QString> traits[] = {{dao::RelationUnique, u"one to one"_s},
                                              {dao::DontEnforce, u"not enforced"_s},
                                              {dao::UpdateCascade, u"cascades updates"_s},
                                              {dao::DeleteCascade, u"cascades deletes"_s}};
    QStringList texts;
    for (const auto &[bit, text] : traits)
        if (relation.attributes & bit)
            texts.append(text);
    return texts;
}

/// The objects to be listed.
struct Contents
{
    QList<dao::TableInfo> tables;
    QList<dao::RelationInfo> relations;
    QList<dao::QueryInfo> queries;
};

/// All objects of a database, or one table or stored query with the objects related to it.
Contents contentsOf(const dao::Database &database, const QString &name, bool all)
{
    Contents contents;
    const auto wanted = [&name](const QString &candidate) {
        return name.isEmpty() || candidate.compare(name, Qt::CaseInsensitive) == 0;
    };
    for (const QString &table : database.tableNames()) {
        const dao::TableInfo &info = database.table(table);
        const bool listed = all || !name.isEmpty() || !(isSystemTable(info) || isHiddenTable(info));
        if (listed && wanted(table))
            contents.tables.append(info);
    }
    for (const QString &query : database.queryNames())
        if (wanted(query))
            contents.queries.append(database.query(query));
    for (const dao::RelationInfo &relation : database.relations())
        if (wanted(relation.table) || wanted(relation.foreignTable))
            contents.relations.append(relation);
    return contents;
}

/// Returns true if the file can be changed; the command itself opens it read-only.
bool canBeWritten(const Target &target)
{
    const QString &path = target.databasePath();
    return !jet::isJetFile(path) && dao::Database::mayWrite(path) && db::hasRoomForJournal(path);
}

class TextListing
{
public:
    void write(const Target &target, const Contents &contents) const
    {
        print(u"%1%2\n"_s.arg(target.databasePath(), canBeWritten(target) ? QString() : u" (read only)"_s));
        for (const dao::TableInfo &table : contents.tables)
            writeTable(table);
        if (!contents.relations.isEmpty())
            writeRelations(contents.relations);
        for (const dao::QueryInfo &query : contents.queries)
            print(u"\nStored query %1\n%2\n"_s.arg(query.name, query.sql.trimmed()));
    }

private:
    static void writeTable(const dao::TableInfo &table)
    {
        QStringList traits;
        if (isSystemTable(table))
            traits.append(u"system"_s);
        if (isHiddenTable(table))
            traits.append(u"hidden"_s);
        print(
            u"\nTable %1%2\n"_s.arg(table.name, traits.isEmpty() ? QString() : u" ("_s + traits.join(u", "_s) + u')'));
        ColumnPrinter fields({u"Field"_s, u"Type"_s, u"Size"_s, u"Auto"_s, u"Required"_s, u"Zero length"_s,
                              u"Default"_s, u"Rule"_s, u"Rule text"_s},
                             {false, false, true});
        for (const dao::FieldInfo &field : table.fields)
            fields.row({field.name, db::daoTypeName(field.type), QString::number(field.size),
                        yes(field.isAutoIncrement()), yes(field.required), yes(field.allowZeroLength),
                        field.defaultValue, field.validationRule, field.validationText});
        fields.end();
        if (!table.validationRule.isEmpty())
            print(u"Rule: %1  %2\n"_s.arg(table.validationRule, table.validationText));
        if (table.indexes.isEmpty())
            return;
        print(u"\n");
        ColumnPrinter indexes({u"Index"_s, u"Fields"_s, u"Kind"_s});
        for (const dao::IndexInfo &index : table.indexes)
            indexes.row({index.name, fieldsText(index), indexTraits(index).join(u", "_s)});
        indexes.end();
    }

    static void writeRelations(const QList<dao::RelationInfo> &relations)
    {
        print(u"\n");
        ColumnPrinter printer({u"Relation"_s, u"Table"_s, u"Foreign table"_s, u"Fields"_s, u"Kind"_s});
        for (const dao::RelationInfo &relation : relations) {
            QStringList pairs;
            for (const dao::RelationField &field : relation.fields)
                pairs.append(field.field + u" = "_s + field.foreignField);
            printer.row({relation.name, relation.table, relation.foreignTable, pairs.join(u", "_s),
                         relationTraits(relation).join(u", "_s)});
        }
        printer.end();
    }
};

QJsonObject fieldJson(const dao::FieldInfo &field)
{
    return {{u"name"_s, field.name},
            {u"type"_s, db::daoTypeName(field.type)},
            {u"size"_s, field.size},
            {u"autoNumber"_s, field.isAutoIncrement()},
            {u"required"_s, field.required},
            {u"allowZeroLength"_s, field.allowZeroLength},
            {u"default"_s, field.defaultValue},
            {u"rule"_s, field.validationRule},
            {u"ruleText"_s, field.validationText}};
}

/// All fields of an index, or only the descending ones.
QJsonArray fieldNames(const dao::IndexInfo &index, bool descendingOnly)
{
    QJsonArray names;
    for (const dao::IndexField &field : index.fields)
        if (field.descending || !descendingOnly)
            names.append(field.name);
    return names;
}

QJsonObject tableJson(const dao::TableInfo &table)
{
    QJsonArray fields;
    for (const dao::FieldInfo &field : table.fields)
        fields.append(fieldJson(field));
    QJsonArray indexes;
    for (const dao::IndexInfo &index : table.indexes)
        indexes.append(QJsonObject{{u"name"_s, index.name},
                                   {u"fields"_s, fieldNames(index, false)},
                                   {u"descending"_s, fieldNames(index, true)},
                                   {u"kind"_s, QJsonArray::fromStringList(indexTraits(index))}});
    return {{u"name"_s, table.name},
            {u"system"_s, isSystemTable(table)},
            {u"hidden"_s, isHiddenTable(table)},
            {u"fields"_s, fields},
            {u"indexes"_s, indexes},
            {u"rule"_s, table.validationRule},
            {u"ruleText"_s, table.validationText}};
}

QJsonObject json(const Target &target, const Contents &contents)
{
    QJsonArray tables;
    for (const dao::TableInfo &table : contents.tables)
        tables.append(tableJson(table));
    QJsonArray relations;
    for (const dao::RelationInfo &relation : contents.relations) {
        QJsonArray fields;
        for (const dao::RelationField &field : relation.fields)
            fields.append(QJsonArray{field.field, field.foreignField});
        relations.append(QJsonObject{{u"name"_s, relation.name},
                                     {u"table"_s, relation.table},
                                     {u"foreignTable"_s, relation.foreignTable},
                                     {u"fields"_s, fields},
                                     {u"kind"_s, QJsonArray::fromStringList(relationTraits(relation))}});
    }
    QJsonArray queries;
    for (const dao::QueryInfo &query : contents.queries)
        queries.append(QJsonObject{{u"name"_s, query.name}, {u"sql"_s, query.sql}});
    return {{u"readOnly"_s, !canBeWritten(target)},
            {u"tables"_s, tables},
            {u"relations"_s, relations},
            {u"queries"_s, queries}};
}

} // namespace

int runSchema(const Arguments &arguments)
{
    arguments.atMost(2);
    const bool isJson = wantsJson(arguments);
    const QString path = arguments.positional(0, u"DIR"_s);
    const QString name = arguments.positional().value(1);
    Target target(path, arguments, Target::Takes::ProjectOrDatabase);
    if (!target.connect(Target::Use::Read))
        return Failed;
    const dao::Database &database = target.session().database();
    const Contents contents = contentsOf(database, name, arguments.has(u"all"));
    if (!name.isEmpty() && contents.tables.isEmpty() && contents.queries.isEmpty()) {
        target.prompts().showError(tarnwick::kErrorSeverity, 0, u"There is no table or stored query %1."_s.arg(name));
        return Failed;
    }
    if (isJson)
        printData(QJsonDocument(json(target, contents)).toJson());
    else
        TextListing().write(target, contents);
    return Done;
}

} // namespace cli
