#include "Leftovers.h"

#include <cerrno>
#include <csignal>
#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSet>
#include <sys/vfs.h>
#include <unistd.h>

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

const QString kWorkFolder = u"arvo-work-%1-XXXXXX"_s;
constexpr int kProjectDepth = 2; ///< deep enough for history/palomine

/// Start time of the process in seconds since 1970; 0 if the system does not provide it.
qint64 processStartTime(qint64 process)
{
    const auto content = [](const QString &path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    };
    const QByteArray boot = content(u"/proc/stat"_s);
    const qsizetype at = boot.indexOf("\nbtime ");
    // The second field is the program's name in brackets, which may itself contain blanks and brackets.
    const QByteArray status = content(u"/proc/%1/stat"_s.arg(process));
    const QByteArrayList fields = status.mid(status.lastIndexOf(')') + 2).split(' ');
    constexpr int kStart = 19; // index among the fields after the name; in clock ticks since boot
    if (at < 0 || fields.size() <= kStart)
        return 0;
    const QByteArray seconds = boot.mid(at + 7, boot.indexOf('\n', at + 1) - at - 7);
    return seconds.toLongLong() + fields[kStart].toLongLong() / ::sysconf(_SC_CLK_TCK);
}

/// Returns true if the process that wrote the file last may still be running. Process numbers are reused: a process
/// that started after the last write is a different one.
bool mayStillRun(qint64 process, const QFileInfo &file)
{
    constexpr qint64 kClockError = 2; // seconds
    const bool exists = ::kill(pid_t(process), 0) == 0 || errno != ESRCH;
    return exists && processStartTime(process) <= file.lastModified().toSecsSinceEpoch() + kClockError;
}

bool isShared(const QString &folder)
{
    // Magic numbers of network file systems, as defined by the kernel.
    static const QSet<quint32> shared{0x6969,     0x517B,     0xFF534D42, 0xFE534D42, 0x65735546,
                                      0x01021997, 0x00C36400, 0x5346414F, 0x7461636F, 0x47504653};
    struct statfs facts
    {
    };
    return ::statfs(QFile::encodeName(folder).constData(), &facts) != 0 || shared.contains(quint32(facts.f_type));
}

bool isAbandoned(const QFileInfo &file, qint64 process)
{
    constexpr qint64 kDay = 24 * 60 * 60;
    if (mayStillRun(process, file))
        return false;
    return !isShared(file.absolutePath()) || file.lastModified().secsTo(QDateTime::currentDateTime()) > kDay;
}

} // namespace

void removeLeftovers(const QString &folder)
{
    // Any other file with a similar name belongs to the user.
    static const QRegularExpression ours(u"^arvo-([1-9][0-9]{0,8})-[1-9][0-9]{0,8}\\.new(-journal)?$"_s);
    const auto kinds = QDir::Files | QDir::Dirs | QDir::NoSymLinks;
    for (const QFileInfo &file : QDir(folder).entryInfoList({u"arvo-*.new*"_s}, kinds)) {
        const QRegularExpressionMatch name = ours.match(file.fileName());
        if (!name.hasMatch() || !isAbandoned(file, name.captured(1).toLongLong()))
            continue;
        if (file.isDir())
            QDir(file.filePath()).removeRecursively();
        else
            QFile::remove(file.filePath());
    }
}

static void removeBelow(const QString &folder, int depth)
{
    removeLeftovers(folder);
    if (depth == 0)
        return;
    for (const QString &name : QDir(folder).entryList(QDir::Dirs | QDir::NoSymLinks | QDir::NoDotAndDotDot))
        removeBelow(folder + u'/' + name, depth - 1);
}

void removeLeftoversBelow(const QString &folder)
{
    removeBelow(folder, kProjectDepth);
}

QString workFolderPattern()
{
    return QDir::temp().filePath(kWorkFolder.arg(QCoreApplication::applicationPid()));
}

void removeWorkFolders()
{
    static const QRegularExpression ours(u"^arvo-work-([1-9][0-9]{0,8})-[A-Za-z0-9]{6}$"_s);
    for (const QFileInfo &folder : QDir::temp().entryInfoList({u"arvo-work-*"_s}, QDir::Dirs | QDir::NoSymLinks)) {
        const QRegularExpressionMatch name = ours.match(folder.fileName());
        // The folder is shared by all users: only this user's folders are removed.
        if (name.hasMatch() && folder.ownerId() == ::geteuid() && isAbandoned(folder, name.captured(1).toLongLong()))
            QDir(folder.filePath()).removeRecursively();
    }
}

} // namespace tarnwick
