#pragma once
#include <tarnwick/CommandHandlers.h>

#include <map/LegendCommands.h>

#include <QObject>

namespace app {

class CommandRunner;
class FillCommands;
class LegendView;
class SidePanel;

/// What the user asks of the legend: by its table, its keys and its buttons.
class LegendPart : public QObject
{
    Q_OBJECT
public:
    /// All must live as long as this object.
    LegendPart(map::MapDocument &document, const map::FillRunner &runner, FillCommands &fills, SidePanel &panel,
               CommandRunner &commands, QObject *parent);

    /// Binds the commands of the legend and its entries to their actions.
    void bind(tarnwick::CommandHandlers &handlers);
    /// The tubes as lines for the clipboard: those of the current entry when the legend has the focus, else the
    /// selected ones, else the whole map's.
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
