#include "InnerSql.h"

#include "Targets.h"

#include <dao/sql/Compiler.h>

#include <memory>
#include <QScopeGuard>

using namespace Qt::StringLiterals;
using namespace dao::sql;

namespace fuzz {
namespace {

constexpr int StepsPerLook = 1000;
constexpr int MostLooks = 30;
constexpr int MostRows = 40;

int stopAfterSteps(void *looks)
{
    return ++*static_cast<int *>(looks) > MostLooks;
}

/// Limits of the inner engine, which the engine tells as error 3360.
bool isLimit(const char *message)
{
    for (const char *limit :
         {"parser stack overflow", "Expression tree is too large", "too many", "at most 64 tables"}) {
        if (std::strstr(message, limit))
            return true;
    }
    return false;
}

bool dependsOnTheMoment(const QString &sql)
{
    for (const QStringView function : {u"jet_rnd", u"jet_now", u"jet_time(", u"jet_timer", u"jet_date("}) {
        if (sql.contains(function))
            return true;
    }
    return false;
}

} // namespace

void InnerSql::run()
{
    int looks = 0;
    sqlite3_progress_handler(m_handle, StepsPerLook, stopAfterSteps, &looks);
    sqlite3_exec(m_handle, "SAVEPOINT fuzz", nullptr, nullptr, nullptr);
    const auto undo = qScopeGuard([this] {
        sqlite3_progress_handler(m_handle, 0, nullptr, nullptr);
        sqlite3_exec(m_handle, "ROLLBACK TO fuzz; RELEASE fuzz", nullptr, nullptr, nullptr);
    });
    if (const auto *select = std::get_if<SelectPlan>(&m_statement.plan))
        runSelect(*select);
    else if (const auto *action = std::get_if<ActionPlan>(&m_statement.plan))
        runAction(*action);
    else if (const auto *into = std::get_if<SelectIntoPlan>(&m_statement.plan))
        read(into->select.fullSql);
    else if (const auto *execute = std::get_if<ExecutePlan>(&m_statement.plan))
        for (const QString &argument : execute->arguments)
            read(u"SELECT "_s + argument);
}

void InnerSql::runSelect(const SelectPlan &plan)
{
    if (plan.crosstab) {
        QList<CrosstabHeading> headings;
        for (const QStringList &row : read(plan.crosstab->valuesSql).cells)
            headings.append({row[0], row[1]});
        headings.append({u"<>"_s, u"NULL"_s});
        read(withHeadings(plan, headings).fullSql);
        return;
    }
    const Rows rows = read(plan.fullSql);
    if (plan.keyed)
        runKeyed(plan, rows);
}

void InnerSql::runKeyed(const SelectPlan &plan, const Rows &expected)
{
    const Rows keyRows = read(plan.keySql);
    Rows found{{}, keyRows.complete};
    for (const QStringList &row : keyRows.cells) {
        QList<qint64> keys;
        for (const QString &cell : row)
            keys.append(cell.toLongLong());
        const Rows one = read(plan.rowSql, keys);
        found.cells += one.cells;
        found.complete = found.complete && one.complete;
    }
    if (found.complete && expected.complete && found.cells != expected.cells && !dependsOnTheMoment(plan.fullSql))
        throw Finding("rows by key differ: " + plan.fullSql.toStdString() + " / " + plan.keySql.toStdString() + " / " +
                      plan.rowSql.toStdString());
}

void InnerSql::runSteps(const QList<ActionPlan::Step> &steps)
{
    for (const ActionPlan::Step &step : steps) {
        const bool materialises = !step.materialiseInto.isEmpty();
        // What follows may need what this one makes.
        if (!read(materialises ? u"CREATE TEMP TABLE "_s + step.materialiseInto + u" AS "_s + step.sql : step.sql)
                 .complete)
            return;
        const QString table = u"temp."_s + step.materialiseInto;
        if (step.keyed &&
            !read(u"DELETE FROM "_s + table + u" WHERE _k0 IS NULL OR rowid NOT IN (SELECT max(rowid) FROM "_s + table +
                  u" GROUP BY _k0)"_s)
                 .complete)
            return;
    }
}

void InnerSql::runAction(const ActionPlan &plan)
{
    runSteps(plan.steps);
    sqlite3_exec(m_handle, "ROLLBACK TO fuzz", nullptr, nullptr, nullptr);
    runSteps(plan.cancellableSteps);
}

InnerSql::Rows InnerSql::read(const QString &sql, const QList<qint64> &keys)
{
    const std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt *)> statement(prepare(sql), sqlite3_finalize);
    Rows rows;
    if (!statement)
        return rows;
    bind(statement.get(), keys);
    int result = SQLITE_ROW;
    while (rows.cells.size() < MostRows && (result = sqlite3_step(statement.get())) == SQLITE_ROW) {
        QStringList cells;
        for (int i = 0; i < sqlite3_column_count(statement.get()); ++i)
            cells.append(QString::fromUtf8(reinterpret_cast<const char *>(sqlite3_column_text(statement.get(), i))));
        rows.cells.append(cells);
    }
    rows.complete = result == SQLITE_DONE;
    if (result != SQLITE_DONE && result != SQLITE_ROW)
        checkError(result, sql);
    return rows;
}

// Null for a text that is too much for the inner engine.
sqlite3_stmt *InnerSql::prepare(const QString &sql)
{
    sqlite3_stmt *statement = nullptr;
    const QByteArray text = sql.toUtf8();
    const int result = sqlite3_prepare_v2(m_handle, text.constData(), int(text.size()), &statement, nullptr);
    const std::string message = sqlite3_errmsg(m_handle);
    if (result == SQLITE_INTERRUPT || (result != SQLITE_OK && isLimit(message.c_str())))
        return nullptr;
    if (result != SQLITE_OK)
        throw Finding("refused: " + message + ": " + sql.toStdString());
    if (!statement)
        throw Finding("an empty text: " + sql.toStdString());
    return statement;
}

void InnerSql::bind(sqlite3_stmt *statement, const QList<qint64> &keys) const
{
    const int count = sqlite3_bind_parameter_count(statement);
    for (int i = 0; i < count; ++i) {
        const qsizetype key = i - m_statement.parameters.size();
        if (key >= keys.size())
            continue;
        if (key >= 0 && keys[key] != 0)
            sqlite3_bind_int64(statement, i + 1, keys[key]);
        else if (key < 0 && dao::isTextType(m_statement.parameters[i].type))
            sqlite3_bind_text(statement, i + 1, "2", 1, SQLITE_STATIC);
        else if (key < 0)
            sqlite3_bind_double(statement, i + 1, 2);
    }
}

void InnerSql::checkError(int result, const QString &sql) const
{
    const std::string message = sqlite3_errmsg(m_handle);
    switch (result & 0xff) {
    case SQLITE_INTERRUPT:
    case SQLITE_TOOBIG:
    case SQLITE_CONSTRAINT:
    case SQLITE_MISMATCH:
        return;
    default:
        break;
    }
    if (!message.starts_with("dao:") && message != "integer overflow")
        throw Finding("an error of the inner engine: " + message + ": " + sql.toStdString());
}

} // namespace fuzz
