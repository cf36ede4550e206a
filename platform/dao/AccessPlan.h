#pragma once
#include "Database.h"

namespace dao {

/// How a statement finds the rows that it reads, and the indexes with which it would find them faster.
struct AccessPlan
{
    /// One thing that the inner engine does, in its order.
    struct Step
    {
        enum class Kind {
            Whole,          ///< reads all rows of a table
            WholeIndex,     ///< reads an index from end to end, in place of the rows
            Search,         ///< finds rows by an index
            Record,         ///< finds one row by its key
            TemporaryIndex, ///< makes an index for this run, and finds rows by it
            Sort,           ///< sorts the rows that were found
            Group,
            Distinct,
        };
        Kind kind = Kind::Whole;
        QString table = {};
        QString index = {};      ///< of a table that is read completely: the order in which it is read
        QStringList fields = {}; ///< by which the rows are searched; a range is the last one
        bool isForEach = false;  ///< once for each row that the step before it has found
        qint64 rows = 0;         ///< of the table, counted
        qint64 expected = -1;    ///< rows that are found at a time, by statistics; -1 if these say nothing
        bool hasUnused = false;  ///< an index of the table could be used, but to read all rows is expected to be faster
    };
    /// An index that does not exist yet.
    struct Wish
    {
        enum class Use { Find, Order };
        QString table;
        QStringList fields;
        Use use = Use::Find;
        bool operator==(const Wish &) const = default;
    };
    QString kind; ///< "SELECT", "change of table ...", as in Explanation
    QList<Step> steps;
    QList<Wish> wishes;
};

/// Reads the plan of a statement without running it; only the rows of its tables are counted. Throws the errors of
/// compiling, and Cancelled if the progress of the database stops it.
AccessPlan accessPlan(Database &database, const QString &sql);

} // namespace dao
