#pragma once
#include <map/MapDocument.h>

namespace app {

/// The counts of the map: four lines, each a label and a count six wide.
QString statusPanelText(const ellery::TubeStates &tubes);
/// The widest the status panel gets; its size is measured on it.
inline constexpr const char16_t *kStatusPanelSample = u"Symbol Count: 000000\n\n\n\n\n";

/// Of the connected database; path empty when there is none.
struct DatabaseStatus
{
    QString path; ///< of the machine
    bool updatable = false;
};

/// The database's path relative to the project's arvo folder, whole when it lies elsewhere, "<none>" without one; with
/// "READ ONLY" behind it when it cannot be updated.
QString databaseText(const brannock::Project &project, const DatabaseStatus &database);
/// Site, component, model, outage, map and database: six lines.
QString projectPanelText(const brannock::Project &project, const QString &mapName, const DatabaseStatus &database);
/// What the status line says of the selection.
QString selectionText(const ellery::TubeStates &tubes);
/// What "Project Info" shows.
QString projectInfoText(const brannock::Project &project, const DatabaseStatus &database);

/// What "Project Info" adds about the map: its file, when and for which inspection it was stored, its description.
/// Empty for a map that has neither.
QString mapInfoText(const map::MapDocument &map);

} // namespace app
