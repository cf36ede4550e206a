#pragma once
#include <demo/DemoOptions.h>
#include <QString>
#include <tarnwick/base/Progress.h>

namespace setup {

/// Makes a demo project with its database, in the middle of its present outage, completely or not at all:
/// the reports of the earlier outages and most of the present one are uploaded; one cal is converted, but its reports
/// are not uploaded; the texts of the last cals are not converted. Table repairs has completed and scheduled repairs,
/// the database has a plan and a tube set, and there is a history file.
///
/// Throws tarnwick::Error and tarnwick::Cancelled. progress may be null.
void makeFilledDemo(const demo::DemoOptions &options, const QString &folder, tarnwick::Progress *progress = nullptr);

} // namespace setup
