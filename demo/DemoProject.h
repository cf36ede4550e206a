#pragma once
#include "DemoOptions.h"

#include <brannock/Project.h>
#include <QString>
#include <tarnwick/base/Progress.h>

namespace demo {

/// Builds the project for that folder in memory, without writing files: component, outages, users, probes.
brannock::Project inventProject(const DemoOptions &options, const QString &folder);

/// Creates a project with generated data: project.json, the component, reports of the earlier outages (reports\*.rep),
/// text reports of the present outage in two layouts (foreign, foreign2) with the specs that read them
/// (report_formats), queries, tube lists and plans.
///
/// The folder must not exist or be empty. Throws tarnwick::Error if options are out of range, tarnwick::FileError, and
/// tarnwick::Cancelled; the files written so far are then removed.
void makeProject(const DemoOptions &options, const QString &folder, tarnwick::Progress *progress = nullptr);

} // namespace demo
