#pragma once

class QWidget;

namespace app {

class MapPane;
class ProjectSession;

/// Opens the dialog of the program's options. The map shows what is chosen at once, and as before when it is not kept.
void editOptions(ProjectSession &session, MapPane &map, QWidget *parent);

} // namespace app
