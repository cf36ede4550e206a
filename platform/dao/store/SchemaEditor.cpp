#include "SchemaEditor.h"

#include "ConnectionScopes.h"
#include "DefinitionCheck.h"
#include "ErrorTranslation.h"
#include "IndexBuild.h"
#include "RelationTriggers.h"
#include "TableDefinition.h"
#include "TableRebuild.h"
#include "TableRule.h"

#include <dao/sql/Compiler.h>

using namespace Qt::StringLiterals;

namespace dao::store {

namespace {

bool sameName(QStringView a, QStringView b)
{
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

bool involves(const RelationInfo &relation, QStringView table)
{
    return sameName(relation.table, table) || sameName(relation.foreignTable, table);
}

bool involves(const RelationInfo &relation, QStringView table, QStringView fieldName)
{
    for (const RelationField &field : relation.fields) {
        if (sameName(relation.table, table) && sameName(field.field, fieldName))
            return true;
        if (sameName(relation.foreignTable, table) && sameName(field.foreignField, fieldName))
            return true;
    }
    return false;
}

/// The name of the file property that stores the text of a named condition.
QString checkProperty(const TableInfo &table, const QString &name)
{
    return u"Check:"_s + table.name + u'.' + name;
}

/// True if the first fields of the index are the relation's foreign key.
bool servesForeignKey(const TableInfo &table, const IndexInfo &index, const RelationInfo &relation)
{
    if (!isKeptAsIndex(table, index) || index.fields.size() < relation.fields.size())
        return false;
    QSet<QString> leading;
    for (qsizetype i = 0; i < relation.fields.size(); ++i)
        leading.insert(folded(index.fields[i].name));
    for (const RelationField &field : relation.fields) {
        if (!leading.contains(folded(field.foreignField)))
            return false;
    }
    return true;
}

} // namespace

void SchemaEditor::fail(int number, const QStringList &arguments) const
{
    throw engineError(number, m_connection.source(), arguments);
}

const StoredTable &SchemaEditor::stored(QStringView name) const
{
    const StoredTable *table = m_catalog.findStored(name);
    if (!table)
        fail(m_catalog.findTable(name) ? error::ReadOnly : error::ItemNotFound);
    return *table;
}

DefinitionCheck SchemaEditor::check() const
{
    return DefinitionCheck(m_catalog, m_connection.source());
}

void SchemaEditor::createIndexes(const TableInfo &table)
{
    for (const IndexInfo &index : table.indexes) {
        if (isKeptAsIndex(table, index))
            makeIndex(m_connection, table, index);
    }
}

// Conditions without a name become part of the table's rule, named ones too; their names are kept as properties of the
// file, so that DROP CONSTRAINT finds the text to remove.
void SchemaEditor::createTable(const TableInfo &given, const QList<sql::NamedCheck> &checks)
{
    TableInfo wanted = given;
    for (const sql::NamedCheck &each : checks)
        wanted.validationRule = withRule(wanted.validationRule, each.condition);
    StoredTable table;
    table.info = check().table(wanted);
    m_catalog.change([&] {
        m_connection.run(createTableSql(table, table.info.name));
        createIndexes(table.info);
        writeTable(m_connection, table);
        for (const sql::NamedCheck &each : checks)
            nameCheck(table.info, each);
    });
}

void SchemaEditor::nameCheck(const TableInfo &table, const sql::NamedCheck &check)
{
    if (check.name.isEmpty())
        return;
    const QString property = checkProperty(table, check.name);
    if (!m_catalog.property(property).isEmpty() || table.index(check.name))
        fail(error::IndexNameExists, {table.name, check.name});
    writeProperty(m_connection, property, check.condition);
}

StoredTable SchemaEditor::createUnindexed(const TableInfo &given, const QSet<QString> &lateRequired)
{
    StoredTable table;
    table.info = check().table(given);
    table.lateRequired = lateRequired;
    m_catalog.change([&] {
        m_connection.run(createTableSql(table, table.info.name));
        writeTable(m_connection, table);
    });
    return table;
}

void SchemaEditor::deleteTable(QStringView name)
{
    const StoredTable table = stored(name);
    for (const RelationInfo &relation : m_catalog.relations()) {
        if (involves(relation, table.info.name))
            fail(error::IndexInUse);
    }
    m_catalog.change([&] {
        m_connection.run(u"DROP TABLE "_s + sql::quotedName(table.info.name));
        removeTable(m_connection, table);
        removeProperties(m_connection, checkProperty(table.info, {}));
    });
}

// True if ALTER TABLE ADD COLUMN gives the wanted result. It changes only the schema, so it takes no time even in a
// table of millions of rows.
bool SchemaEditor::canJustAppend(const StoredTable &table, const FieldInfo &field) const
{
    // ADD COLUMN gives existing rows the default of the new column, which is wanted only for required fields.
    if (field.isAutoIncrement() || table.info.keyColumn.compare(field.name, Qt::CaseInsensitive) == 0)
        return false;
    // ADD COLUMN of SQLite fails for columns with these names; a rebuilt table accepts them.
    if (field.name.compare(u"true", Qt::CaseInsensitive) == 0 || field.name.compare(u"false", Qt::CaseInsensitive) == 0)
        return false;
    if (field.required && field.type != DataType::Boolean)
        return !constantDefault(field).isEmpty();
    return field.defaultValue.trimmed().isEmpty();
}

// Triggers and indexes of relations name the table, so they are removed before the rebuild and created again after it.
void SchemaEditor::replaceTable(const StoredTable &before, StoredTable &after, const QList<FieldFill> &fills)
{
    QList<RelationInfo> relations;
    for (const RelationInfo &relation : m_catalog.relations()) {
        if (involves(relation, before.info.name))
            relations.append(relation);
    }
    for (const RelationInfo &relation : relations)
        uninstallRelation(relation);
    TableRebuild rebuild(m_connection, before, after);
    rebuild.fillWith(fills);
    rebuild.run();
    writeTable(m_connection, after);
    for (const RelationInfo &relation : relations) {
        const bool isForeign = sameName(relation.foreignTable, after.info.name);
        installRelation(relation, isForeign ? after.info : stored(relation.foreignTable).info);
    }
}

// Tests the new field's constraints on one row: all rows have the same value in it.
void SchemaEditor::requireOneRow(const StoredTable &table, const FieldInfo &field) const
{
    for (const ColumnCheck &check : columnChecks(table, field)) {
        if (m_connection.number(u"SELECT EXISTS (SELECT 1 FROM (SELECT * FROM %1 LIMIT 1) WHERE NOT (%2))"_s.arg(
                sql::quotedName(table.info.name), check.condition)) == 0)
            continue;
        if (check.name.startsWith(QStringView(constraint::kRule)))
            fail(error::ValidationRule, {field.validationRule, table.info.name + u'.' + field.name});
        raiseCheck(check.name, m_connection.source(), m_connection.schema());
    }
}

// Refuses a definition that would leave a relation without its fields or without the unique index that it refers to.
void SchemaEditor::requireRelations(const StoredTable &before, const TableInfo &after) const
{
    for (const RelationInfo &relation : m_catalog.relations()) {
        for (const FieldInfo &field : before.info.fields) {
            const FieldInfo *now = after.field(field.name);
            if (involves(relation, before.info.name, field.name) && (!now || now->type != field.type))
                fail(error::FieldInIndex);
        }
        if (sameName(relation.table, before.info.name) && !(relation.attributes & DontEnforce) &&
            !hasUniqueIndex(after, relation))
            fail(error::IndexInUse);
    }
}

// Id and name stay, so that relations and statistics still refer to the table.
void SchemaEditor::alterTable(QStringView name, const TableInfo &newShape, const QList<FieldFill> &fills)
{
    const StoredTable before = stored(name);
    StoredTable after;
    after.info = check().shape(newShape);
    after.id = before.id;
    after.info.name = before.info.name;
    for (int i = 0; i < int(after.info.fields.size()); ++i)
        after.info.fields[i].ordinal = i;
    for (const FieldFill &fill : fills) {
        if (!after.info.field(fill.field))
            fail(error::NoSuchField, {fill.field, after.info.name});
    }
    requireRelations(before, after.info);
    m_catalog.change([&] { replaceTable(before, after, fills); });
}

void SchemaEditor::addField(QStringView tableName, const FieldInfo &given)
{
    const StoredTable before = stored(tableName);
    const FieldInfo field = check().field(given);
    if (before.info.field(field.name))
        fail(error::FieldExists, {field.name, before.info.name});
    StoredTable after = before;
    after.info.fields.append(field);
    for (const FieldInfo &other : before.info.fields) {
        if (field.isAutoIncrement() && other.isAutoIncrement())
            fail(error::InvalidFieldType);
    }
    if (keyColumnFor(after.info).isEmpty())
        fail(error::InvalidName, {field.name});
    m_catalog.change([&] {
        if (!canJustAppend(before, field)) {
            replaceTable(before, after);
            return;
        }
        {
            // SQLite would check every constraint of every row, also those of unchanged fields.
            const UncheckedWrites unchecked(m_connection);
            m_connection.run(u"ALTER TABLE "_s + sql::quotedName(before.info.name) + u" ADD COLUMN "_s +
                             columnSql(after, field));
        }
        requireOneRow(after, field);
        writeTable(m_connection, after);
    });
}

// The type of a field in a relation must not change, because both sides need the same type.
void SchemaEditor::alterField(QStringView tableName, const FieldInfo &given)
{
    const StoredTable before = stored(tableName);
    const int ordinal = before.info.indexOf(given.name);
    if (ordinal < 0)
        fail(error::NoSuchField, {given.name, before.info.name});
    StoredTable after = before;
    FieldInfo field = check().field(given);
    field.name = before.info.fields[ordinal].name;
    field.ordinal = ordinal;
    after.info.fields[ordinal] = field;
    if (field.type != before.info.fields[ordinal].type) {
        for (const RelationInfo &relation : m_catalog.relations()) {
            if (involves(relation, before.info.name, field.name))
                fail(error::IndexInUse);
        }
    }
    m_catalog.change([&] { replaceTable(before, after); });
}

// Fields of indexes and relations cannot be deleted (3280), nor can the last field.
void SchemaEditor::deleteField(QStringView tableName, QStringView fieldName)
{
    const StoredTable before = stored(tableName);
    const int ordinal = before.info.indexOf(fieldName);
    if (ordinal < 0)
        fail(error::ItemNotFound);
    for (const IndexInfo &index : before.info.indexes) {
        if (fieldNames(index).contains(folded(fieldName)))
            fail(error::FieldInIndex);
    }
    for (const RelationInfo &relation : m_catalog.relations()) {
        if (involves(relation, before.info.name, fieldName))
            fail(error::FieldInIndex);
    }
    if (before.info.fields.size() == 1)
        fail(error::FieldInIndex);
    StoredTable after = before;
    after.info.fields.removeAt(ordinal);
    for (int i = 0; i < int(after.info.fields.size()); ++i)
        after.info.fields[i].ordinal = i;
    m_catalog.change([&] { replaceTable(before, after); });
}

void SchemaEditor::addCheck(QStringView tableName, const sql::NamedCheck &added)
{
    const StoredTable before = stored(tableName);
    StoredTable after = before;
    after.info.validationRule = withRule(before.info.validationRule, added.condition);
    m_catalog.change([&] {
        replaceTable(before, after);
        nameCheck(after.info, added);
    });
}

// Returns false if the table has no condition of that name.
bool SchemaEditor::deleteCheck(QStringView tableName, const QString &name)
{
    const StoredTable before = stored(tableName);
    const QString property = checkProperty(before.info, name);
    const QString condition = m_catalog.property(property);
    if (condition.isEmpty())
        return false;
    StoredTable after = before;
    after.info.validationRule = withoutRule(before.info.validationRule, condition);
    m_catalog.change([&] {
        replaceTable(before, after);
        removeProperty(m_connection, property);
    });
    return true;
}

void SchemaEditor::createIndex(QStringView tableName, const IndexInfo &given)
{
    const StoredTable before = stored(tableName);
    const IndexInfo index = check().index(before.info, given);
    if (before.info.index(index.name))
        fail(error::IndexNameExists, {before.info.name, index.name});
    for (const IndexInfo &other : before.info.indexes) {
        if (index.primary && other.primary)
            fail(error::PrimaryKeyExists);
    }
    StoredTable after = before;
    after.info.indexes.append(index);
    // An index that refuses Null makes its fields NOT NULL, which needs a new table definition.
    const bool tightens = std::any_of(after.info.fields.begin(), after.info.fields.end(), [&](const FieldInfo &field) {
        return isNotNull(after, field) != isNotNull(before, field);
    });
    m_catalog.change([&] {
        if (tightens) {
            replaceTable(before, after);
            return;
        }
        if (isKeptAsIndex(after.info, index))
            makeIndex(m_connection, after.info, index);
        writeTable(m_connection, after);
    });
}

// True if a relation refers to this unique index and no other unique index has the same fields.
bool SchemaEditor::isReferenced(const TableInfo &table, const IndexInfo &index) const
{
    if (!index.unique)
        return false;
    for (const RelationInfo &relation : m_catalog.relations()) {
        if (!sameName(relation.table, table.name) || keyFieldNames(relation) != fieldNames(index))
            continue;
        const auto standIns = std::count_if(table.indexes.begin(), table.indexes.end(), [&](const IndexInfo &other) {
            return other.unique && fieldNames(other) == fieldNames(index);
        });
        if (standIns < 2)
            return true;
    }
    return false;
}

void SchemaEditor::deleteIndex(QStringView tableName, QStringView indexName)
{
    const StoredTable before = stored(tableName);
    const IndexInfo *index = before.info.index(indexName);
    if (!index)
        fail(error::ItemNotFound);
    if (isReferenced(before.info, *index))
        fail(error::IndexInUse);
    StoredTable after = before;
    after.info.indexes.removeIf([&](const IndexInfo &other) { return sameName(other.name, indexName); });
    // Without the index its fields may be Null again, which needs a new table definition.
    const bool loosens = std::any_of(after.info.fields.begin(), after.info.fields.end(), [&](const FieldInfo &field) {
        return isNotNull(after, field) != isNotNull(before, field);
    });
    m_catalog.change([&] {
        if (loosens) {
            replaceTable(before, after);
            return;
        }
        if (isKeptAsIndex(before.info, *index))
            m_connection.run(u"DROP INDEX "_s + sql::quotedName(indexNameInFile(before.info.name, index->name)));
        writeTable(m_connection, after);
    });
}

// Triggers find related rows by the foreign key, so it gets an index unless one of the table's own begins with its
// fields.
void SchemaEditor::installRelation(const RelationInfo &relation, const TableInfo &foreignTable)
{
    for (const QString &trigger : relationTriggers(relation))
        m_connection.run(trigger);
    const bool served =
        std::any_of(foreignTable.indexes.begin(), foreignTable.indexes.end(),
                    [&](const IndexInfo &index) { return servesForeignKey(foreignTable, index, relation); });
    if (!served && !(relation.attributes & DontEnforce))
        makeIndex(m_connection, relationIndexName(relation), relationIndexSql(relation),
                  relation.fields.first().foreignField);
}

void SchemaEditor::uninstallRelation(const RelationInfo &relation)
{
    for (const QString &name : relationTriggerNames(relation))
        m_connection.run(u"DROP TRIGGER IF EXISTS "_s + sql::quotedName(name));
    m_connection.run(u"DROP INDEX IF EXISTS "_s + sql::quotedName(relationIndexName(relation)));
}

void SchemaEditor::createRelation(const RelationInfo &given)
{
    const RelationInfo relation = check().relation(given);
    m_catalog.change([&] {
        if (!(relation.attributes & DontEnforce) && m_connection.number(relationViolationSql(relation)) != 0)
            fail(error::RelationViolated, {relation.foreignTable, relation.table});
        installRelation(relation, stored(relation.foreignTable).info);
        writeRelation(m_connection, relation);
    });
}

void SchemaEditor::deleteRelation(QStringView name)
{
    const RelationInfo *found = m_catalog.findRelation(name);
    if (!found)
        fail(error::ItemNotFound);
    const RelationInfo relation = *found;
    m_catalog.change([&] {
        uninstallRelation(relation);
        removeRelation(m_connection, relation.name);
    });
}

void SchemaEditor::createQuery(const QueryInfo &query)
{
    check().name(query.name);
    if (m_catalog.findQuery(query.name) || m_catalog.findTable(query.name))
        fail(error::ObjectExists, {query.name});
    m_catalog.change([&] { writeQuery(m_connection, query); });
}

void SchemaEditor::setQuerySql(QStringView name, const QString &sql)
{
    const QueryInfo *found = m_catalog.findQuery(name);
    if (!found)
        fail(error::ItemNotFound);
    // Views are written at every connection; an unchanged view must not change the file.
    if (found->sql == sql)
        return;
    const QueryInfo query{found->name, sql};
    m_catalog.change([&] { writeQuery(m_connection, query); });
}

void SchemaEditor::deleteQuery(QStringView name)
{
    const QueryInfo *found = m_catalog.findQuery(name);
    if (!found)
        fail(error::ItemNotFound);
    const QString stored = found->name;
    m_catalog.change([&] { removeQuery(m_connection, stored); });
}

void SchemaEditor::setProperty(const QString &name, const QString &value)
{
    if (m_catalog.property(name) == value)
        return;
    m_catalog.change([&] { writeProperty(m_connection, name, value); });
}

} // namespace dao::store
