#include "MapFiles.h"

#include "Messages.h"

#include <tarnwick/Failures.h>

namespace map {

void reportOtherModel(const MapDocument &document, const MapFile &map, tarnwick::UserPrompts &prompts)
{
    const QString &model = document.component().modelName;
    if (map.modelName != model)
        prompts.error(messages::kOtherModel, map.modelName, model);
}

bool readMap(MapDocument &document, const QString &machinePath, tarnwick::UserPrompts &prompts)
{
    MapFile map;
    const auto read = [&] { map.readMap(machinePath, document.component().numTube()); };
    if (!tarnwick::attempt(prompts, read, messages::kReadMapFailed))
        return false;
    reportOtherModel(document, map, prompts);
    document.setRead(map, machinePath);
    return true;
}

bool exportMap(const MapDocument &document, const QString &machinePath, tarnwick::UserPrompts &prompts)
{
    const auto store = [&] { document.content().storeMap(machinePath); };
    return tarnwick::attempt(prompts, store, messages::kStoreMapFailed);
}

bool storeMap(MapDocument &document, const QString &machinePath, tarnwick::UserPrompts &prompts)
{
    if (!exportMap(document, machinePath, prompts))
        return false;
    document.setStored(machinePath);
    return true;
}

} // namespace map
