#pragma once
#include <plans/MapLegend.h>

namespace app {

/// Stands for the contents of a component's files: differs when one of them does. Empty when there are none.
QByteArray componentStamp(const QString &componentFolder);

/// Places of tubes in one state of the component as places in another, by their addresses. Tubes that are no longer
/// there are left out.
QList<qint32> followTubes(const QList<qint32> &tubes, const ellery::SteamGen &before, const ellery::SteamGen &after);
/// The same for legend entries; returns how many tubes were left out of them.
int followTubes(plans::MapLegend::Entries &entries, const ellery::SteamGen &before, const ellery::SteamGen &after);

} // namespace app
