#pragma once
#include <map/MapDocument.h>
#include <memory>
#include <optional>
#include <tarnwick/ProcessLock.h>
#include <tarnwick/Prompts.h>

namespace app {

/// Header and description as they stand in the header dialog, not yet set.
struct HeaderDraft
{
    map::MapHeader header;
    QString description;
    bool operator==(const HeaderDraft &) const = default;
};

/// What of the work on a map is in no file.
struct UnsavedWork
{
    bool isModified = false; ///< the map differs from its file
    QList<qint32> selection; ///< selected tubes
    std::optional<HeaderDraft> draft;

    bool isEmpty() const { return !isModified && selection.isEmpty() && !draft; }
};

/// Keeps a copy of the map with its unsaved changes in the user's own data folder, for the case that the program does
/// not come to its end. The user's files are never touched. Programs that run side by side keep copies of their own;
/// each holds a lock on its copy, which a program that has died does not.
class MapRecovery
{
public:
    explicit MapRecovery(tarnwick::UserPrompts &prompts);
    ~MapRecovery();
    MapRecovery(const MapRecovery &) = delete;
    MapRecovery &operator=(const MapRecovery &) = delete;

    /// From now on copies are kept, for this project. What dead programs have left of it can be restored.
    void begin(const QString &projectFolder);
    bool isOn() const { return m_own != nullptr; }
    /// Why the changes are not safe from a crash, although they should be; empty when they are.
    const QString &problem() const { return m_problem; }
    /// Offers what a dead program has left, the newest first. Yes: the map becomes the copy, and the work that was in
    /// no file is returned. No: the copy is thrown away. Cancel: it is offered again the next time.
    std::optional<UnsavedWork> offer(map::MapDocument &map);
    /// Brings the copy up to date: written while there is something unsaved, removed when there is not.
    void update(const map::MapDocument &map, const UnsavedWork &work);
    /// The clean end of the work on this project: the copy is removed.
    void end();

    /// Where copies lie.
    static QString folder();

private:
    /// A place for a copy, held by its lock.
    struct Slot
    {
        QString path;
        std::unique_ptr<tarnwick::ProcessLock> lock;
    };
    struct Kept;
    void findSlots();
    bool readKept(const QString &path, int tubeCount, Kept &kept) const;
    std::optional<UnsavedWork> offerOne(std::unique_ptr<Slot> &slot, map::MapDocument &map);
    void write(const QByteArray &content);
    void fail(const QString &reason);

    tarnwick::UserPrompts &m_prompts;
    QString m_project;
    std::unique_ptr<Slot> m_own;
    std::vector<std::unique_ptr<Slot>> m_left;
    QByteArray m_written; ///< what the copy holds
    QString m_problem;
};

} // namespace app
