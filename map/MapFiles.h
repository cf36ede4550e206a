#pragma once
#include "MapDocument.h"

#include <tarnwick/Prompts.h>

namespace map {

/// Reads a map file in place of the map. Returns false after reporting why it cannot; the map is then as before. A map
/// of another model is reported and read all the same.
bool readMap(MapDocument &document, const QString &machinePath, tarnwick::UserPrompts &prompts);
/// Writes the map, which from then on belongs to that file. Returns false after reporting why it cannot.
bool storeMap(MapDocument &document, const QString &machinePath, tarnwick::UserPrompts &prompts);
/// Writes the map to another place; it keeps its own file.
bool exportMap(const MapDocument &document, const QString &machinePath, tarnwick::UserPrompts &prompts);
/// Reports when the file was made for another model than the document's component.
void reportOtherModel(const MapDocument &document, const MapFile &map, tarnwick::UserPrompts &prompts);

} // namespace map
