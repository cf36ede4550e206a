#include "MapFiles.h"

#include "Messages.h"

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
    try {
        map.readMap(machinePath, document.component().numTube());
    } catch (const tarnwick::Error &error) {
        messages::errorWithReason(prompts, messages::kReadMapFailed, error);
        return false;
    }
    reportOtherModel(document, map, prompts);
    document.setRead(map, machinePath);
    return true;
}

bool exportMap(const MapDocument &document, const QString &machinePath, tarnwick::UserPrompts &prompts)
{
    try {
        document.content().storeMap(machinePath);
        return true;
    } catch (const tarnwick::Error &error) {
        messages::errorWithReason(prompts, messages::kStoreMapFailed, error);
        return false;
    }
}

bool storeMap(MapDocument &document, const QString &machinePath, tarnwick::UserPrompts &prompts)
{
    if (!exportMap(document, machinePath, prompts))
        return false;
    document.setStored(machinePath);
    return true;
}

} // namespace map
