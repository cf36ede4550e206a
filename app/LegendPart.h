#pragma once
#include <app/logic/Commands.h>

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

    /// Runs a command of the legend. False when it is another's.
    bool run(Extra extra);
    /// The tubes as lines for the clipboard: those of the current entry when the legend has the focus, else the
    /// selected ones, else the whole map's.
    void copyTubes();

private:
    bool runEntry(Extra extra, int place);
    void move(int from, int to);

    map::MapDocument &m_document;
    tarnwick::UserPrompts &m_prompts;
    map::LegendCommands m_commands;
    FillCommands &m_fills;
    LegendView &m_view;
};

} // namespace app
