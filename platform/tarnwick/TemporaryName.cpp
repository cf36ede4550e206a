#include "TemporaryName.h"

#include "Leftovers.h"

#include <cerrno>
#include <fcntl.h>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>
#include <sys/stat.h>
#include <unistd.h>

namespace tarnwick {

using namespace Qt::StringLiterals;

static const QString kName = u"arvo-%1-%2.new"_s;
static bool syncsFail = false;

void failSyncs(bool fail)
{
    syncsFail = fail;
}

void removeUnfinished(const QString &path)
{
    QFile::remove(path);
    QFile::remove(path + u"-journal"_s);
}

static bool isFree(const QString &path)
{
    struct stat found = {};
    return ::lstat(QFile::encodeName(path).constData(), &found) != 0 && errno == ENOENT;
}

QString temporaryNameFor(const QString &wanted)
{
    static int made = 0;
    // Once per folder, since thousands of files may be written to one folder.
    static QSet<QString> cleared;
    const QDir folder = QFileInfo(wanted).absoluteDir();
    if (!cleared.contains(folder.path())) {
        cleared.insert(folder.path());
        removeLeftovers(folder.path());
    }
    constexpr int kMostTries = 10'000; // in a folder that cannot be read, every name looks used
    QString path;
    for (int tries = 0; tries < kMostTries; ++tries) {
        path = folder.filePath(kName.arg(QCoreApplication::applicationPid()).arg(++made));
        if (isFree(path))
            break;
    }
    return path;
}

bool syncFile(int descriptor)
{
    if (syncsFail) {
        errno = EIO;
        return false;
    }
    int result = 0;
    do
        result = ::fsync(descriptor);
    while (result != 0 && errno == EINTR);
    // Some file systems do not support syncing a folder; that is not an error.
    return result == 0 || errno == EINVAL || errno == ENOSYS || errno == ENOTSUP;
}

void syncFolderOf(const QString &path)
{
    const QByteArray folder = QFile::encodeName(QFileInfo(path).absolutePath());
    const int descriptor = ::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0)
        return;
    syncFile(descriptor);
    ::close(descriptor);
}

} // namespace tarnwick
