#pragma once
#include <tarnwick/CommandHandlers.h>

#include <map/LegendCommands.h>

#include <QObject>

namespace app {

class CommandRunner;
class FillCommands;
class LegendView;
class SidePanel;

/// Handles requests of the user from table, keys and buttons of the legend.
class LegendPart : public QObject
{
    Q_OBJECT
public:
    /// All must outlive this object.
    LegendPart(map::MapDocument &document, const map::FillRunner &runner, FillCommands &fills, SidePanel &panel,
               CommandRunner &commands, QObject *parent);

    /// Binds the commands of the legend and its entries.
    void bind(tarnwick::CommandHandlers &handlers);
    /// Tubes as text for the clipboard: those of the current entry if the legend has the focus, otherwise the selected
    /// tubes, otherwise those of the whole map.
    void copyTubes();

private:
    void bindEntry(tarnwick::CommandHandlers &handlers);
    void move(int from, int to);

    map::MapDocument &m_document;
    tarnwick::UserPrompts &m_prompts;
    map::LegendCommands m_commands;
    FillCommands &m_fills;
    LegendView &m_view;
};

} // namespace app
