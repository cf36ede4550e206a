#include "FileReading.h"

#include "ErrorTranslation.h"

#include <memory>
#include <QElapsedTimer>
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

using Take = std::function<void(QByteArrayView)>;

void giveBytes(sqlite3 *db, const QString &path, const Take &take, CancelCheck &check)
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
        if (result == SQLITE_OK)
            take(QByteArrayView(buffer).first(length));
    }
    if (result != SQLITE_OK)
        failReading(path, result);
}

/// File and log as one. Only other programs ask for a log, so the memory that this takes is seldom needed.
void giveContent(sqlite3 *db, const QString &path, const Take &take, CancelCheck &check)
{
    using Content = std::unique_ptr<unsigned char, decltype(&sqlite3_free)>;
    sqlite3_int64 size = 0;
    const Content content(sqlite3_serialize(db, "main", &size, 0), &sqlite3_free);
    if (!content)
        failReading(path, SQLITE_NOMEM);
    const QByteArrayView bytes(content.get(), qsizetype(size));
    for (qsizetype offset = 0; offset < bytes.size(); offset += bytesAtOnce) {
        check();
        take(bytes.sliced(offset, std::min<qsizetype>(bytesAtOnce, bytes.size() - offset)));
    }
}

} // namespace

void readFile(const QString &path, const Take &take, Progress *progress)
{
    CancelCheck check(progress);
    const Handle db = openForReading(path);
    beginReading(db.get(), path);
    if (hasLog(db.get()))
        giveContent(db.get(), path, take, check);
    else
        giveBytes(db.get(), path, take, check);
}

} // namespace dao::store
