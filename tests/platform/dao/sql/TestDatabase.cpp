#include "TestDatabase.h"

#include <dao/functions/Functions.h>
#include <dao/sql/ast/Keywords.h>
#include <dao/values/CellFailure.h>
#include <dao/values/Decimal.h>
#include <dao/values/Errors.h>
#include <dao/values/OleDate.h>

#include <QRegularExpression>

using namespace Qt::StringLiterals;
using dao::DataType;
using dao::Value;

namespace {

QString declaredType(const dao::FieldInfo &field)
{
    if (field.isAutoIncrement())
        return u"INTEGER PRIMARY KEY AUTOINCREMENT"_s;
    if (dao::isTextType(field.type) || field.type == DataType::Guid)
        return u"TEXT COLLATE NOCASE"_s;
    if (dao::isIntegerType(field.type) || field.type == DataType::Boolean)
        return u"INTEGER"_s;
    return field.type == DataType::LongBinary || field.type == DataType::Binary ? u"BLOB"_s : u"REAL"_s;
}

dao::FieldInfo fieldFromNotation(const QString &word, dao::TableInfo &table)
{
    static const QRegularExpression form(u"^([^:]+):(\\w+?)(?:\\((\\d+)\\))?(\\*?)(!?)(?:=(.*))?$"_s);
    const QRegularExpressionMatch match = form.match(word);
    const auto type = dao::sql::ast::typeNameOf(match.captured(2));
    if (!match.hasMatch() || !type)
        throw std::runtime_error("bad field notation: " + word.toStdString());
    dao::FieldInfo field;
    field.name = match.captured(1).replace(u'~', u' ');
    field.type = type->type;
    field.size = match.captured(3).isEmpty() ? (field.type == DataType::Text ? 50 : 0) : match.captured(3).toInt();
    field.attributes = type->autoIncrement ? dao::AutoIncrement : 0;
    field.required = !match.captured(5).isEmpty();
    field.defaultValue = match.captured(6);
    if (!match.captured(4).isEmpty()) {
        if (table.indexes.isEmpty())
            table.indexes.append({u"PrimaryKey"_s, {}, true, true, false, true, false});
        table.indexes[0].fields.append({field.name, false});
    }
    return field;
}

} // namespace

