#include "ActionSteps.h"

#include "Connection.h"

#include <dao/sql/Compiler.h>

using namespace Qt::StringLiterals;

namespace dao::store {

namespace {

using Step = sql::ActionPlan::Step;

/// Names the columns of the temporary table; by position if the select gives no usable name.
QStringList columnsOf(const Statement &select, bool keyed)
{
    QStringList names;
    for (int i = 0; i < select.columnCount(); ++i) {
        const QString name = select.columnName(i);
        const bool usable = name.startsWith(u"_k"_s) || name.startsWith(u"_c"_s);
        QString column = sql::quotedName(usable ? name : u"_%1"_s.arg(i));
        if (names.contains(column))
            column = sql::quotedName(u"_%1"_s.arg(i));
        names.append(keyed && i == 0 ? QString(column + u" INTEGER PRIMARY KEY"_s) : column);
    }
    return names;
}

// Copies the rows of a select into a temporary table. Reading takes most of the time of a change; as a separate SELECT
// it can be interrupted without SQLite rolling back the whole transaction.
void materialise(Connection &connection, const Step &step, Access access, const std::function<void(Statement &)> &bind)
{
    Statement select(connection, step.sql, access);
    bind(select);
    const int columns = select.columnCount();
    const QString table = u"temp."_s + sql::quotedName(step.materialiseInto);
    connection.run(u"CREATE TABLE "_s + table + u" ("_s + columnsOf(select, step.keyed).join(u", "_s) + u')');
    Statement insert(connection, u"INSERT OR REPLACE INTO "_s + table + u" VALUES ("_s +
                                     QStringList(columns, u"?"_s).join(u", "_s) + u')');
    while (select.step()) {
        if (step.keyed && select.storage(0) == Statement::Storage::Null)
            continue;
        for (int i = 0; i < columns; ++i)
            insert.bindColumn(i + 1, select, i);
        insert.run();
    }
}

} // namespace

qint64 runSteps(Connection &connection, const QList<Step> &steps, Access access,
                const std::function<void(Statement &)> &bind)
{
    qint64 affected = 0;
    for (const Step &step : steps) {
        if (!step.materialiseInto.isEmpty()) {
            materialise(connection, step, access, bind);
            continue;
        }
        // A step can read a table that an earlier step creates, so each is prepared just before it runs.
        Statement statement(connection, step.sql, access);
        bind(statement);
        if (step.refusal) {
            if (statement.step())
                throw DaoException(*step.refusal);
            continue;
        }
        statement.run();
        if (step.countsRows)
            affected += connection.changes();
    }
    return affected;
}

} // namespace dao::store
