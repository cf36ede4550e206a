#pragma once
#include <functional>
#include <QByteArrayView>
#include <QFile>
#include <QString>

namespace db {

/// Passes the whole content of a file to take, piece by piece. May be called more than once. Throws dao::DaoException
/// and whatever take throws.
using FileContent = std::function<void(const std::function<void(QByteArrayView)> &take)>;

/// Content of a file that no database connection of this program has open: closing the file would release the
/// connection's locks (POSIX).
FileContent contentOf(const QString &path);

/// Passes the rest of an open file to take.
void readRest(QFile &file, const std::function<void(QByteArrayView)> &take);

/// Writes content to a file, with the permissions of the file rightsOf, so that nobody can read the copy who cannot
/// read the original. An existing file is replaced in one step. Throws dao::DaoException (3026 disk full, 3051).
void writeContent(const QString &path, const FileContent &content, const QString &rightsOf);

/// Returns true if the file has exactly this content.
bool hasContent(const QString &path, const FileContent &content);

/// Location of the backup made before a conversion.
struct BackupPlace
{
    /// "project._db" beside "project.mdb"; an older backup is replaced. A backup of a Jet file is the only original, so
    /// it is never replaced: then the name is "project-2._db" or the next free one.
    static BackupPlace of(const QString &databasePath, const FileContent &content);

    QString path;
    QString kept;        ///< backup of a Jet file that occupies the first name; empty if none
    bool isDone = false; ///< the file is a backup of a Jet file and already has the same content
};

/// Makes the backup, then reads it back and compares it byte by byte. Throws dao::DaoException.
void backUp(const BackupPlace &place, const FileContent &content, const QString &databasePath);

} // namespace db