TestDatabase::TestDatabase()
{
    if (sqlite3_open(":memory:", &m_handle) != SQLITE_OK)
        throw std::runtime_error("no database");
    sqlite3_db_config(m_handle, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
    sqlite3_db_config(m_handle, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
    dao::functions::registerAll(m_handle);
}

TestDatabase::~TestDatabase()
{
    sqlite3_close(m_handle);
}

void TestDatabase::addTable(const QString &notation)
{
    QStringList words = notation.split(u' ', Qt::SkipEmptyParts);
    dao::TableInfo table;
    table.name = words.takeFirst().replace(u'~', u' ');
    for (const QString &word : words)
        table.fields.append(fieldFromNotation(word, table));
    addTable(table);
}

void TestDatabase::addTable(const dao::TableInfo &table)
{
    QStringList columns;
    for (const dao::FieldInfo &field : table.fields) {
        QString column = dao::sql::quotedName(field.name) + u' ' + declaredType(field);
        if (field.required && !field.isAutoIncrement())
            column += u" NOT NULL"_s;
        const dao::sql::DefaultExpression value = dao::sql::defaultExpression(field.defaultValue, field);
        if (value.constant)
            column += u" DEFAULT "_s + value.sql;
        if (const auto check =
                field.validationRule.isEmpty() ? std::nullopt : dao::sql::ruleAsCheck(field.validationRule, field))
            column += u" CHECK ("_s + *check + u')';
        columns.append(column);
    }
    if (const auto check =
            table.validationRule.isEmpty() ? std::nullopt : dao::sql::tableRuleAsCheck(table.validationRule, table))
        columns.append(u"CHECK ("_s + *check + u')');
    execute(u"CREATE TABLE "_s + dao::sql::quotedName(table.name) + u" ("_s + columns.join(u", ") + u')');
    m_tables.push_back(std::make_unique<dao::TableInfo>(table));
}

void TestDatabase::addQuery(const QString &name, const QString &sql)
{
    m_queries.push_back(std::make_unique<dao::QueryInfo>(dao::QueryInfo{name, sql}));
}

const dao::TableInfo *TestDatabase::findTable(QStringView name) const
{
    for (const auto &table : m_tables) {
        if (name.compare(table->name, Qt::CaseInsensitive) == 0)
            return table.get();
    }
    return nullptr;
}

const dao::QueryInfo *TestDatabase::findQuery(QStringView name) const
{
    for (const auto &query : m_queries) {
        if (name.compare(query->name, Qt::CaseInsensitive) == 0)
            return query.get();
    }
    return nullptr;
}

QStringList TestDatabase::sourceNames() const
{
    QStringList names;
    for (const auto &table : m_tables)
        names.append(table->name);
    for (const auto &query : m_queries)
        names.append(query->name);
    return names;
}

void TestDatabase::fail(const QString &sql) const
{
    const QString message = QString::fromUtf8(sqlite3_errmsg(m_handle));
    static const QRegularExpression form(u"^dao:(\\d+):(.*)$"_s, QRegularExpression::DotMatchesEverythingOption);
    const QRegularExpressionMatch match = form.match(message);
    if (match.hasMatch())
        throw dao::DaoException(match.captured(1).toInt(), u"DAO.Database"_s, match.captured(2));
    if (message.contains(u"parser stack overflow") || message.contains(u"Expression tree is too large"))
        dao::raise(dao::error::TooComplex, u"DAO.Database"_s);
    throw std::runtime_error(QString(message + u"\n  in: " + sql).toStdString());
}

TestDatabase::StatementPtr TestDatabase::prepare(const QString &sql, const QList<Value> &values)
{
    sqlite3_stmt *raw = nullptr;
    const QByteArray text = sql.toUtf8();
    if (sqlite3_prepare_v2(m_handle, text.constData(), int(text.size()), &raw, nullptr) != SQLITE_OK)
        fail(sql);
    StatementPtr statement(raw);
    for (int i = 0; i < std::min(int(values.size()), sqlite3_bind_parameter_count(raw)); ++i) {
        const Value &value = values[i];
        const QByteArray bytes = value.text().toUtf8();
        if (value.hasNoValue())
            sqlite3_bind_null(raw, i + 1);
        else if (value.type() == Value::Type::Text)
            sqlite3_bind_text(raw, i + 1, bytes.constData(), int(bytes.size()), SQLITE_TRANSIENT);
        else if (value.type() == Value::Type::Double || value.type() == Value::Type::Date ||
                 value.type() == Value::Type::Float || value.type() == Value::Type::Currency)
            sqlite3_bind_double(raw, i + 1, value.real());
        else
            sqlite3_bind_int64(raw, i + 1, value.integer());
    }
    return statement;
}

int TestDatabase::execute(const QString &sql, const QList<Value> &values)
{
    const StatementPtr statement = prepare(sql, values);
    int rc = SQLITE_ROW;
    while (rc == SQLITE_ROW)
        rc = sqlite3_step(statement.get());
    if (rc != SQLITE_DONE)
        fail(sql);
    return sqlite3_changes(m_handle);
}

QString cellText(sqlite3_stmt *statement, int column, DataType type)
{
    if (sqlite3_column_type(statement, column) == SQLITE_NULL)
        return u"Null"_s;
    // The files of statements name errors by their numbers, those of cells like all others.
    const QByteArrayView bytes(static_cast<const char *>(sqlite3_column_blob(statement, column)),
                               sqlite3_column_bytes(statement, column));
    if (const int failure = dao::failureIn(bytes); failure && type != DataType::LongBinary)
        dao::raise(failure, u"DAO.Database"_s);
    switch (type) {
    case DataType::Date:
        return dao::generalDateText(sqlite3_column_double(statement, column));
    case DataType::Single:
        return dao::singleText(sqlite3_column_double(statement, column));
    case DataType::Boolean:
        return sqlite3_column_int(statement, column) ? u"True"_s : u"False"_s;
    case DataType::Text:
    case DataType::Memo:
    case DataType::Guid:
        return QString::fromUtf8(reinterpret_cast<const char *>(sqlite3_column_text(statement, column)));
    case DataType::LongBinary:
    case DataType::Binary:
        return u"<binary>"_s;
    default:
        return dao::numberText(sqlite3_column_double(statement, column));
    }
}

QList<QStringList> TestDatabase::read(const QString &sql, const QList<Value> &values,
                                      const QList<dao::sql::Column> &columns)
{
    const StatementPtr statement = prepare(sql, values);
    QList<QStringList> rows;
    int rc = 0;
    while ((rc = sqlite3_step(statement.get())) == SQLITE_ROW) {
        QStringList row;
        for (int i = 0; i < columns.size(); ++i)
            row.append(cellText(statement.get(), i, columns[i].info.type));
        rows.append(row);
    }
    if (rc != SQLITE_DONE)
        fail(sql);
    return rows;
}

QList<QStringList> TestDatabase::readByKeys(const dao::sql::SelectPlan &plan, const QList<Value> &values)
{
    QList<QStringList> rows;
    const StatementPtr keys = prepare(plan.keySql, values);
    int rc = 0;
    while ((rc = sqlite3_step(keys.get())) == SQLITE_ROW) {
        QList<Value> bound = values;
        for (int i = 0; i < plan.sources.size(); ++i) {
            const bool missing = sqlite3_column_type(keys.get(), i) == SQLITE_NULL;
            bound.append(missing ? Value::null() : Value::fromLong(sqlite3_column_int(keys.get(), i)));
        }
        rows += read(plan.rowSql, bound, plan.columns);
    }
    if (rc != SQLITE_DONE)
        fail(plan.keySql);
    return rows;
}

TestDatabase::Result TestDatabase::run(const QString &sql, const Parameters &parameters)
{
    Result result;
    result.compiled = dao::sql::compile(*this, sql);
    QList<Value> values;
    int missing = 0;
    for (const dao::sql::Parameter &parameter : result.compiled.parameters) {
        const auto given = std::find_if(parameters.begin(), parameters.end(), [&](const auto &entry) {
            return entry.first.compare(parameter.name, Qt::CaseInsensitive) == 0;
        });
        missing += given == parameters.end();
        if (given == parameters.end())
            continue;
        const Value value = dao::convertValue(given->second, parameter.type);
        if (value.isEmpty())
            dao::raise(dao::error::ConversionFailed, u"DAO.QueryDef"_s);
        values.append(value);
    }
    if (missing > 0)
        dao::raise(dao::error::TooFewParameters, u"DAO.Database"_s, {QString::number(missing)});
    const dao::sql::Plan plan = result.compiled.plan;
    carryOut(plan, values, result);
    return result;
}

void TestDatabase::materialise(const dao::sql::ActionPlan::Step &step, const QList<Value> &values)
{
    const QString table = u"temp."_s + step.materialiseInto;
    execute(u"CREATE TEMP TABLE "_s + step.materialiseInto + u" AS "_s + step.sql, values);
    if (step.keyed)
        execute(u"DELETE FROM "_s + table + u" WHERE _k0 IS NULL OR rowid NOT IN (SELECT max(rowid) FROM "_s + table +
                u" GROUP BY _k0)"_s);
}

void TestDatabase::carryOut(const dao::sql::Plan &plan, const QList<Value> &values, Result &result)
{
    using namespace dao::sql;
    if (const auto *crosstab = std::get_if<SelectPlan>(&plan); crosstab && crosstab->crosstab) {
        QList<Column> text(2);
        for (Column &column : text)
            column.info.type = DataType::Text;
        QList<CrosstabHeading> headings;
        for (const QStringList &row : read(crosstab->crosstab->valuesSql, values, text))
            headings.append({row[0], row[1]});
        const Plan complete = withHeadings(*crosstab, headings);
        result.compiled.plan = complete;
        carryOut(complete, values, result);
    } else if (const auto *select = std::get_if<SelectPlan>(&plan)) {
        result.rows = read(select->fullSql, values, select->columns);
        if (select->keyed && readByKeys(*select, values) != result.rows)
            throw std::runtime_error("rows by key differ: " + select->keySql.toStdString() + " / " +
                                     select->rowSql.toStdString());
    } else if (const auto *action = std::get_if<ActionPlan>(&plan)) {
        execute(u"SAVEPOINT s"_s);
        try {
            for (const ActionPlan::Step &step : action->steps) {
                if (!step.materialiseInto.isEmpty()) {
                    materialise(step, values);
                    continue;
                }
                if (step.refusal) {
                    if (!read(step.sql, values, QList<Column>(1)).isEmpty())
                        throw dao::DaoException(*step.refusal);
                    continue;
                }
                const int changed = execute(step.sql, values);
                result.affected += step.countsRows ? changed : 0;
            }
        } catch (...) {
            execute(u"ROLLBACK TO s"_s);
            execute(u"RELEASE s"_s);
            throw;
        }
        execute(u"RELEASE s"_s);
    } else if (const auto *into = std::get_if<SelectIntoPlan>(&plan)) {
        addTable(into->table);
        result.affected =
            execute(u"INSERT INTO "_s + quotedName(into->table.name) + u' ' + into->select.fullSql, values);
    } else if (const auto *create = std::get_if<CreateTablePlan>(&plan)) {
        addTable(create->table);
    } else if (const auto *query = std::get_if<CreateQueryPlan>(&plan)) {
        addQuery(query->query.name, query->query.sql);
    }
}
