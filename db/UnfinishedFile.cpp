#include "UnfinishedFile.h"

#include <cerrno>
#include <cstdio>
#include <dao/values/Errors.h>
#include <fcntl.h>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <tarnwick/TemporaryName.h>
#include <unistd.h>

namespace db {

using namespace Qt::StringLiterals;

namespace {

const QString kSource = u"DAO.Workspace"_s;
const QString kJournal = u"-journal"_s;

[[noreturn]] void fail(const QString &wanted, const QString &reason)
{
    throw dao::DaoException(dao::error::CannotOpenFile, kSource,
                            u"The file '%1' cannot be written: %2"_s.arg(QDir::toNativeSeparators(wanted), reason));
}

[[noreturn]] void fail(const QString &wanted, int cause)
{
    fail(wanted, qt_error_string(cause));
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
    m_path = tarnwick::temporaryNameFor(wanted);
}

UnfinishedFile::~UnfinishedFile()
{
    tarnwick::removeUnfinished(m_path);
}

void UnfinishedFile::flush() const
{
    const int descriptor = ::open(QFile::encodeName(m_path).constData(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0)
        fail(m_wanted, errno);
    const int cause = tarnwick::syncFile(descriptor) ? 0 : errno;
    ::close(descriptor);
    if (cause != 0)
        fail(m_wanted, cause);
}

void UnfinishedFile::finish()
{
    flush();
    // Unlike rename(), link() never replaces an existing file. Not every file system has links.
    if (::link(QFile::encodeName(m_path).constData(), QFile::encodeName(m_wanted).constData()) == 0)
        return tarnwick::syncFolderOf(m_wanted);
    if (errno == EEXIST || QFile::exists(m_wanted))
        throw dao::DaoException(dao::error::DatabaseExists, kSource,
                                u"Database already exists: '%1'."_s.arg(QDir::toNativeSeparators(m_wanted)));
    replace();
}

void UnfinishedFile::replace()
{
    // The new file gets the permissions of the old one. If they cannot be set, it keeps the default permissions.
    if (QFile::exists(m_wanted))
        QFile::setPermissions(m_path, QFile::permissions(m_wanted));
    flush();
    if (std::rename(QFile::encodeName(m_path).constData(), QFile::encodeName(m_wanted).constData()) != 0)
        fail(m_wanted, errno);
    tarnwick::syncFolderOf(m_wanted);
}

dao::DaoException UnfinishedFile::named(const dao::DaoException &exception) const
{
    dao::DaoException named(exception.number(), exception.source(),
                            QString(exception.description()).replace(m_path, m_wanted));
    return exception.hint().isEmpty() ? named : named.withHint(exception.hint());
}

} // namespace db
