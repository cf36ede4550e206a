#pragma once
#include <QList>
#include <QString>

namespace dao::store {

class Connection;

/// The planner's statistics. Empty table: of the whole file.
void analyze(Connection &connection, const QString &table);

/// A line of statistics: the index by its name in the file, empty for the table itself; rows, then rows for each
/// prefix.
struct StatisticsLine
{
    QString index;
    QString numbers;
};

QList<StatisticsLine> readStatistics(Connection &connection, const QString &table);
/// Replaces those of the table and makes the planner take note.
void writeStatistics(Connection &connection, const QString &table, const QList<StatisticsLine> &lines);

} // namespace dao::store
