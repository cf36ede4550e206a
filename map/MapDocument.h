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

/// Keeps a listener subscribed until it is destroyed. May outlive the document.
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

/// The map being worked on. The only owner of its entries, selection, flips, header, description and undo history, of
/// the marks painted by the entries, and of the state of the map's file. Reading is const and takes constant time.
/// Every change sends one event to all listeners.
class MapDocument
{
public:
    MapDocument();
    ~MapDocument();
    MapDocument(const MapDocument &) = delete;
    MapDocument &operator=(const MapDocument &) = delete;

    using Listener = std::function<void(const MapEvent &)>;
    /// The listener is called until the subscription is destroyed. If a listener throws, the others are called
    /// nevertheless, the change remains, and the exception is thrown on.
    [[nodiscard]] Subscription subscribe(const Listener &listener);

    // The component.
    /// Sets another project, which must outlive its use here, and empties the map. Null for none.
    void setProject(const brannock::Project *project);
    /// Call after the project's component was replaced by another version of itself: entries and selection keep their
    /// tubes by address, and the undo history is cleared. Returns the number of entries' tubes that do not exist any
    /// more.
    int followComponent(const ellery::SteamGen &before);
    const ellery::SteamGen &component() const;

    // Reading.
    int count() const { return int(state().entries.size()); }
    const plans::MapFill &entry(int place) const { return *state().entries[size_t(place)]; }
    const Entries &entries() const { return state().entries; }
    /// Number of tubes that show the mark of the entry.
    int hits(int place) const { return m_hits[place]; }
    /// The painted marks and the selection.
    const ellery::TubeStates &tubes() const { return m_tubes; }
    const QList<qint32> &selection() const { return state().selection; }
    const MapHeader &header() const { return state().header; }
    const QString &description() const { return state().description; }
    const MapState &state() const { return m_history.present(); }

    // Changing.
    using Change = std::function<void(MapEdit &edit)>;
    /// Makes one change with this label for undo. If it throws, the map is unchanged. A change without effect leaves no
    /// undo entry. A change within a change becomes part of it. If entries change in anything but whether they are
    /// shown, the header's signatures are cleared, because they were given for other entries.
    void change(const QString &label, const Change &make);

    // Undo.
    const UndoHistory &history() const { return m_history; }
    bool canUndo() const { return m_history.canUndo(); }
    bool canRedo() const { return m_history.canRedo(); }
    QString undoLabel() const { return m_history.undoLabel(); }
    QString redoLabel() const { return m_history.redoLabel(); }
    void undo() { moveTo(m_history.position() - 1); }
    void redo() { moveTo(m_history.position() + 1); }
    /// Undoes or redoes until this number of changes is in effect.
    void moveTo(int position);
    /// True if the map differs from its file. Selection and flips are not stored in files and do not count.
    bool isModified() const { return m_history.isModified(); }

    // The file.
    /// State of the file when it was last read or stored.
    struct Stored
    {
        fenwright::SiteInfo site; ///< includes the model that the tube indices belong to
        QDateTime at;             ///< time; null without a file
    };
    /// The map's file in the suite's form of paths; empty if the map was never stored.
    const QString &file() const { return m_file; }
    /// File name without folder and extension.
    QString name() const;
    const Stored &stored() const { return m_stored; }
    /// Time of the last save; null without a file.
    tarnwick::JDateTime storedAt() const;
    /// True if another program has written the file since.
    bool isFileChanged() const;
    /// True if the file that was last read or stored does not exist any more.
    bool isFileGone() const;
    /// True if the file is of another model: its tube indices meant other tubes there, and some may be missing here.
    bool isOfOtherModel() const;

    /// The present content for a map file.
    MapFile content() const;
    /// Empties the map, without a file.
    void clear() { setContent(MapFile(), {}, {}); }
    /// Replaces the map by the content of a map file and clears the undo history. Selection and flips are kept.
    void setContent(const MapFile &map, const QString &file, const Stored &stored);
    /// As setContent(), for a file that has just been read.
    void setRead(const MapFile &map, const QString &machinePath);
    /// Call after the map was written to this file: it is the map's own file from now on.
    void setStored(const QString &machinePath);
    /// Restores unsaved work from a copy: the content and the selection.
    void restore(const MapFile &map, const QString &file, const Stored &stored, const QList<qint32> &selection);
    /// Marks the map as modified, whatever is undone.
    void setNeverSaved();

private:
    struct Listeners;

    QString machinePath() const;
    Stored storedNow(const QString &machinePath, const fenwright::SiteInfo &site) const;
    /// Starts a new undo history with this state.
    void restart(const MapState &state, MapEvent::Changes further);
    /// Updates tubes and hits after a change of the state.
    void paint(const MapEvent &event);
    void notify(const MapEvent &event);

    const brannock::Project *m_project = nullptr;
    UndoHistory m_history;
    MapEdit *m_edit = nullptr; ///< the change in progress
    ellery::TubeStates m_tubes;
    QList<int> m_hits; ///< number of visible tubes of each entry
    QString m_file;
    Stored m_stored;
    std::shared_ptr<Listeners> m_listeners;
};

/// Converts tube indices of one version of the component to indices of another, by address. Tubes that do not exist any
/// more are left out.
QList<qint32> followTubes(const QList<qint32> &tubes, const ellery::SteamGen &before, const ellery::SteamGen &after);

} // namespace map
