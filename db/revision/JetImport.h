#pragma once
#include <dao/Database.h>
#include <jet/JetReader.h>
#include <tarnwick/Progress.h>

namespace db {

/// What came over from a Jet file, and what did not.
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
    /// One line for each remark.
    QStringList remarkLines() const;
};

struct JetImportOptions
{
    /// A damaged file whose content is not whole is carried over as far as it goes; its losses are among the remarks.
    /// Otherwise it is refused.
    bool acceptLosses = false;
    jet::ReadOptions reading;
};

/// Copies a Jet database into a new database file of this program: tables with their fields, rules, rows and indexes,
/// relations and stored queries. The Jet file is only read. progress may be null. The new file must not exist, and does
/// not before it is whole. Throws dao::DaoException for a file that cannot be read whole (3049, 3343, 3051) or a copy
/// that cannot be written, dao::DaoCancelled.
JetImportReport importJetFile(const QString &jetPath, const QString &newPath, tarnwick::Progress *progress = nullptr,
                              const JetImportOptions &options = {});

} // namespace db
