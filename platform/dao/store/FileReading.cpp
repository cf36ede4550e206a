#include "FileReading.h"

#include "ErrorTranslation.h"

#include <memory>
#include <QElapsedTimer>
#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace dao::store {

namespace {

constexpr int kBusyMilliseconds = 1000;
constexpr int kBytesPerRead = 1 << 20;
const QString kSource = u"DAO.Database"_s;

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
    failure.source = kSource;
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
    sqlite3_busy_timeout(db, kBusyMilliseconds);
    return handle;
}

/// Begins a read transaction: other programs cannot commit until it ends.
void beginReading(sqlite3 *db, const QString &path)
{
    int result = sqlite3_exec(db, "BEGIN", nullptr, nullptr, nullptr);
    if (result == SQLITE_OK)
        result = sqlite3_exec(db, "SELECT count(*) FROM sqlite_schema", nullptr, nullptr, nullptr);
    if (result != SQLITE_OK)
        failReading(path, result);
}

/// True if committed pages may be in a write-ahead log beside the file; another program may have switched to WAL mode.
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

/// Asks the progress object about ten times a second.
class CancelCheck
{
public:
    explicit CancelCheck(tarnwick::Progress *progress)
        : m_progress(progress)
    {
        m_sinceAsked.start();
    }
    void operator()()
    {
        constexpr int kAskEveryMilliseconds = 100;
        if (!m_progress || !m_sinceAsked.hasExpired(kAskEveryMilliseconds))
            return;
        if (m_progress->cancelled())
            throw tarnwick::Cancelled();
        m_sinceAsked.restart();
    }

private:
    tarnwick::Progress *m_progress;
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
    QByteArray buffer(kBytesPerRead, Qt::Uninitialized);
    for (sqlite3_int64 offset = 0; result == SQLITE_OK && offset < size; offset += kBytesPerRead) {
        check();
        const int length = int(std::min<sqlite3_int64>(kBytesPerRead, size - offset));
        result = file->pMethods->xRead(file, buffer.data(), length, offset);
        if (result == SQLITE_OK)
            take(QByteArrayView(buffer).first(length));
    }
    if (result != SQLITE_OK)
        failReading(path, result);
}

/// Combines file and log with sqlite3_serialize(), which needs memory for the whole file. Rarely used: only other
/// programs switch to WAL mode.
void giveContent(sqlite3 *db, const QString &path, const Take &take, CancelCheck &check)
{
    using Content = std::unique_ptr<unsigned char, decltype(&sqlite3_free)>;
    sqlite3_int64 size = 0;
    const Content content(sqlite3_serialize(db, "main", &size, 0), &sqlite3_free);
    if (!content)
        failReading(path, SQLITE_NOMEM);
    const QByteArrayView bytes(content.get(), qsizetype(size));
    for (qsizetype offset = 0; offset < bytes.size(); offset += kBytesPerRead) {
        check();
        take(bytes.sliced(offset, std::min<qsizetype>(kBytesPerRead, bytes.size() - offset)));
    }
}

} // namespace

void readFile(const QString &path, const Take &take, tarnwick::Progress *progress)
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
