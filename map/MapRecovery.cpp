#include "MapRecovery.h"

#include "MapFiles.h"
#include "Messages.h"

#include <algorithm>
#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <tarnwick/Failures.h>
#include <tarnwick/FileWriter.h>
#include <tarnwick/Leftovers.h>

using namespace Qt::StringLiterals;

namespace map {

namespace {

const QString kIdentifier = u"MapRecovery"_s;
constexpr int kFileVersion = 3;
constexpr int kFirstWithStored = 2;
constexpr int kFirstWithWork = 3;
/// Largest number of programs that work on one project at a time.
constexpr int kMostSlots = 64;

QString slotName(const QString &projectFolder, int number)
{
    const QByteArray hash = QCryptographicHash::hash(projectFolder.toUtf8(), QCryptographicHash::Sha1).toHex().left(16);
    return u"%1-%2"_s.arg(QString::fromLatin1(hash)).arg(number);
}

} // namespace

static void serialize(tarnwick::JFile &file, MapDocument::Stored &stored)
{
    stored.site.serialize(file);
    double time = stored.at.isNull() ? 0 : double(stored.at.toMSecsSinceEpoch());
    file.serialize(time);
    constexpr double kLatest = 1e15; // later than any file
    if (file.isReading())
        stored.at = time > 0 && time < kLatest ? QDateTime::fromMSecsSinceEpoch(qint64(time)) : QDateTime();
}

static void serialize(tarnwick::JFile &file, UnsavedWork &work)
{
    file.serialize(work.isModified);
    file.serialize(work.selection);
    bool hasDraft = work.draft.has_value();
    file.serialize(hasDraft);
    if (!hasDraft)
        return;
    if (file.isReading())
        work.draft.emplace();
    work.draft->header.serialize(file);
    file.serialize(work.draft->description);
}

/// Content of a copy.
struct MapRecovery::Kept
{
    QString project;
    QString mapFile;
    MapDocument::Stored stored;
    UnsavedWork work{true, {}, {}};
    MapFile map;

    /// Everything except the map.
    void serializeHead(tarnwick::JFile &file)
    {
        const int version = file.header(kIdentifier, kFileVersion);
        file.serialize(project);
        file.serialize(mapFile);
        if (version >= kFirstWithStored)
            serialize(file, stored);
        if (version >= kFirstWithWork)
            serialize(file, work);
    }
};

MapRecovery::MapRecovery(tarnwick::UserPrompts &prompts)
    : m_prompts(prompts)
{
}

MapRecovery::~MapRecovery() = default;

QString MapRecovery::folder()
{
    // Not in the installation folder: it may be shared or read-only, and unsaved work is private.
    return QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation) + u"/recovery"_s;
}

void MapRecovery::begin(const QString &projectFolder)
{
    end();
    m_project = projectFolder;
    try {
        findSlots();
    } catch (const tarnwick::Error &error) {
        fail(error.text());
    }
}

void MapRecovery::findSlots()
{
    const QDir dir(folder());
    if (!dir.mkpath(u"."_s))
        throw tarnwick::FileError(dir.path(), 0, u"the folder cannot be made."_s);
    QFile::setPermissions(dir.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    tarnwick::removeLeftovers(dir.path());
    for (int number = 0; number < kMostSlots && !m_own; ++number) {
        auto slot = std::make_unique<Slot>();
        slot->path = dir.filePath(slotName(m_project, number) + u".map"_s);
        slot->lock = tarnwick::ProcessLock::tryTake(dir.filePath(slotName(m_project, number) + u".lock"_s));
        if (!slot->lock)
            continue;
        if (QFileInfo::exists(slot->path))
            m_left.push_back(std::move(slot));
        else
            m_own = std::move(slot);
    }
    if (!m_own)
        throw tarnwick::FileError(dir.path(), 0, u"it holds too many copies for this project."_s);
}

void MapRecovery::fail(const QString &reason)
{
    if (m_problem.isEmpty())
        m_prompts.status(messages::kRecoveryFailed, reason);
    m_problem = reason;
}

bool MapRecovery::readKept(const QString &path, int tubeCount, Kept &kept) const
{
    tarnwick::JFile file = tarnwick::JFile::openForReading(path);
    kept.serializeHead(file);
    kept.map.read(file, tubeCount);
    kept.work.selection.removeIf([tubeCount](qint32 tube) { return tube < 0 || tube >= tubeCount; });
    return kept.project == m_project;
}

std::optional<UnsavedWork> MapRecovery::offer(MapDocument &map)
{
    std::sort(m_left.begin(), m_left.end(), [](const auto &a, const auto &b) {
        return QFileInfo(a->path).lastModified() > QFileInfo(b->path).lastModified();
    });
    std::optional<UnsavedWork> restored;
    for (size_t i = 0; i < m_left.size() && !restored; ++i)
        restored = offerOne(m_left[i], map);
    m_left.clear(); // releases the locks: copies that remain are offered at the next start
    return restored;
}

std::optional<UnsavedWork> MapRecovery::offerOne(std::unique_ptr<Slot> &slot, MapDocument &map)
{
    Kept kept;
    try {
        if (!readKept(slot->path, map.component().numTube(), kept))
            return {};
    } catch (const tarnwick::Error &error) {
        tarnwick::showFailure(m_prompts, error, messages::kReadMapFailed);
        QFile::rename(slot->path, slot->path + u".bad"_s);
        return {};
    }
    const auto time = tarnwick::JDateTime::fromSeconds(QFileInfo(slot->path).lastModified().toSecsSinceEpoch());
    const QString name = kept.mapFile.isEmpty() ? u"<New>"_s : kept.mapFile;
    switch (m_prompts.question(tarnwick::Buttons::YesNoCancel, messages::kAskRestoreMap, name, time)) {
    case tarnwick::Answer::Yes:
        reportOtherModel(map, kept.map, m_prompts);
        map.restore(kept.map, kept.mapFile, kept.stored, kept.work.selection);
        // If the map's own file was changed or deleted, only the copy holds this content.
        kept.work.isModified = kept.work.isModified || map.isFileChanged() || map.isFileGone();
        if (kept.work.isModified)
            map.setNeverSaved();
        m_own = std::move(slot); // the copy remains until the map is saved or the program ends regularly
        m_prompts.status(messages::kRestoredMap, name);
        return kept.work;
    case tarnwick::Answer::No:
        QFile::remove(slot->path);
        return {};
    default:
        return {};
    }
}

void MapRecovery::update(const MapDocument &map, const UnsavedWork &work)
{
    if (!m_own)
        return;
    if (work.isEmpty()) {
        if (QFileInfo::exists(m_own->path))
            QFile::remove(m_own->path);
        m_written.clear();
        return;
    }
    tarnwick::JFile file = tarnwick::JFile::forWriting(m_own->path);
    Kept{m_project, map.file(), map.stored(), work, {}}.serializeHead(file);
    map.content().write(file);
    if (file.bytes() != m_written)
        write(file.bytes());
}

void MapRecovery::write(const QByteArray &content)
{
    try {
        tarnwick::writeFileAtomically(m_own->path, content);
        m_written = content;
        m_problem.clear();
    } catch (const tarnwick::Error &error) {
        fail(error.text());
    }
}

void MapRecovery::end()
{
    if (m_own)
        QFile::remove(m_own->path);
    m_own.reset();
    m_left.clear();
    m_written.clear();
    m_problem.clear();
}

} // namespace map
