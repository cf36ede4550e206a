#include "SmallSchema.h"

#include "Targets.h"

#include <dao/functions/Functions.h>
#include <dao/sql/Compiler.h>

using namespace Qt::StringLiterals;
using dao::DataType;
using dao::FieldInfo;

namespace fuzz {
namespace {

FieldInfo field(const QString &name, DataType type, int attributes = 0)
{
    FieldInfo info;
    info.name = name;
    info.type = type;
    info.size = type == DataType::Text ? 20 : 0;
    info.attributes = attributes;
    return info;
}

QString declaredType(const FieldInfo &info)
{
    if (info.isAutoIncrement())
        return u"INTEGER PRIMARY KEY AUTOINCREMENT"_s;
    if (dao::isTextType(info.type))
        return u"TEXT COLLATE NOCASE"_s;
    return dao::isIntegerType(info.type) || info.type == DataType::Boolean ? u"INTEGER"_s : u"REAL"_s;
}

// What the engine around the compiler answers.
void noDomain(sqlite3_context *context, int, sqlite3_value **)
{
    sqlite3_result_null(context);
}

void nobodyCancels(sqlite3_context *context, int, sqlite3_value **)
{
    sqlite3_result_int(context, 0);
}

} // namespace

SmallSchema::SmallSchema()
{
    if (sqlite3_open(":memory:", &m_handle) != SQLITE_OK)
        throw std::runtime_error("no database");
    sqlite3_db_config(m_handle, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
    sqlite3_db_config(m_handle, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
    // Long texts cost time and find nothing.
    sqlite3_limit(m_handle, SQLITE_LIMIT_LENGTH, 1000000);
    dao::functions::registerAll(m_handle);
    sqlite3_create_function_v2(m_handle, "jet_domain", -1, SQLITE_UTF8, nullptr, noDomain, nullptr, nullptr, nullptr);
    sqlite3_create_function_v2(m_handle, "dao_cancelled", 0, SQLITE_UTF8, nullptr, nobodyCancels, nullptr, nullptr,
                               nullptr);
    m_tables.reserve(2);
    add(u"t"_s,
        {field(u"id"_s, DataType::Long, dao::AutoIncrement), field(u"a"_s, DataType::Integer),
         field(u"b"_s, DataType::Text), field(u"c"_s, DataType::Currency), field(u"d"_s, DataType::Date),
         field(u"f"_s, DataType::Boolean), field(u"s"_s, DataType::Single), field(u"desc"_s, DataType::Memo)},
        "(1, 4, 'x', 1.5, 37623, -1, 2.0999999046325684, 'note'), (2, NULL, '7', NULL, 40000.25, 0, NULL, NULL), "
        "(3, 4, 'X', 3, NULL, 0, 0.5, '')");
    add(u"u"_s, {field(u"id"_s, DataType::Long), field(u"x"_s, DataType::Double), field(u"b"_s, DataType::Text)},
        "(1, 4, 'x'), (3, 0.5, NULL), (9, -1, 'Zoe')");
    m_queries = {{u"q"_s, u"SELECT id, a * 2 AS twice, b FROM t WHERE a > 0 ORDER BY a"_s},
                 {u"g"_s, u"SELECT b, Sum(c) AS total FROM t GROUP BY b"_s},
                 {u"p"_s, u"PARAMETERS [least] Long; SELECT * FROM u WHERE x >= [least]"_s},
                 {u"r"_s, u"SELECT * FROM r"_s},
                 {u"k"_s, u"TRANSFORM Count(*) SELECT a FROM t GROUP BY a PIVOT b IN ('x', 'y')"_s}};
}

SmallSchema::~SmallSchema()
{
    sqlite3_close(m_handle);
}

void SmallSchema::add(const QString &name, std::initializer_list<FieldInfo> fields, const char *rows)
{
    dao::TableInfo table;
    table.name = name;
    table.fields = fields;
    table.indexes.append({u"PrimaryKey"_s, {{table.fields.constFirst().name, false}}, true, true, false, true, false});
    QStringList columns;
    for (const FieldInfo &info : table.fields)
        columns.append(dao::sql::quotedName(info.name) + u' ' + declaredType(info));
    run("CREATE TABLE " + dao::sql::quotedName(name).toUtf8() + " (" + columns.join(u", ").toUtf8() + ")");
    run("INSERT INTO " + dao::sql::quotedName(name).toUtf8() + " VALUES " + rows);
    m_tables.push_back(std::move(table));
}

void SmallSchema::run(const QByteArray &sql)
{
    if (sqlite3_exec(m_handle, sql.constData(), nullptr, nullptr, nullptr) != SQLITE_OK)
        throw std::runtime_error(sqlite3_errmsg(m_handle));
}

const dao::TableInfo *SmallSchema::findTable(QStringView name) const
{
    for (const dao::TableInfo &table : m_tables) {
        if (name.compare(table.name, Qt::CaseInsensitive) == 0)
            return &table;
    }
    return nullptr;
}

const dao::QueryInfo *SmallSchema::findQuery(QStringView name) const
{
    for (const dao::QueryInfo &query : m_queries) {
        if (name.compare(query.name, Qt::CaseInsensitive) == 0)
            return &query;
    }
    return nullptr;
}

QStringList SmallSchema::sourceNames() const
{
    QStringList names;
    for (const dao::TableInfo &table : m_tables)
        names.append(table.name);
    for (const dao::QueryInfo &query : m_queries)
        names.append(query.name);
    return names;
}

} // namespace fuzz
