#pragma once
#include <QString>

class QWidget;

namespace tarnwick {
class CommandHandlers;
}

namespace tarnwick {
class FileDialogs;
}

namespace app {

class MapPane;
class PlanCommands;
class ProjectSession;
class SidePanel;

/// Opens the dialog of a kind of fill. A new entry becomes the current entry of the legend.
class FillCommands
{
public:
    /// parent: of the dialogs. All must outlive this object.
    FillCommands(ProjectSession &session, MapPane &map, SidePanel &panel, PlanCommands &plans, QWidget *parent)
        : m_session(session)
        , m_map(map)
        , m_panel(panel)
        , m_plans(plans)
        , m_parent(parent)
    {
    }

    /// The dialogs that ask for files; must outlive this object.
    void setFileDialogs(tarnwick::FileDialogs *dialogs) { m_dialogs = dialogs; }
    /// Binds the commands of all kinds of fills.
    void bind(tarnwick::CommandHandlers &handlers);
    /// Opens the dialog of a kind of fills. A new entry becomes the legend's current one.
    void make(const QString &key);
    /// Runs a query file and adds its tubes. Returns false after reporting the failure.
    bool addQueryFile(const QString &machinePath);
    /// Opens the dialog of a new list fill with a list file.
    void openList(const QString &machinePath);
    void edit(int place);
    /// Map and legend preview each choice.
    void chooseMark(int place);

private:
    bool has(int place) const;
    /// place: -1 for a new fill. Returns true if it was added or changed.
    bool openQueryFill(int place);

    ProjectSession &m_session;
    MapPane &m_map;
    SidePanel &m_panel;
    PlanCommands &m_plans;
    QWidget *m_parent;
    tarnwick::FileDialogs *m_dialogs = nullptr;
};

} // namespace app
