#pragma once
#include <QString>

class QWidget;

namespace tarnwick {
class CommandHandlers;
}

namespace app {

class MapPane;
class ProjectSession;
class SidePanel;

/// Opens the dialog of a kind of fill. A new entry becomes the current entry of the legend.
class FillCommands
{
public:
    /// parent: of the dialogs. All must outlive this object.
    FillCommands(ProjectSession &session, MapPane &map, SidePanel &panel, QWidget *parent)
        : m_session(session)
        , m_map(map)
        , m_panel(panel)
        , m_parent(parent)
    {
    }

    /// Binds the commands of all kinds of fills.
    void bind(tarnwick::CommandHandlers &handlers);
    /// Opens the dialog of a kind of fills. A new entry becomes the legend's current one.
    void make(const QString &key);
    /// Runs a query file and adds its tubes. Returns false after reporting the failure.
    bool addQueryFile(const QString &machinePath);
    void edit(int place);
    /// Map and legend preview each choice.
    void chooseMark(int place);

private:
    bool has(int place) const;

    ProjectSession &m_session;
    MapPane &m_map;
    SidePanel &m_panel;
    QWidget *m_parent;
};

} // namespace app
