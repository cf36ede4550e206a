#include "UnfinishedFile.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <dao/values/Errors.h>
#include <fcntl.h>
#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <unistd.h>

namespace db {

using namespace Qt::StringLiterals;

namespace {

const QString kSource = u"DAO.Workspace"_s;
// Short, and not made from the wanted name: that may be as long as a name can be. The process, and which of its files.
const QString kName = u"arvo-%1-%2.new"_s;

const QString kJournal = u"-journal"_s;

void removeWithJournal(const QString &path)
{
    QFile::remove(path);
    QFile::remove(path + kJournal);
}

bool isAlive(qint64 process)
{
    return ::kill(pid_t(process), 0) == 0 || errno != ESRCH;
}

/// A program that was killed cannot remove its file. One that is at work writes to its file all the time, wherever it
/// runs. Whatever else has a name of that kind is the user's.
void removeAbandoned(const QDir &folder)
{
    constexpr qint64 kDay = 24 * 60 * 60;
    static const QRegularExpression ours(u"^arvo-([1-9][0-9]{0,8})-[1-9][0-9]{0,8}\\.new$"_s);
    for (const QFileInfo &file : folder.entryInfoList({kName.arg(u"*"_s, u"*"_s)}, QDir::Files)) {
        const QRegularExpressionMatch name = ours.match(file.fileName());
        if (name.hasMatch() && !isAlive(name.captured(1).toLongLong()) &&
            file.lastModified().secsTo(QDateTime::currentDateTime()) > kDay)
            removeWithJournal(file.filePath());
    }
}

[[noreturn]] void fail(const QString &wanted, const QString &reason)
{
    throw dao::DaoException(dao::error::CannotOpenFile, kSource,
                            u"The file '%1' cannot be written: %2"_s.arg(QDir::toNativeSeparators(wanted), reason));
}

[[noreturn]] void fail(const QString &wanted, int cause)
{
    fail(wanted, qt_error_string(cause));
}

bool flushed(const QString &path, int flags)
{
    const int descriptor = ::open(QFile::encodeName(path).constData(), flags | O_CLOEXEC);
    if (descriptor < 0)
        return false;
    const bool done = ::fsync(descriptor) == 0;
    const int cause = errno;
    ::close(descriptor);
    errno = cause;
    return done;
}

/// So that a new name is on the disk before anything is built on it. Not every file system knows of such a step.
void flushFolder(const QString &path)
{
    flushed(QFileInfo(path).absolutePath(), O_RDONLY | O_DIRECTORY);
}

} // namespace

bool hasRoomForJournal(const QString &path)
{
    const QFileInfo file(path);
    const long longest = ::pathconf(QFile::encodeName(file.absolutePath()).constData(), _PC_NAME_MAX);
    return longest < 0 || QFile::encodeName(file.fileName() + kJournal).size() <= longest;
}

UnfinishedFile::UnfinishedFile(const QString &wanted)
    : m_wanted(wanted)
{
    if (!hasRoomForJournal(wanted))
        fail(wanted, u"its name is too long"_s);
    static int made = 0;
    const QDir folder = QFileInfo(wanted).absoluteDir();
    removeAbandoned(folder);
    do
        m_path = folder.filePath(kName.arg(QCoreApplication::applicationPid()).arg(++made));
    while (QFile::exists(m_path));
}

UnfinishedFile::~UnfinishedFile()
{
    removeWithJournal(m_path);
}

void UnfinishedFile::flush() const
{
    if (!flushed(m_path, O_RDONLY))
        fail(m_wanted, errno);
}

void UnfinishedFile::finish()
{
    flush();
    // Unlike renaming, making a link never takes the place of a file. Not every file system has links.
    if (::link(QFile::encodeName(m_path).constData(), QFile::encodeName(m_wanted).constData()) == 0)
        return flushFolder(m_wanted);
    if (errno == EEXIST || QFile::exists(m_wanted))
        throw dao::DaoException(dao::error::DatabaseExists, kSource,
                                u"Database already exists: '%1'."_s.arg(QDir::toNativeSeparators(m_wanted)));
    replace();
}

void UnfinishedFile::replace()
{
    // Whoever could read and write the file before still can. Without the right to say so it is as new files are.
    if (QFile::exists(m_wanted))
        QFile::setPermissions(m_path, QFile::permissions(m_wanted));
    flush();
    if (std::rename(QFile::encodeName(m_path).constData(), QFile::encodeName(m_wanted).constData()) != 0)
        fail(m_wanted, errno);
    flushFolder(m_wanted);
}

dao::DaoException UnfinishedFile::named(const dao::DaoException &exception) const
{
    dao::DaoException named(exception.number(), exception.source(),
                            QString(exception.description()).replace(m_path, m_wanted));
    return exception.hint().isEmpty() ? named : named.withHint(exception.hint());
}

} // namespace db
