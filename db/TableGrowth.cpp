#include "TableGrowth.h"

#include "Schema.h"
#include "SqlText.h"

namespace db {

using namespace Qt::StringLiterals;

void noteTableGrowth(dao::Database &database, const QString &table, qint64 rowsAdded)
{
    constexpr qint64 kEnoughRows = 20'000;
    const QString analyzedKey = u"RowsAnalyzed."_s + table;
    const QString addedKey = u"RowsAddedSince."_s + table;
    if (rowsAdded <= 0)
        return;
    try {
        const qint64 analyzed = database.property(analyzedKey).toLongLong();
        const qint64 added = database.property(addedKey).toLongLong() + rowsAdded;
        if (added < std::max(kEnoughRows, analyzed / 2)) {
            database.setProperty(addedKey, QString::number(added));
            return;
        }
        database.analyze(table);
        database.setProperty(analyzedKey, QString::number(analyzed + added));
        database.setProperty(addedKey, u"0"_s);
    } catch (const dao::DaoException &) {
        // A failure here is ignored: statistics only affect speed, not whether the rows are stored.
    }
}

void completeStatistics(dao::Database &database)
{
    try {
        for (const TableSpec &spec : tableSpecs()) {
            const QString table = QString::fromUtf16(spec.name);
            if (spec.expectedRows == 0 || !database.hasTable(table) || database.hasStatistics(table))
                continue;
            if (firstValue(database, u"SELECT COUNT(*) FROM "_s + table).integer() > 0)
                database.analyze(table);
            else
                seedStatistics(database, spec);
        }
    } catch (const dao::DaoException &) {
        // Ignored for the same reason.
    }
}

} // namespace db
