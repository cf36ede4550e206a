#pragma once
#include <QList>
#include <QString>

namespace dao::store {

class Connection;

/// Gathers the query planner's statistics (ANALYZE). Empty table name: of the whole file.
void analyze(Connection &connection, const QString &table);

/// A row of sqlite_stat1: the name of the index in the file, empty for the table itself; number of rows, then average
/// rows per key for each prefix of the index.
struct StatisticsLine
{
    QString index;
    QString numbers;
};

QList<StatisticsLine> readStatistics(Connection &connection, const QString &table);
/// Replaces the statistics of the table and lets the planner load them.
void writeStatistics(Connection &connection, const QString &table, const QList<StatisticsLine> &lines);

} // namespace dao::store
