#pragma once
#include "MapHost.h"

#include <tarnwick/JFile.h>

namespace plans {

/// A legend entry: a rule that picks tubes and marks them with its own symbol and colour. Abstract; one class a kind.
class MapFill
{
public:
    virtual ~MapFill() = default;

    QString typeKey;           ///< key of the kind, written before the fill in map files
    bool shown = true;         ///< hidden entries are not painted
    char16_t symbol = u'A';
    quint32 colour = 0x0000FF; ///< 0x00BBGGRR
    QString label;             ///< the entry's description in the legend
    QList<qint32> tubes;       ///< indices into the steam generator's tubes, in the order the fill produced them
    qint32 fillCount = 0;      ///< tubes (records) of the last computation: TUBES in the legend
    bool allSections = false;  ///< painting marks the same row and column in every section
    qint32 paintedCount = 0;   ///< tubes actually painted in the last paint: HITS in the legend; not stored

    /// Entry version written; versions from 2 on are read.
    static constexpr int kVersion = 4;
    /// The common fields; each kind calls this first and then handles its own.
    virtual void serialize(tarnwick::JFile &file, int version);
    virtual std::unique_ptr<MapFill> clone() const = 0;
    /// The legend changed symbol or colour.
    virtual void symbolChanged(MapHost &) {}
    /// The kind's parameters from a map file of version 2 or lower. The base refuses.
    virtual void readOldFormat(tarnwick::JFile &file);
    /// Recomputes the tubes from the parameters and the present state of steam generator and map.
    virtual bool compute(MapHost &host) = 0;

    /// Gives every tube without a symbol this entry's, and counts them as painted. Does nothing when hidden.
    void paint(ellery::SteamGen &steamGen);

protected:
    MapFill() = default;
    MapFill(const MapFill &) = default;
    MapFill &operator=(const MapFill &) = default;
};

/// A kind of fill: its key in files, the label of its tool button, and how to make one. Kinds register themselves.
class MapFillType
{
public:
    MapFillType(const QString &key, const QString &name);
    virtual ~MapFillType() = default;
    virtual std::unique_ptr<MapFill> create() const = 0;

    const QString key;
    const QString name;

    /// In the order of the tool buttons.
    static const QList<const MapFillType *> &all();
    static const MapFillType *find(QStringView key);
};

} // namespace plans
