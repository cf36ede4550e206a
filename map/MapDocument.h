#pragma once
#include "MapEdit.h"
#include "MapEvent.h"
#include "MapFile.h"
#include "UndoHistory.h"

#include <brannock/Project.h>
#include <functional>
#include <QDateTime>
#include <tarnwick/JDateTime.h>

namespace map {

/// Keeps a listener of a document subscribed for as long as it lives. May outlive the document.
class Subscription
{
public:
    Subscription() = default;
    explicit Subscription(const std::shared_ptr<void> &token)
        : m_token(token)
    {
    }

private:
    std::shared_ptr<void> m_token;
};

/// The map that is being worked on: the only owner of its entries, selection, flips, header, description and undo, of
/// the marks that the entries paint, and of what is known of the map's file. Reading is const and takes constant time.
/// Every change sends one event to every listener.
class MapDocument
{
public:
    MapDocument();
    ~MapDocument();
    MapDocument(const MapDocument &) = delete;
    MapDocument &operator=(const MapDocument &) = delete;

    using Listener = std::function<void(const MapEvent &)>;
    /// The listener is called until the subscription is destroyed.
    [[nodiscard]] Subscription subscribe(const Listener &listener);

    // The component.
    /// Another project, which must live as long as the document uses it: the map is empty. Null for none.
    void setProject(const brannock::Project *project);
    /// The project's component was replaced by another state of itself: entries and selection follow their tubes by
    /// address, undo begins anew. Returns how many tubes of entries do not exist any more.
    int followComponent(const ellery::SteamGen &before);
    const ellery::SteamGen &component() const;

    // Reading.
    int count() const { return int(state().entries.size()); }
    const plans::MapFill &entry(int place) const { return *state().entries[size_t(place)]; }
    const Entries &entries() const { return state().entries; }
    /// How many tubes show the entry's mark.
    int hits(int place) const { return m_hits[place]; }
    /// The marks that the entries paint, and the selection.
    const ellery::TubeStates &tubes() const { return m_tubes; }
    const QList<qint32> &selection() const { return state().selection; }
    const MapHeader &header() const { return state().header; }
    const QString &description() const { return state().description; }
    const MapState &state() const { return m_history.present(); }

    // Changing.
    using Change = std::function<void(MapEdit &edit)>;
    /// Makes one change, which undo calls by the label. An exception leaves the map as it was; a change that changes
    /// nothing is none. A change made within another one is part of that. When entries change in anything but whether
    /// they are shown, the header's signatures are cleared, since they were given for other entries.
    void change(const QString &label, const Change &make);

    // Undo.
    const UndoHistory &history() const { return m_history; }
    bool canUndo() const { return m_history.canUndo(); }
    bool canRedo() const { return m_history.canRedo(); }
    QString undoLabel() const { return m_history.undoLabel(); }
    QString redoLabel() const { return m_history.redoLabel(); }
    void undo() { moveTo(m_history.position() - 1); }
    void redo() { moveTo(m_history.position() + 1); }
    /// As many changes stand then; the others are undone.
    void moveTo(int position);
    /// The map differs from what its file holds. Selection and flips are in no file and do not count.
    bool isModified() const { return m_history.isModified(); }

    // The file.
    /// What is known of the file as it was read or stored last.
    struct Stored
    {
        fenwright::SiteInfo site; ///< with the model that the places of its tubes belong to
        QDateTime at;             ///< when; null without a file
    };
    /// The map's file in the suite's form of paths; empty for a map that was never stored.
    const QString &file() const { return m_file; }
    /// File name without folder and extension.
    QString name() const;
    const Stored &stored() const { return m_stored; }
    /// Null without a file.
    tarnwick::JDateTime storedAt() const;
    /// Another program has written the file since.
    bool isFileChanged() const;
    /// The file that the map was read from or stored to last does not exist any more.
    bool isFileGone() const;
    /// The file was made for another model: its places meant other tubes there, and some may not be in this map.
    bool isOfOtherModel() const;

    /// Everything a map file holds, as it is now.
    MapFile content() const;
    /// An empty map without a file.
    void clear() { setContent(MapFile(), {}, {}); }
    /// The content of a map file in place of this map; undo begins anew. Selection and flips stay.
    void setContent(const MapFile &map, const QString &file, const Stored &stored);
    /// The same for a file that has just been read.
    void setRead(const MapFile &map, const QString &machinePath);
    /// The map has just been written to this file, which is its own from now on.
    void setStored(const QString &machinePath);
    /// Unsaved work that was kept apart from the map's file: its content, and the selection.
    void restore(const MapFile &map, const QString &file, const Stored &stored, const QList<qint32> &selection);
    /// No file holds the map as it is, whatever is undone.
    void setNeverSaved();

private:
    struct Listeners;

    QString machinePath() const;
    Stored storedNow(const QString &machinePath, const fenwright::SiteInfo &site) const;
    /// Begins undo anew with this state.
    void restart(const MapState &state, MapEvent::Changes further);
    /// Brings tubes and hits up to date after a change of the state.
    void paint(const MapEvent &event);
    void notify(const MapEvent &event);

    const brannock::Project *m_project = nullptr;
    UndoHistory m_history;
    MapEdit *m_edit = nullptr; ///< of the change under way
    ellery::TubeStates m_tubes;
    QList<int> m_hits; ///< of each entry
    QString m_file;
    Stored m_stored;
    std::shared_ptr<Listeners> m_listeners;
};

/// Places of tubes in one state of the component as places in another, by their addresses. Tubes that do not exist any
/// more are left out.
QList<qint32> followTubes(const QList<qint32> &tubes, const ellery::SteamGen &before, const ellery::SteamGen &after);

} // namespace map
