#include "SelectionCommands.h"

#include "WindowCommandTable.h"

#include <ellery/TubeGrid.h>

#include <algorithm>
#include <functional>

namespace app {

namespace {

/// Largest distance of neighbours in pitches: more than 1 for rounded positions, less than 1.41, the distance of the
/// next tubes in a square pattern.
constexpr double kNeighbourDistance = 1.2;

using Rule = std::function<bool(int)>;

void selectWhere(ellery::TubeStates &tubes, bool selected, const Rule &rule)
{
    for (int tube = 0; tube < tubes.count(); ++tube) {
        if (rule(tube))
            tubes.setSelected(tube, selected);
    }
}

/// Selecting command for a deselecting command; both series of numbers have the same order.
int selecting(int command)
{
    return command >= DeselectAllTubes ? command - DeselectAllTubes + SelectAllTubes : command;
}

/// Rules for the whole map; empty for a command that needs the pointed tube.
Rule mapRule(int command, const ellery::SteamGen &steamGen, const ellery::TubeStates &tubes)
{
    switch (selecting(command)) {
    case SelectAllTubes:
        return [](int) { return true; };
    case SelectAllSymbols:
        return [&tubes](int tube) { return !tubes.isOpen(tube); };
    case SelectOpenTubes:
        return [&tubes](int tube) { return tubes.isOpen(tube); };
    case SelectPeriph:
        return [&steamGen](int tube) { return steamGen[tube].periphery; };
    default:
        return {};
    }
}

Rule pointedRule(int command, const ellery::SteamGen &steamGen, const ellery::TubeStates &tubes, int pointed)
{
    const ellery::TubeAddress address = steamGen[pointed].address;
    switch (selecting(command)) {
    case SelectSymbol:
        return [&tubes, pointed](int tube) {
            return !tubes.isOpen(pointed) && tubes.symbol(tube) == tubes.symbol(pointed);
        };
    case SelectSection:
        return [&steamGen, address](int tube) { return steamGen[tube].address.sec == address.sec; };
    case SelectRow:
        return [&steamGen, address](int tube) {
            return steamGen[tube].address.row == address.row && steamGen[tube].address.sec == address.sec;
        };
    case SelectGroup: {
        const QList<qint32> group = connectedGroup(steamGen, tubes, pointed);
        return [group](int tube) { return std::binary_search(group.begin(), group.end(), tube); };
    }
    default:
        return [](int) { return false; };
    }
}

} // namespace

QList<qint32> selectionAfter(int command, const ellery::SteamGen &steamGen, const ellery::TubeStates &tubes,
                             int pointed)
{
    Rule rule = mapRule(command, steamGen, tubes);
    if (!rule && pointed >= 0)
        rule = pointedRule(command, steamGen, tubes, pointed);
    ellery::TubeStates changed = tubes;
    if (rule)
        selectWhere(changed, selecting(command) == command, rule);
    return changed.selection();
}

QList<qint32> connectedGroup(const ellery::SteamGen &steamGen, const ellery::TubeStates &tubes, int tube)
{
    const ellery::TubeGrid grid(steamGen.tubes());
    const double reach = grid.spacing() * kNeighbourDistance;
    const int section = steamGen[tube].address.sec;
    std::vector<bool> seen(size_t(steamGen.numTube()));
    QList<qint32> group{tube};
    seen[size_t(tube)] = true;
    for (qsizetype i = 0; i < group.size(); ++i) {
        const ellery::Tube &centre = steamGen[group[i]];
        for (const qint32 near : grid.within(double(centre.x), double(centre.y), reach)) {
            if (seen[size_t(near)] || steamGen[near].address.sec != section || tubes.symbol(near) != tubes.symbol(tube))
                continue;
            seen[size_t(near)] = true;
            group.append(near);
        }
    }
    std::sort(group.begin(), group.end());
    return group;
}

} // namespace app
