#pragma once

class QWidget;

namespace app {

class MapPane;
class ProjectSession;

/// Opens the dialog of the program's options. The map previews them, and is restored if they are not accepted.
void editOptions(ProjectSession &session, MapPane &map, QWidget *parent);

} // namespace app
