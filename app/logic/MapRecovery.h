#pragma once
#include "MapDocument.h"

#include <memory>

class QLockFile;

namespace app {

/// Keeps a copy of the map with its unsaved changes beside the suite's state, for the case that the program does not
/// come to its end. The user's own files are never touched. Programs that run side by side keep copies of their own;
/// each holds a lock on its copy, which a program that has died does not.
class MapRecovery
{
public:
    explicit MapRecovery(tarnwick::UserPrompts &prompts);
    ~MapRecovery();
    MapRecovery(const MapRecovery &) = delete;
    MapRecovery &operator=(const MapRecovery &) = delete;

    /// From now on copies are kept, for this project. What dead programs have left of it can be restored.
    void begin(const tarnwick::PathRoots &roots);
    bool isOn() const { return m_own != nullptr; }
    /// Offers what a dead program has left, the newest first. Yes: the map becomes the copy, and true is returned. No:
    /// the copy is thrown away. Cancel: it is offered again the next time.
    bool offer(MapDocument &map);
    /// Brings the copy up to date: written while there is something unsaved, removed when there is not.
    void update(const MapDocument &map, bool isModified);
    /// The clean end of the work on this project: the copy is removed.
    void end();

    /// Where copies lie.
    static QString folder(const tarnwick::PathRoots &roots);

private:
    /// A place for a copy, held by its lock.
    struct Slot
    {
        QString path;
        std::unique_ptr<QLockFile> lock;
        ~Slot();
    };
    struct Kept;
    bool readKept(const QString &path, int tubeCount, Kept &kept) const;
    bool offerOne(std::unique_ptr<Slot> &slot, MapDocument &map);
    void write(const MapDocument &map, const QByteArray &content);

    tarnwick::UserPrompts &m_prompts;
    tarnwick::PathRoots m_roots;
    std::unique_ptr<Slot> m_own;
    std::vector<std::unique_ptr<Slot>> m_left;
    QByteArray m_written; ///< the map as the copy holds it
    bool m_failureSaid = false;
};

} // namespace app
