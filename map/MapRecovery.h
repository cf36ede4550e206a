#pragma once
#include "MapDocument.h"

#include <optional>
#include <tarnwick/RecoveryCopies.h>

namespace map {

/// Header and description in the header dialog that are not set in the map yet.
struct HeaderDraft
{
    MapHeader header;
    QString description;
    bool operator==(const HeaderDraft &) const = default;
};

/// Work on a map that is not stored in a file.
struct UnsavedWork
{
    bool isModified = false; ///< the map differs from its file
    QList<qint32> selection; ///< selected tubes
    std::optional<HeaderDraft> draft;

    bool isEmpty() const { return !isModified && selection.isEmpty() && !draft; }
};

/// Keeps a copy of the map with its unsaved changes in the user's data folder, to restore them after a crash. Does not
/// change the user's own files. Each running program has its own copy and holds a lock on it; the lock of a crashed
/// program is free.
class MapRecovery
{
public:
    explicit MapRecovery(tarnwick::UserPrompts &prompts);
    ~MapRecovery();
    MapRecovery(const MapRecovery &) = delete;
    MapRecovery &operator=(const MapRecovery &) = delete;

    /// Starts keeping copies for this project, and finds the copies that crashed programs left for it.
    void begin(const QString &projectFolder);
    /// Why no copy can be kept; empty if it can.
    const QString &problem() const { return m_problem; }
    /// Offers the copies that crashed programs left, newest first. Yes: the document is restored from the copy, and the
    /// unsaved work is returned. No: the copy is deleted. Cancel: the copy is offered again at the next start.
    std::optional<UnsavedWork> offer(MapDocument &map);
    /// Writes the copy if there is unsaved work, otherwise deletes it.
    void update(const MapDocument &map, const UnsavedWork &work);
    /// Deletes the copy at the regular end of work on this project.
    void end();

private:
    struct Kept;
    tarnwick::RecoveryCopies::Decision decide(const tarnwick::RecoveryCopies::Left &left, MapDocument &map,
                                              std::optional<UnsavedWork> &restored);
    void fail(const QString &reason);

    tarnwick::UserPrompts &m_prompts;
    QString m_project;
    std::optional<tarnwick::RecoveryCopies> m_copies;
    QString m_problem;
};

} // namespace map
