#include "CatalogStorage.h"

#include "Connection.h"
#include "TableDefinition.h"

using namespace Qt::StringLiterals;

namespace dao::store {

namespace {

enum IndexFlag : int { Primary = 1, Unique = 2, IgnoreNulls = 4, IndexRequired = 8, Foreign = 16 };
enum RequiredState : int { NotRequired = 0, Required = 1, RequiredLate = 2 };

FieldInfo readField(const Statement &row, StoredTable &table)
{
    FieldInfo field;
    field.name = row.text(1);
    field.type = DataType(row.integer(2));
    field.size = int(row.integer(3));
    field.attributes = int(row.integer(4));
    field.required = row.integer(5) != NotRequired;
    if (row.integer(5) == RequiredLate)
        table.lateRequired.insert(folded(field.name));
    field.allowZeroLength = row.integer(6) != 0;
    field.defaultValue = row.text(7);
    field.validationRule = row.text(8);
    field.validationText = row.text(9);
    field.ordinal = int(table.info.fields.size());
    return field;
}

IndexInfo readIndex(const Statement &row)
{
    IndexInfo index;
    index.name = row.text(1);
    const auto flags = int(row.integer(2));
    index.primary = flags & Primary;
    index.unique = flags & Unique;
    index.ignoreNulls = flags & IgnoreNulls;
    index.required = flags & IndexRequired;
    index.foreign = flags & Foreign;
    return index;
}

int flagsOf(const IndexInfo &index)
{
    return (index.primary ? Primary : 0) | (index.unique ? Unique : 0) | (index.ignoreNulls ? IgnoreNulls : 0) |
           (index.required ? IndexRequired : 0) | (index.foreign ? Foreign : 0);
}

void readTables(Connection &connection, CatalogContents &contents)
{
    QHash<qint64, qsizetype> places;
    Statement tables(connection, u"SELECT id, name, attributes, rule, rule_text FROM _dao_tables ORDER BY id"_s);
    while (tables.step()) {
        StoredTable table;
        table.id = tables.integer(0);
        table.info.name = tables.text(1);
        table.info.attributes = int(tables.integer(2));
        table.info.validationRule = tables.text(3);
        table.info.validationText = tables.text(4);
        places.insert(table.id, qsizetype(contents.tables.size()));
        contents.tables.push_back(std::move(table));
    }
    // Rows that refer to no known table are ignored and left in the file.
    const auto tableOf = [&](const Statement &row) -> StoredTable * {
        const auto place = places.constFind(row.integer(0));
        return place == places.cend() ? nullptr : &contents.tables[size_t(*place)];
    };
    Statement fields(connection,
                     u"SELECT table_id, name, type, size, attributes, required, zero_length, default_value, "
                     "rule, rule_text FROM _dao_fields ORDER BY table_id, position"_s);
    while (fields.step()) {
        if (StoredTable *table = tableOf(fields))
            table->info.fields.append(readField(fields, *table));
    }
    Statement indexes(connection, u"SELECT table_id, name, flags FROM _dao_indexes ORDER BY table_id, position"_s);
    while (indexes.step()) {
        if (StoredTable *table = tableOf(indexes))
            table->info.indexes.append(readIndex(indexes));
    }
    Statement indexFields(connection, u"SELECT table_id, index_position, field, descending FROM _dao_index_fields "
                                      "ORDER BY table_id, index_position, position"_s);
    while (indexFields.step()) {
        StoredTable *table = tableOf(indexFields);
        const qint64 index = indexFields.integer(1);
        if (table && index >= 0 && index < table->info.indexes.size())
            table->info.indexes[index].fields.append({indexFields.text(2), indexFields.integer(3) != 0});
    }
    for (StoredTable &table : contents.tables)
        table.info.keyColumn = keyColumnFor(table.info);
}

// In order of creation.
void readRelations(Connection &connection, CatalogContents &contents)
{
    Statement relations(connection,
                        u"SELECT name, table_name, foreign_table, attributes FROM _dao_relations ORDER BY rowid"_s);
    while (relations.step()) {
        RelationInfo relation;
        relation.name = relations.text(0);
        relation.table = relations.text(1);
        relation.foreignTable = relations.text(2);
        relation.attributes = int(relations.integer(3));
        contents.relations.append(relation);
    }
    Statement fields(connection, u"SELECT field, foreign_field FROM _dao_relation_fields WHERE relation = ?1 "
                                 "ORDER BY position"_s);
    for (RelationInfo &relation : contents.relations) {
        fields.bind(1, relation.name);
        while (fields.step())
            relation.fields.append({fields.text(0), fields.text(1)});
        fields.reset();
    }
}

// "late" fields became required when rows had no value in them; their rows stay valid (see StoredTable).
void writeFields(Connection &connection, const StoredTable &table)
{
    Statement insert(connection,
                     u"INSERT INTO _dao_fields (table_id, position, name, type, size, attributes, required, "
                     "zero_length, default_value, rule, rule_text) VALUES (?,?,?,?,?,?,?,?,?,?,?)"_s);
    qint64 position = 0;
    for (const FieldInfo &field : table.info.fields) {
        const bool late = table.lateRequired.contains(folded(field.name));
        insert.bind(1, table.id);
        insert.bind(2, position++);
        insert.bind(3, field.name);
        insert.bind(4, qint64(field.type));
        insert.bind(5, qint64(field.size));
        insert.bind(6, qint64(field.attributes));
        insert.bind(7, qint64(!field.required ? NotRequired : late ? RequiredLate : Required));
        insert.bind(8, qint64(field.allowZeroLength));
        insert.bind(9, field.defaultValue.isNull() ? u""_s : field.defaultValue);
        insert.bind(10, field.validationRule.isNull() ? u""_s : field.validationRule);
        insert.bind(11, field.validationText.isNull() ? u""_s : field.validationText);
        insert.run();
    }
}

void writeIndexes(Connection &connection, const StoredTable &table)
{
    Statement insert(connection, u"INSERT INTO _dao_indexes (table_id, position, name, flags) VALUES (?,?,?,?)"_s);
    Statement insertField(connection, u"INSERT INTO _dao_index_fields (table_id, index_position, position, field, "
                                      "descending) VALUES (?,?,?,?,?)"_s);
    qint64 position = 0;
    for (const IndexInfo &index : table.info.indexes) {
        insert.bind(1, table.id);
        insert.bind(2, position);
        insert.bind(3, index.name);
        insert.bind(4, qint64(flagsOf(index)));
        insert.run();
        qint64 fieldPosition = 0;
        for (const IndexField &field : index.fields) {
            insertField.bind(1, table.id);
            insertField.bind(2, position);
            insertField.bind(3, fieldPosition++);
            insertField.bind(4, field.name);
            insertField.bind(5, qint64(field.descending));
            insertField.run();
        }
        ++position;
    }
}

void runWithName(Connection &connection, const QString &sql, const QString &name)
{
    Statement statement(connection, sql);
    statement.bind(1, name);
    statement.run();
}

} // namespace

CatalogContents readCatalog(Connection &connection)
{
    CatalogContents contents;
    readTables(connection, contents);
    readRelations(connection, contents);
    Statement queries(connection, u"SELECT name, sql FROM _dao_queries"_s);
    while (queries.step())
        contents.queries.insert(folded(queries.text(0)), {queries.text(0), queries.text(1)});
    Statement properties(connection, u"SELECT name, value FROM _dao_properties"_s);
    while (properties.step())
        contents.properties.insert(folded(properties.text(0)), properties.text(1));
    return contents;
}

// The id of a new table is larger than all others, because tables are listed in order of creation.
void writeTable(Connection &connection, StoredTable &table)
{
    if (table.id)
        removeTable(connection, table);
    else
        table.id = connection.number(u"SELECT coalesce(max(id), 0) + 1 FROM _dao_tables"_s);
    Statement insert(connection,
                     u"INSERT INTO _dao_tables (id, name, attributes, rule, rule_text) VALUES (?,?,?,?,?)"_s);
    insert.bind(1, table.id);
    insert.bind(2, table.info.name);
    insert.bind(3, qint64(table.info.attributes));
    insert.bind(4, table.info.validationRule.isNull() ? u""_s : table.info.validationRule);
    insert.bind(5, table.info.validationText.isNull() ? u""_s : table.info.validationText);
    insert.run();
    writeFields(connection, table);
    writeIndexes(connection, table);
}

void removeTable(Connection &connection, const StoredTable &table)
{
    for (const char16_t *name : {u"_dao_fields", u"_dao_indexes", u"_dao_index_fields"}) {
        Statement remove(connection, u"DELETE FROM "_s + QString::fromUtf16(name) + u" WHERE table_id = ?1"_s);
        remove.bind(1, table.id);
        remove.run();
    }
    Statement remove(connection, u"DELETE FROM _dao_tables WHERE id = ?1"_s);
    remove.bind(1, table.id);
    remove.run();
}

void writeRelation(Connection &connection, const RelationInfo &relation)
{
    Statement insert(connection,
                     u"INSERT INTO _dao_relations (name, table_name, foreign_table, attributes) VALUES (?,?,?,?)"_s);
    insert.bind(1, relation.name);
    insert.bind(2, relation.table);
    insert.bind(3, relation.foreignTable);
    insert.bind(4, qint64(relation.attributes));
    insert.run();
    Statement insertField(
        connection, u"INSERT INTO _dao_relation_fields (relation, position, field, foreign_field) VALUES (?,?,?,?)"_s);
    qint64 position = 0;
    for (const RelationField &field : relation.fields) {
        insertField.bind(1, relation.name);
        insertField.bind(2, position++);
        insertField.bind(3, field.field);
        insertField.bind(4, field.foreignField);
        insertField.run();
    }
}

void removeRelation(Connection &connection, const QString &name)
{
    runWithName(connection, u"DELETE FROM _dao_relation_fields WHERE relation = ?1"_s, name);
    runWithName(connection, u"DELETE FROM _dao_relations WHERE name = ?1"_s, name);
}

void writeQuery(Connection &connection, const QueryInfo &query)
{
    Statement insert(connection, u"INSERT OR REPLACE INTO _dao_queries (name, sql) VALUES (?,?)"_s);
    insert.bind(1, query.name);
    insert.bind(2, query.sql.isNull() ? u""_s : query.sql);
    insert.run();
}

void removeQuery(Connection &connection, const QString &name)
{
    runWithName(connection, u"DELETE FROM _dao_queries WHERE name = ?1"_s, name);
}

void removeProperty(Connection &connection, const QString &name)
{
    runWithName(connection, u"DELETE FROM _dao_properties WHERE name = ?1"_s, name);
}

// substr instead of LIKE: names can contain % and _.
void removeProperties(Connection &connection, const QString &beginning)
{
    runWithName(connection, u"DELETE FROM _dao_properties WHERE substr(name, 1, length(?1)) = ?1 COLLATE NOCASE"_s,
                beginning);
}

void writeProperty(Connection &connection, const QString &name, const QString &value)
{
    Statement insert(connection, u"INSERT OR REPLACE INTO _dao_properties (name, value) VALUES (?,?)"_s);
    insert.bind(1, name);
    insert.bind(2, value.isNull() ? u""_s : value);
    insert.run();
}

} // namespace dao::store
