#pragma once
#include "JetImportReport.h"

#include <dao/Database.h>
#include <tarnwick/base/Progress.h>

namespace db {

struct JetImportOptions
{
    /// If true, a damaged file is copied as far as it can be read, and the losses are listed in the remarks. If false,
    /// it is refused.
    bool acceptLosses = false;
    jet::ReadOptions reading;
};

/// Copies a Jet database into a new database file of this program: tables with fields, rules, rows and indexes;
/// relations; stored queries. The Jet file is only read. progress may be null. The new file must not exist; it appears
/// only when it is complete. Throws dao::DaoException if a file cannot be read completely (3049, 3343, 3051) or the
/// copy cannot be written, and tarnwick::Cancelled.
JetImportReport importJetFile(const QString &jetPath, const QString &newPath, tarnwick::Progress *progress = nullptr,
                              const JetImportOptions &options = {});

} // namespace db
