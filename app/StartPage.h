#pragma once
#include <QScrollArea>

class QBoxLayout;
class QLabel;
class QListWidget;

namespace tarnwick {
class CommandActions;
}

namespace app {

class ProjectSession;

/// Shown in place of the map while no project is open: the commands to open or make one, and the recent projects.
class StartPage : public QScrollArea
{
    Q_OBJECT
public:
    explicit StartPage(tarnwick::CommandActions &actions, QWidget *parent = nullptr);

    /// Shows the recent projects of the session.
    void refresh(const ProjectSession &session);
    /// Moves the focus to the most recent project, or to the first command.
    void focusFirst();

Q_SIGNALS:
    /// A recent project was chosen.
    void projectChosen(const QString &folder);

private:
    void addCommand(QBoxLayout &layout, tarnwick::CommandActions &actions, int command, const QString &name,
                    const QString &description);
    void choose();

    QWidget *m_first = nullptr;
    QLabel *m_recentLabel;
    QListWidget *m_recent;
};

} // namespace app
