#include "Statistics.h"

#include "Connection.h"

#include <dao/sql/Compiler.h>

using namespace Qt::StringLiterals;

namespace dao::store {

namespace {

bool haveStatistics(Connection &connection)
{
    return connection.number(u"SELECT count(*) FROM sqlite_schema WHERE name = 'sqlite_stat1'"_s) != 0;
}

} // namespace

void analyze(Connection &connection, const QString &table)
{
    connection.releaseRead();
    connection.run(table.isEmpty() ? u"ANALYZE main"_s : QString(u"ANALYZE main."_s + sql::quotedName(table)));
}

QList<StatisticsLine> readStatistics(Connection &connection, const QString &table)
{
    QList<StatisticsLine> lines;
    if (!haveStatistics(connection))
        return lines;
    Statement rows(connection, u"SELECT idx, stat FROM sqlite_stat1 WHERE tbl = ?1 COLLATE NOCASE"_s);
    rows.bind(1, table);
    while (rows.step())
        lines.append({rows.text(0), rows.text(1)});
    return lines;
}

void writeStatistics(Connection &connection, const QString &table, const QList<StatisticsLine> &lines)
{
    connection.releaseRead();
    // SQLite creates sqlite_stat1 only when ANALYZE runs.
    if (!haveStatistics(connection))
        connection.run(u"ANALYZE main."_s + sql::quotedName(table));
    Statement remove(connection, u"DELETE FROM sqlite_stat1 WHERE tbl = ?1 COLLATE NOCASE"_s);
    remove.bind(1, table);
    remove.run();
    Statement insert(connection, u"INSERT INTO sqlite_stat1 (tbl, idx, stat) VALUES (?1, ?2, ?3)"_s);
    for (const StatisticsLine &line : lines) {
        insert.bind(1, table);
        if (line.index.isEmpty())
            insert.bindNull(2);
        else
            insert.bind(2, line.index);
        insert.bind(3, line.numbers);
        insert.run();
    }
    connection.run(u"ANALYZE sqlite_schema"_s);
}

} // namespace dao::store
