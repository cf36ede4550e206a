#pragma once
#include "MapDocument.h"

#include <tarnwick/Paths.h>
#include <tarnwick/Prompts.h>

namespace map {

/// Replaces the document's map by a map file. Returns false after reporting the error; the map is then unchanged. If
/// the file is of another model, this is reported, and the file is read.
bool readMap(MapDocument &document, const QString &machinePath, tarnwick::UserPrompts &prompts);
/// Writes the map and makes the file the map's own. Returns false after reporting the error.
bool storeMap(MapDocument &document, const QString &machinePath, tarnwick::UserPrompts &prompts);
/// Writes the map to a file without making it the map's own. Returns false after reporting the error.
bool exportMap(const MapDocument &document, const QString &machinePath, tarnwick::UserPrompts &prompts);
/// Reports an error if the file is of another model than the document's component.
void reportOtherModel(const MapDocument &document, const MapFile &map, tarnwick::UserPrompts &prompts);
/// Asks before the map's own file is overwritten, if another program has changed it or it is of another model. Returns
/// false if it must not be overwritten.
bool mayOverwrite(const MapDocument &document, tarnwick::UserPrompts &prompts);
/// Copies a map file after checking that it can be read, and asks before an existing file is replaced. Returns false if
/// nothing was copied; an error has then been reported.
bool copyMap(const QString &from, const QString &to, int tubeCount, const tarnwick::PathRoots &roots,
             tarnwick::UserPrompts &prompts);

} // namespace map
