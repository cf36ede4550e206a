#pragma once
#include <map/MapDocument.h>

namespace app {

/// Counts of the map: four lines with a label and a count of width six.
QString statusPanelText(const ellery::TubeStates &tubes);
/// Longest text of the status panel, for measuring its size.
inline constexpr const char16_t *kStatusPanelSample = u"Symbol Count: 000000\n\n\n\n\n";

/// State of the connected database; the path is empty without one.
struct DatabaseStatus
{
    QString path; ///< machine path
    bool updatable = false;
};

/// The database's path relative to the project's arvo folder, or the whole path if it is elsewhere; "<none>" without a
/// database; followed by "READ ONLY" if it cannot be updated.
QString databaseText(const brannock::Project &project, const DatabaseStatus &database);
/// Site, component, model, outage, map and database: six lines.
QString projectPanelText(const brannock::Project &project, const QString &mapName, const DatabaseStatus &database);
/// Text of the status line about the selection.
QString selectionText(const ellery::TubeStates &tubes);
/// Text of "Project Info".
QString projectInfoText(const brannock::Project &project, const DatabaseStatus &database);

/// Text of "Project Info" about the map: file, time and inspection of the last save, description. Empty if there is
/// neither file nor description.
QString mapInfoText(const map::MapDocument &map);

} // namespace app
