#pragma once
#include "MapState.h"

#include <fenwright/Infos.h>

namespace map {

/// Content of a map file: the site information of the inspection at the last save, the model that the tubes belong to,
/// the print header, a description, and the legend's entries. A value: reading it does not change a document.
class MapFile : public fenwright::SiteInfo
{
public:
    static constexpr int kVersion = 5;

    QString modelName;
    MapHeader header;
    QString description;
    Entries entries;

    /// Reads versions 1 to 5; fields that older versions do not have are reset. Tube indices outside of a component
    /// with tubeCount tubes are dropped. Throws tarnwick::FileError; this object is then unchanged.
    void readMap(const QString &machinePath, int tubeCount);
    /// Writes version 5. Throws tarnwick::FileError; an existing file is then unchanged.
    void storeMap(const QString &machinePath) const;

    /// Read and write the content as part of another file.
    void read(tarnwick::JFile &file, int tubeCount);
    void write(tarnwick::JFile &file) const;
};

/// The legend's entries in map files: a 32-bit count, then for each entry version 4, key, fill. Reading throws
/// JFileError if it fails; for an unknown key the error contains the key. Tube indices outside of a component with
/// tubeCount tubes are dropped, and an entry without a symbol gets "A".
Entries readEntries(tarnwick::JFile &file, int tubeCount);
/// The entries of map files of version 1 and 2.
Entries readOldEntries(tarnwick::JFile &file, int tubeCount);
void writeEntries(tarnwick::JFile &file, const Entries &entries);

} // namespace map
