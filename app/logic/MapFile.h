#pragma once
#include "MapHeader.h"

#include <fenwright/Infos.h>
#include <plans/MapLegend.h>

namespace app {

/// What a map file holds: the site information of the inspection, as it was at the last save, the model that the tubes
/// belong to, the print header, a description, and the legend's entries. A value: no legend shows it until its entries
/// are handed to one.
class MapFile : public fenwright::SiteInfo
{
public:
    static constexpr int kVersion = 5;

    QString modelName;
    MapHeader header;
    QString description;
    plans::MapLegend::Entries entries;

    /// Reads versions 1 to 5; what older ones do not have is reset. Tube indices that a component of so many tubes does
    /// not have are left out. Throws tarnwick::FileError, and this object is then as before.
    void readMap(const QString &machinePath, int tubeCount);
    /// Writes version 5. Throws tarnwick::FileError, and an older file is then still there.
    void storeMap(const QString &machinePath) const;

    /// The same as a part of another file.
    void read(tarnwick::JFile &file, int tubeCount);
    void write(tarnwick::JFile &file) const;
};

} // namespace app
