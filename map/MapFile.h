#pragma once
#include "MapState.h"

#include <fenwright/Infos.h>

namespace map {

/// What a map file holds: the site information of the inspection, as it was at the last save, the model that the tubes
/// belong to, the print header, a description, and the legend's entries. A value: reading it changes no map.
class MapFile : public fenwright::SiteInfo
{
public:
    static constexpr int kVersion = 5;

    QString modelName;
    MapHeader header;
    QString description;
    Entries entries;

    /// Reads versions 1 to 5; what older ones do not have is reset. Tube indices that a component of so many tubes does
    /// not have are left out. Throws tarnwick::FileError, and this object is then as before.
    void readMap(const QString &machinePath, int tubeCount);
    /// Writes version 5. Throws tarnwick::FileError, and an older file is then still there.
    void storeMap(const QString &machinePath) const;

    /// The same as a part of another file.
    void read(tarnwick::JFile &file, int tubeCount);
    void write(tarnwick::JFile &file) const;
};

/// The legend's entries in map files: a 32-bit count, then each entry: version 4, key, the fill. A failed read, an
/// unknown key among them, throws JFileError naming it. Tube indices that a component of so many tubes does not have
/// are left out, and an entry without a symbol gets "A".
Entries readEntries(tarnwick::JFile &file, int tubeCount);
/// The entries of map files of version 1 and 2.
Entries readOldEntries(tarnwick::JFile &file, int tubeCount);
void writeEntries(tarnwick::JFile &file, const Entries &entries);

} // namespace map
