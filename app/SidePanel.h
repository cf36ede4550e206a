#pragma once
#include <QWidget>

namespace tarnwick {
class CommandActions;
}

namespace app {

class LegendModel;
class LegendView;
class ProjectSession;
class TextPanel;

/// Panel beside the map: the project, the counts, and the legend with its buttons.
class SidePanel : public QWidget
{
    Q_OBJECT
public:
    explicit SidePanel(tarnwick::CommandActions &actions, QWidget *parent = nullptr);

    LegendModel &legendModel() { return *m_model; }
    LegendView &legendView() { return *m_view; }
    /// Updates project and counts.
    void refresh(const ProjectSession &session);

private:
    QWidget *makeLegendHead(tarnwick::CommandActions &actions);

    TextPanel *m_project;
    TextPanel *m_status;
    LegendModel *m_model;
    LegendView *m_view;
};

} // namespace app
