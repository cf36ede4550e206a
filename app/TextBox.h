#pragma once
#include <QString>

class QWidget;

namespace app {

class ProjectSession;

/// Dialog with fixed-width text that can be selected and copied; it scrolls if the screen is too small.
void showTextBox(QWidget *parent, const QString &title, const QString &text);
/// Dialog "Project Info": the project and the map's file.
void showProjectInfo(QWidget *parent, const ProjectSession &session);
/// Dialog "Keys".
void showKeys(QWidget *parent);
void showAbout(QWidget *parent);

} // namespace app
