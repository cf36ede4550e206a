#include "Backup.h"

#include <dao/values/DaoException.h>
#include <dao/values/Errors.h>
#include <jet/JetReader.h>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <tarnwick/FileWriter.h>

namespace db {

using namespace Qt::StringLiterals;

namespace {

const QString kSource = u"DAO.Workspace"_s;

/// Thrown by a comparison to stop reading at the first difference.
struct Different
{
};

QString nameOf(const QFileInfo &database, int number)
{
    // If a backup itself was opened as the database, its backup must have another name.
    const bool isBackup = database.suffix().compare(u"_db", Qt::CaseInsensitive) == 0;
    const QString base = isBackup ? database.fileName() : database.completeBaseName();
    return number == 1 ? base + u"._db"_s : u"%1-%2._db"_s.arg(base).arg(number);
}

[[noreturn]] void failReading(const QFile &file)
{
    throw dao::DaoException(
        dao::error::DiskError, kSource,
        u"The file '%1' cannot be read: %2"_s.arg(QDir::toNativeSeparators(file.fileName()), file.errorString()));
}

} // namespace

void readRest(QFile &file, const std::function<void(QByteArrayView)> &take)
{
    constexpr qint64 kPiece = qint64(1) << 20;
    for (;;) {
        const QByteArray piece = file.read(kPiece);
        if (file.error() != QFileDevice::NoError)
            failReading(file);
        if (piece.isEmpty())
            return;
        take(piece);
    }
}

FileContent contentOf(const QString &path)
{
    return [path](const std::function<void(QByteArrayView)> &take) {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
            failReading(file);
        readRest(file, take);
    };
}

void writeContent(const QString &path, const FileContent &content, const QString &rightsOf)
{
    try {
        tarnwick::AtomicFile file(path, rightsOf);
        content([&](QByteArrayView piece) { file.write(piece); });
        file.commit();
    } catch (const tarnwick::WriteError &error) {
        throw dao::DaoException(error.isDiskFull() ? dao::error::DiskFull : dao::error::CannotOpenFile, kSource,
                                error.text());
    } catch (const tarnwick::FileError &error) {
        throw dao::DaoException(dao::error::CannotOpenFile, kSource, error.text());
    }
}

bool hasContent(const QString &path, const FileContent &content)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return false;
    try {
        content([&](QByteArrayView piece) {
            if (file.read(piece.size()) != piece)
                throw Different();
        });
    } catch (const Different &) {
        return false;
    }
    return file.read(1).isEmpty() && file.error() == QFileDevice::NoError;
}

BackupPlace BackupPlace::of(const QString &databasePath, const FileContent &content)
{
    const QFileInfo database(databasePath);
    const QDir folder(database.absolutePath());
    BackupPlace place;
    for (int number = 1;; ++number) {
        place.path = folder.filePath(nameOf(database, number));
        const QFileInfo found(place.path);
        if (!found.exists() && !found.isSymLink())
            return place;
        const bool isJet = jet::isJetFile(place.path);
        // If the file cannot be read, it may still be the only original: keep it.
        if (number == 1 && !isJet && (found.isReadable() || found.isSymLink()))
            return place;
        place.isDone = isJet && !found.isSymLink() && hasContent(place.path, content);
        if (place.isDone)
            return place;
        if (place.kept.isEmpty())
            place.kept = place.path;
    }
}

void backUp(const BackupPlace &place, const FileContent &content, const QString &databasePath)
{
    if (!place.isDone)
        writeContent(place.path, content, databasePath);
    if (!hasContent(place.path, content))
        throw dao::DaoException(
            dao::error::DiskError, kSource,
            u"The backup '%1', read again, is not what was written to it."_s.arg(QDir::toNativeSeparators(place.path)));
}

} // namespace db
