#pragma once
#include "ProcessLock.h"
#include "Prompts.h"

#include <functional>
#include <optional>
#include <QByteArray>
#include <QDateTime>
#include <vector>

namespace tarnwick {

/// Keeps a copy of unsaved work in the user's own data folder, in case the program ends without storing it. The user's
/// files are never changed. Programs that run side by side have separate copies; each holds a lock on its copy, which
/// the system releases when the program dies.
class RecoveryCopies
{
public:
    /// owner: what the work belongs to, such as a project folder; copies of other owners are not seen. kind:
    /// distinguishes kinds of work and is the extension of the files ("map").
    RecoveryCopies(const QString &owner, const QString &kind);
    ~RecoveryCopies();
    RecoveryCopies(const RecoveryCopies &) = delete;
    RecoveryCopies &operator=(const RecoveryCopies &) = delete;

    /// Reserves a place for the own copy and finds those that dead programs left. Throws FileError.
    void begin();
    bool isOn() const { return m_own != nullptr; }

    /// A copy left by a dead program.
    struct Left
    {
        QString path;
        QDateTime time; ///< when it was written
        /// Throws FileError.
        QByteArray content() const;
    };
    enum class Decision {
        Keep,    ///< offered again at the next start
        Restore, ///< becomes the own copy: it stays until the work is stored or discarded
        Discard, ///< deleted
        Damaged  ///< renamed, so that it is not offered again and can be examined
    };
    /// Calls decide for each copy, the newest first, until one is restored.
    void offer(const std::function<Decision(const Left &)> &decide);

    /// Writes the own copy if the content differs from the last; an empty content removes it. Throws FileError.
    void update(const QByteArray &content);
    /// The work has ended properly: removes the own copy and releases its place.
    void end();

    /// The folder of all copies.
    static QString folder();

private:
    /// The file of one copy, held by its lock.
    struct Slot
    {
        QString path;
        std::unique_ptr<ProcessLock> lock;
    };

    QString m_owner;
    QString m_kind;
    std::unique_ptr<Slot> m_own;
    std::vector<std::unique_ptr<Slot>> m_left;
    QByteArray m_written; ///< content that was written last
};

} // namespace tarnwick
