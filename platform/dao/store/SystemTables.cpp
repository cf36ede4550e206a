#include "SystemTables.h"

#include <dao/sql/plan/QuotedName.h>

using namespace Qt::StringLiterals;

namespace dao::store {

namespace {

struct SystemField
{
    const char16_t *name;
    DataType type;
};

struct SystemTable
{
    const char16_t *name;
    QList<SystemField> fields;
    const char16_t *key; ///< the columns of its primary key
};

// Numbers are declared INTEGER and texts TEXT COLLATE NOCASE, because names are compared without regard to case. A
// change here needs a new kFileLayoutVersion, unless older engines can ignore it.
const QList<SystemTable> &layout()
{
    using T = DataType;
    static const QList<SystemTable> tables{
        {u"_dao_tables",
         {{u"id", T::Long}, {u"name", T::Text}, {u"attributes", T::Long}, {u"rule", T::Memo}, {u"rule_text", T::Memo}},
         u"id"},
        {u"_dao_fields",
         {{u"table_id", T::Long},
          {u"position", T::Long},
          {u"name", T::Text},
          {u"type", T::Long},
          {u"size", T::Long},
          {u"attributes", T::Long},
          {u"required", T::Long},
          {u"zero_length", T::Long},
          {u"default_value", T::Memo},
          {u"rule", T::Memo},
          {u"rule_text", T::Memo}},
         u"table_id, position"},
        {u"_dao_indexes",
         {{u"table_id", T::Long}, {u"position", T::Long}, {u"name", T::Text}, {u"flags", T::Long}},
         u"table_id, position"},
        {u"_dao_index_fields",
         {{u"table_id", T::Long},
          {u"index_position", T::Long},
          {u"position", T::Long},
          {u"field", T::Text},
          {u"descending", T::Long}},
         u"table_id, index_position, position"},
        {u"_dao_relations",
         {{u"name", T::Text}, {u"table_name", T::Text}, {u"foreign_table", T::Text}, {u"attributes", T::Long}},
         u"name"},
        {u"_dao_relation_fields",
         {{u"relation", T::Text}, {u"position", T::Long}, {u"field", T::Text}, {u"foreign_field", T::Text}},
         u"relation, position"},
        {u"_dao_queries", {{u"name", T::Text}, {u"sql", T::Memo}}, u"name"},
        {u"_dao_properties", {{u"name", T::Text}, {u"value", T::Memo}}, u"name"},
    };
    return tables;
}

TableInfo infoOf(const SystemTable &table)
{
    TableInfo info;
    info.name = QString::fromUtf16(table.name);
    info.attributes = SystemObject;
    for (const SystemField &field : table.fields) {
        FieldInfo fieldInfo;
        fieldInfo.name = QString::fromUtf16(field.name);
        fieldInfo.type = field.type;
        fieldInfo.size = field.type == DataType::Text ? 255 : field.type == DataType::Long ? 4 : 0;
        fieldInfo.ordinal = int(info.fields.size());
        info.fields.append(fieldInfo);
    }
    return info;
}

} // namespace

// The tables of SQLite itself (sqlite_schema, sqlite_stat1) count as well.
bool isSystemTableName(QStringView name)
{
    return name.startsWith(QLatin1StringView(kSystemTablePrefix), Qt::CaseInsensitive) ||
           name.startsWith(u"sqlite_", Qt::CaseInsensitive);
}

const QList<TableInfo> &systemTables()
{
    static const QList<TableInfo> infos = [] {
        QList<TableInfo> list;
        for (const SystemTable &table : layout())
            list.append(infoOf(table));
        return list;
    }();
    return infos;
}

QStringList systemTablesSql()
{
    QStringList statements;
    for (const SystemTable &table : layout()) {
        QStringList columns;
        for (const SystemField &field : table.fields) {
            QString column = sql::quotedName(QString::fromUtf16(field.name));
            column += isTextType(field.type) ? u" TEXT COLLATE NOCASE NOT NULL"_s : u" INTEGER NOT NULL"_s;
            columns.append(column);
        }
        columns.append(u"PRIMARY KEY ("_s + QString::fromUtf16(table.key) + u')');
        statements.append(u"CREATE TABLE "_s + sql::quotedName(QString::fromUtf16(table.name)) + u" ("_s +
                          columns.join(u", "_s) + u')');
    }
    return statements;
}

} // namespace dao::store
