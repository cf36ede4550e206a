#include "RecoveryCopies.h"

#include "FileWriter.h"
#include "Leftovers.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tarnwick {

/// Upper bound of the programs that work on one project at the same time.
static constexpr int kMostSlots = 64;

/// Renames a damaged copy; those that were set aside before stay.
static void setAside(const QString &path)
{
    QString name = path + u".bad"_s;
    for (int number = 2; QFileInfo::exists(name); ++number)
        name = path + u".bad%1"_s.arg(number);
    QFile::rename(path, name);
}

RecoveryCopies::RecoveryCopies(const QString &owner, const QString &kind)
    : m_owner(owner)
    , m_kind(kind)
{
}

RecoveryCopies::~RecoveryCopies() = default;

QString RecoveryCopies::folder()
{
    // Not in the installation: it may be shared or read only, and unsaved work is private.
    return QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation) + u"/recovery"_s;
}

void RecoveryCopies::begin()
{
    end();
    const QDir dir(folder());
    if (!dir.mkpath(u"."_s))
        throw FileError(dir.path(), 0, u"the folder cannot be made."_s);
    QFile::setPermissions(dir.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    removeLeftovers(dir.path());
    const QByteArray hash = QCryptographicHash::hash(m_owner.toUtf8(), QCryptographicHash::Sha1).toHex().left(16);
    for (int number = 0; number < kMostSlots && !m_own; ++number) {
        const QString name = u"%1-%2."_s.arg(QString::fromLatin1(hash)).arg(number);
        auto slot = std::make_unique<Slot>();
        slot->path = dir.filePath(name + m_kind);
        slot->lock = ProcessLock::tryTake(dir.filePath(name + m_kind + u".lock"_s));
        if (!slot->lock)
            continue;
        if (QFileInfo::exists(slot->path))
            m_left.push_back(std::move(slot));
        else
            m_own = std::move(slot);
    }
    if (!m_own)
        throw FileError(dir.path(), 0, u"it holds too many copies for this project."_s);
}

void RecoveryCopies::offer(const std::function<Decision(const Left &)> &decide)
{
    const auto time = [](const std::unique_ptr<Slot> &slot) { return QFileInfo(slot->path).lastModified(); };
    std::sort(m_left.begin(), m_left.end(), [&](const auto &a, const auto &b) { return time(a) > time(b); });
    for (std::unique_ptr<Slot> &slot : m_left) {
        const Decision decision = decide({slot->path, time(slot)});
        if (decision == Decision::Restore) {
            m_own = std::move(slot);
            break;
        }
        if (decision == Decision::Discard)
            QFile::remove(slot->path);
        else if (decision == Decision::Damaged)
            setAside(slot->path);
    }
    m_left.clear(); // copies that are kept are free for the next start
}

QByteArray RecoveryCopies::Left::content() const
{
    return readFile(path);
}

void RecoveryCopies::update(const QByteArray &content)
{
    if (!m_own || (!content.isEmpty() && content == m_written))
        return;
    if (content.isEmpty())
        QFile::remove(m_own->path);
    else
        writeFileAtomically(m_own->path, content);
    m_written = content;
}

void RecoveryCopies::end()
{
    if (m_own)
        QFile::remove(m_own->path);
    m_own.reset();
    m_left.clear();
    m_written.clear();
}

} // namespace tarnwick
