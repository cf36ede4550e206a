#pragma once
#include <functional>
#include <QByteArrayView>
#include <QFile>
#include <QString>

namespace db {

/// What a file holds, from its beginning to its end, piece by piece. It is asked more than once. Throws
/// dao::DaoException, and what take throws.
using FileContent = std::function<void(const std::function<void(QByteArrayView)> &take)>;

/// Of a file that no database connection of this program has open: closing it would drop that connection's locks.
FileContent contentOf(const QString &path);

/// Gives what is left of an open file.
void readRest(QFile &file, const std::function<void(QByteArrayView)> &take);

/// Writes content to a file, with the permissions of the file rightsOf: who may not read the one may not read the
/// other. A file that is there is replaced in one step. Throws dao::DaoException (3026 disk full, 3051).
void writeContent(const QString &path, const FileContent &content, const QString &rightsOf);

/// Whether the file has exactly that content.
bool hasContent(const QString &path, const FileContent &content);

/// Where a database is backed up before it is converted.
struct BackupPlace
{
    /// "project._db" beside "project.mdb", which replaces an older one. The backup of a Jet file is the only original
    /// that there is, so none is ever replaced: then it is "project-2._db" or the next name that is free.
    static BackupPlace of(const QString &databasePath, const FileContent &content);

    QString path;
    QString kept;        ///< the backup of a Jet file for whose sake the first name was not taken; empty without one
    bool isDone = false; ///< what stands there is the backup of a Jet file, and has the same content already
};

/// Makes the backup and reads it again: it has the same content, byte for byte. Throws dao::DaoException.
void backUp(const BackupPlace &place, const FileContent &content, const QString &databasePath);

} // namespace db
