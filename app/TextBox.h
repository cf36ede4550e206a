#pragma once
#include <QString>

class QWidget;

namespace app {

class ProjectSession;

/// Part of a text box that is in sight at first.
enum class TextStart { First, Last };
/// Dialog with fixed-width text; it scrolls if the screen is too small, and a button copies all of it. head: shown
/// above the text, copied too; may be null, otherwise the box owns it.
void showTextBox(QWidget *parent, const QString &title, const QString &text, TextStart start = TextStart::First,
                 QWidget *head = nullptr);
/// Dialog "Project Info": the project and the map's file.
void showProjectInfo(QWidget *parent, const ProjectSession &session);
/// Dialog "Keys".
void showKeys(QWidget *parent);
/// Dialog "About Palomine ARVO": version, licence, libraries, folders in use.
void showAbout(QWidget *parent, const ProjectSession &session);
/// Dialog "Failures": the log of failures.
void showFailures(QWidget *parent);

} // namespace app
