#pragma once
#include <jet/JetContent.h>

namespace db {

/// Counts of what was copied from a Jet file, and remarks on what was not.
struct JetImportReport
{
    struct Table
    {
        QString name;
        qint64 rows = 0;
    };
    int jetVersion = 0; ///< 3 or 4
    QList<Table> tables;
    QStringList relations;
    QStringList queries;
    QList<jet::Remark> remarks;

    bool hasLosses() const;
    /// One line per remark.
    QStringList remarkLines() const;
};

} // namespace db
