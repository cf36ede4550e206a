#include "FileBackup.h"

#include "ErrorTranslation.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <QElapsedTimer>
#include <QFile>
#include <QSaveFile>
#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace dao::store {

namespace {

constexpr int busyMilliseconds = 1000;
constexpr int bytesAtOnce = 1 << 20;
const QString sourceName = u"DAO.Database"_s;

struct CloseDatabase
{
    void operator()(sqlite3 *db) const { sqlite3_close_v2(db); }
};
using Handle = std::unique_ptr<sqlite3, CloseDatabase>;

[[noreturn]] void failReading(const QString &path, int result)
{
    EngineFailure failure;
    failure.extendedCode = result;
    failure.path = path;
    failure.source = sourceName;
    raise(failure);
}

/// systemError: what the system said; a file that could be written in part does not remember it.
[[noreturn]] void failWriting(const QFileDevice &target, int systemError)
{
    const QString reason = systemError == 0 ? target.errorString() : QString::fromLocal8Bit(std::strerror(systemError));
    if (systemError == ENOSPC || systemError == EDQUOT || target.error() == QFileDevice::ResourceError)
        throw engineError(error::DiskFull, sourceName).withHint(reason);
    throw engineError(error::CannotOpenFile, sourceName, {target.fileName()}).withHint(reason);
}

Handle openForReading(const QString &path)
{
    sqlite3 *db = nullptr;
    const int result =
        sqlite3_open_v2(path.toUtf8().constData(), &db, SQLITE_OPEN_READONLY | SQLITE_OPEN_EXRESCODE, nullptr);
    Handle handle(db);
    if (result != SQLITE_OK)
        failReading(path, result);
    sqlite3_busy_timeout(db, busyMilliseconds);
    return handle;
}

/// Nobody commits to the file while the transaction lives.
void beginReading(sqlite3 *db, const QString &path)
{
    int result = sqlite3_exec(db, "BEGIN", nullptr, nullptr, nullptr);
    if (result == SQLITE_OK)
        result = sqlite3_exec(db, "SELECT count(*) FROM sqlite_schema", nullptr, nullptr, nullptr);
    if (result != SQLITE_OK)
        failReading(path, result);
}

/// What is committed may stand beside the file, in a log that other programs may have asked for.
bool hasLog(sqlite3 *db)
{
    const auto take = [](void *out, int, char **values, char **) {
        *static_cast<bool *>(out) = values[0] && sqlite3_stricmp(values[0], "wal") == 0;
        return 0;
    };
    bool log = false;
    sqlite3_exec(db, "PRAGMA journal_mode", take, &log, nullptr);
    return log;
}

/// Asks about ten times a second whether to go on.
class CancelCheck
{
public:
    explicit CancelCheck(Progress *progress)
        : m_progress(progress)
    {
        m_sinceAsked.start();
    }
    void operator()()
    {
        constexpr int askEveryMilliseconds = 100;
        if (!m_progress || !m_sinceAsked.hasExpired(askEveryMilliseconds))
            return;
        if (m_progress->cancelled())
            throw DaoCancelled();
        m_sinceAsked.restart();
    }

private:
    Progress *m_progress;
    QElapsedTimer m_sinceAsked;
};

void copyBytes(sqlite3 *db, const QString &path, QSaveFile &target, CancelCheck &check)
{
    sqlite3_file *file = nullptr;
    int result = sqlite3_file_control(db, "main", SQLITE_FCNTL_FILE_POINTER, &file);
    sqlite3_int64 size = 0;
    if (result == SQLITE_OK)
        result = file->pMethods->xFileSize(file, &size);
    QByteArray buffer(bytesAtOnce, Qt::Uninitialized);
    for (sqlite3_int64 offset = 0; result == SQLITE_OK && offset < size; offset += bytesAtOnce) {
        check();
        const int length = int(std::min<sqlite3_int64>(bytesAtOnce, size - offset));
        result = file->pMethods->xRead(file, buffer.data(), length, offset);
        errno = 0;
        if (result == SQLITE_OK && target.write(buffer.constData(), length) != length)
            failWriting(target, errno);
    }
    if (result != SQLITE_OK)
        failReading(path, result);
}

/// By the inner engine's own means: the content is the same, the bytes need not be.
void copyPages(sqlite3 *db, const QString &path, const QString &target, CancelCheck &check)
{
    constexpr int pagesAtOnce = 1000;
    sqlite3 *copy = nullptr;
    int result = sqlite3_open_v2(target.toUtf8().constData(), &copy,
                                 SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_EXRESCODE, nullptr);
    const Handle handle(copy);
    if (result == SQLITE_OK) {
        using Backup = std::unique_ptr<sqlite3_backup, decltype(&sqlite3_backup_finish)>;
        Backup backup(sqlite3_backup_init(copy, "main", db, "main"), &sqlite3_backup_finish);
        while (backup && sqlite3_backup_step(backup.get(), pagesAtOnce) == SQLITE_OK)
            check();
        result = backup ? sqlite3_backup_finish(backup.release()) : sqlite3_extended_errcode(copy);
    }
    if (result != SQLITE_OK)
        failReading(path, result);
}

/// Who may not read the file may not read its backup.
void makeEmpty(const QString &made, const QString &path)
{
    QFile file(made);
    errno = 0;
    if (!file.open(QIODevice::WriteOnly))
        failWriting(file, errno);
    file.setPermissions(QFile::permissions(path));
}

void replace(const QString &made, const QString &target)
{
    if (std::rename(QFile::encodeName(made).constData(), QFile::encodeName(target).constData()) != 0)
        throw engineError(error::CannotOpenFile, sourceName, {target});
}

} // namespace

void backUpFile(const QString &path, const QString &target, Progress *progress)
{
    CancelCheck check(progress);
    const Handle db = openForReading(path);
    beginReading(db.get(), path);
    if (hasLog(db.get())) {
        const QString made = target + u".new"_s;
        QFile::remove(made);
        try {
            makeEmpty(made, path);
            copyPages(db.get(), path, made, check);
            replace(made, target);
        } catch (...) {
            QFile::remove(made);
            throw;
        }
        return;
    }
    QSaveFile file(target);
    errno = 0;
    if (!file.open(QIODevice::WriteOnly))
        failWriting(file, errno);
    file.setPermissions(QFile::permissions(path));
    copyBytes(db.get(), path, file, check);
    errno = 0;
    if (!file.commit())
        failWriting(file, errno);
}

} // namespace dao::store
