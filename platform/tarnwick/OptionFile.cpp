#include "OptionFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <sys/stat.h>

namespace tarnwick {

using namespace Qt::StringLiterals;

static const QString kIdentifier = u"OptionFile"_s;
static constexpr int kHeaderVersion = 1;

// Reads the header: everything before the body.
static int readLead(JFile &file, const QString &title)
{
    file.header(kIdentifier, kHeaderVersion);
    const qint64 titlePlace = file.offset();
    QString found;
    file.serialize(found);
    if (found != title)
        throw JFileError(file.fileName(), titlePlace, u"this is a file of '%1', not of '%2'"_s.arg(found, title));
    const qint64 versionPlace = file.offset();
    qint32 version = 0;
    file.serialize(version);
    if (version < 1)
        throw JFileError(file.fileName(), versionPlace, u"%1 is not a file version"_s.arg(version));
    return version;
}

static QString newerText(int found, int known)
{
    return u"the file is of version %1, written by a newer program; this one reads versions up to %2"_s.arg(found).arg(
        known);
}

static void putAside(const QString &path)
{
    const QString aside = path + u".bad"_s;
    QFile::remove(aside);
    if (!QFile::rename(path, aside))
        throw FileError(path, 0, u"is damaged, and cannot be renamed to %1"_s.arg(aside));
}

// Identity, size and time of a file; empty if there is none. Every writer replaces the file, so its identity changes.
static QByteArray stampOf(const QString &path)
{
    struct stat file = {};
    if (::stat(QFile::encodeName(path).constData(), &file) != 0)
        return {};
    QByteArray stamp;
    for (const qint64 part :
         {qint64(file.st_ino), qint64(file.st_size), qint64(file.st_mtim.tv_sec), qint64(file.st_mtim.tv_nsec)})
        stamp += QByteArray::number(part) + ' ';
    return stamp;
}

OptionFile::OptionFile(const QString &path, const QString &title, int version)
    : m_path(path)
    , m_title(title)
    , m_version(version)
{
}

bool OptionFile::load(const PathRoots &roots)
{
    const QString path = m_path.installationPath(roots);
    if (!QFileInfo::exists(path))
        return false;
    noteStamp(path);
    loadFrom(path);
    return true;
}

bool OptionFile::loadIfChanged(const PathRoots &roots)
{
    return stampOf(m_path.installationPath(roots)) != m_stamp && load(roots);
}

void OptionFile::noteStamp(const QString &machinePath)
{
    m_stamp = stampOf(machinePath);
}

void OptionFile::store(const PathRoots &roots)
{
    const QString path = m_path.installationPath(roots);
    // The installation folder is created when the first options are stored in it.
    QDir().mkpath(QFileInfo(path).absolutePath());
    storeTo(path);
    noteStamp(path);
}

void OptionFile::loadFrom(const QString &machinePath)
{
    JFile file = JFile::openForReading(machinePath);
    const int version = readLead(file, m_title);
    if (version > m_version)
        throw JFileError(machinePath, file.offset() - qint64(sizeof(qint32)), newerText(version, m_version));

    JFile before = JFile::forWriting(machinePath);
    serializeBody(before, m_version);
    try {
        resetToDefaults();
        serializeBody(file, version);
        if (file.bytesLeft() > 0)
            file.fail(u"%1 bytes follow the end of the record"_s.arg(file.bytesLeft()));
    } catch (...) {
        JFile saved = JFile::fromBytes(before.bytes(), machinePath);
        serializeBody(saved, m_version);
        throw;
    }
}

void OptionFile::storeTo(const QString &machinePath)
{
    if (QFileInfo::exists(machinePath)) {
        int found = 0;
        try {
            JFile there = JFile::openForReading(machinePath);
            found = readLead(there, m_title);
        } catch (const FileError &) {
            // A file that cannot be read may still be useful: it is renamed instead of overwritten.
            putAside(machinePath);
        }
        if (found > m_version)
            throw FileError(machinePath, 0, newerText(found, m_version) + u", and does not overwrite it"_s);
    }
    JFile file = JFile::forWriting(machinePath);
    QString title = m_title;
    qint32 version = m_version;
    file.header(kIdentifier, kHeaderVersion);
    file.serialize(title);
    file.serialize(version);
    serializeBody(file, m_version);
    file.commit();
}

} // namespace tarnwick
