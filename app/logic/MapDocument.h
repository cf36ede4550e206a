#pragma once
#include "MapFile.h"

#include <brannock/Project.h>
#include <QDateTime>
#include <tarnwick/JDateTime.h>
#include <tarnwick/Prompts.h>

namespace app {

/// The map that is being worked on: the legend with what belongs to it beside the entries, and its file. Says what
/// fails; the map is then as before.
class MapDocument
{
public:
    /// Takes the legend's note of edits: they empty the header's signatures.
    MapDocument(plans::MapLegend &legend, tarnwick::UserPrompts &prompts);
    /// Another project: nothing of the map is left. Null for none.
    void setProject(const brannock::Project *project);

    MapHeader header;
    QString description;
    /// The map's file in the suite's form of paths; empty for a map that was never stored.
    const QString &file() const { return m_file; }
    /// File name without folder and extension.
    QString name() const;
    /// Of the file as it was read or stored last: for which inspection, and when. Empty and null without a file.
    const fenwright::SiteInfo &storedSite() const { return m_stored.site; }
    tarnwick::JDateTime storedAt() const;
    /// Somebody else has written the file since.
    bool isFileChanged() const;
    /// The file that the map was read from or stored to last is not there any more.
    bool isFileGone() const;
    /// The file was made for another model: its places meant other tubes there, and some may not be in this map.
    bool isOfOtherModel() const;

    /// Of the component that the map belongs to.
    int tubeCount() const { return m_project ? m_project->steamGen.numTube() : 0; }

    /// An empty map without a file.
    void clear();
    /// Reads a map file (machine path) in place of this map. False when it cannot (1039). A map of another model is
    /// said (1041) and read all the same.
    bool readMap(const QString &machinePath);
    /// Writes the map, which from then on belongs to that file. False when it cannot.
    bool storeMap(const QString &machinePath);
    /// Writes the map to another place; it keeps its own file.
    bool exportMap(const QString &machinePath);

    /// What is known of the file as it was read or stored last.
    struct Stored
    {
        fenwright::SiteInfo site; ///< with the model that the places of its tubes belong to
        QDateTime at;             ///< when; null without a file
    };
    const Stored &stored() const { return m_stored; }

    /// Everything a file holds, as it is now; and back.
    MapFile content() const;
    void setContent(MapFile map, const QString &file);
    /// The same for content with changes that were kept apart from the file. Another model is said (1041).
    void restoreContent(MapFile map, const QString &file, const Stored &stored);

    /// Header and description as one record, for undo.
    QByteArray headerRecord() const;
    void setHeaderRecord(const QByteArray &record);

private:
    void checkModel(const MapFile &map);
    bool writeTo(const QString &machinePath);
    void noteStored(const QString &machinePath, const fenwright::SiteInfo &site);

    plans::MapLegend &m_legend;
    tarnwick::UserPrompts &m_prompts;
    const brannock::Project *m_project = nullptr;
    QString m_file;
    Stored m_stored;
};

} // namespace app
