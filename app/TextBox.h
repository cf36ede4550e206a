#pragma once
#include <QString>

class QWidget;

namespace app {

class ProjectSession;

/// A box with fixed-width text that can be selected and copied; it scrolls where the screen is too small for it.
void showTextBox(QWidget *parent, const QString &title, const QString &text);
/// "Project Info": the project, and the map's file.
void showProjectInfo(QWidget *parent, const ProjectSession &session);
/// "Keys"
void showKeys(QWidget *parent);
void showAbout(QWidget *parent);

} // namespace app
