#include "MapFiles.h"

#include "Messages.h"

#include <QFileInfo>
#include <tarnwick/Failures.h>
#include <tarnwick/FileWriter.h>

using tarnwick::Answer;
using tarnwick::Buttons;

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

bool mayOverwrite(const MapDocument &document, tarnwick::UserPrompts &prompts)
{
    const auto mayReplace = [&](const tarnwick::Message &question) {
        return prompts.question(Buttons::NoYes, question, tarnwick::SuitePath(document.file()).shown()) == Answer::Yes;
    };
    if (document.isFileChanged() && !mayReplace(messages::kAskReplaceChanged))
        return false;
    return !document.isOfOtherModel() || mayReplace(messages::kAskReplaceOtherModel);
}

bool copyMap(const QString &from, const QString &to, int tubeCount, const tarnwick::PathRoots &roots,
             tarnwick::UserPrompts &prompts)
{
    const auto read = [&] { MapFile().readMap(from, tubeCount); };
    if (!tarnwick::attempt(prompts, read, messages::kReadMapFailed))
        return false;
    const QString name = tarnwick::SuitePath::fromMachine(to, roots).shown();
    if (QFileInfo::exists(to) && prompts.question(Buttons::NoYes, messages::kAskReplaceFile, name) != Answer::Yes)
        return false;
    const auto copy = [&] { tarnwick::writeFileAtomically(to, tarnwick::readFile(from)); };
    return tarnwick::attempt(prompts, copy, messages::kStoreMapFailed);
}

} // namespace map
