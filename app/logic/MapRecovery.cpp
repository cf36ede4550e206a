#include "MapRecovery.h"

#include "Messages.h"

#include <algorithm>
#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <tarnwick/FileWriter.h>

using namespace Qt::StringLiterals;

namespace app {

namespace {

const QString kIdentifier = u"MapRecovery"_s;
constexpr int kFileVersion = 2;
constexpr int kFirstWithStored = 2;
/// More programs than this do not work on one project from one installation.
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
    constexpr double kLatest = 1e15; // beyond all files
    if (file.isReading())
        stored.at = time > 0 && time < kLatest ? QDateTime::fromMSecsSinceEpoch(qint64(time)) : QDateTime();
}

/// The content of a copy.
struct MapRecovery::Kept
{
    QString project;
    QString mapFile;
    MapDocument::Stored stored;
    MapFile map;
};

MapRecovery::Slot::~Slot() = default;

MapRecovery::MapRecovery(tarnwick::UserPrompts &prompts)
    : m_prompts(prompts)
{
}

MapRecovery::~MapRecovery() = default;

QString MapRecovery::folder(const tarnwick::PathRoots &roots)
{
    return roots.palomineDir + u"/config/arvo/recovery"_s;
}

void MapRecovery::begin(const tarnwick::PathRoots &roots)
{
    end();
    m_roots = roots;
    const QDir dir(folder(roots));
    if (!dir.mkpath(u"."_s)) {
        m_prompts.status(messages::kRecoveryFailed, dir.path());
        return;
    }
    for (int number = 0; number < kMostSlots && !m_own; ++number) {
        auto slot = std::make_unique<Slot>();
        slot->path = dir.filePath(slotName(roots.projectDir, number) + u".map"_s);
        slot->lock = std::make_unique<QLockFile>(dir.filePath(slotName(roots.projectDir, number) + u".lock"_s));
        // Held for as long as the program runs; only the death of its holder frees it.
        slot->lock->setStaleLockTime(0);
        if (!slot->lock->tryLock(0))
            continue;
        if (QFileInfo::exists(slot->path))
            m_left.push_back(std::move(slot));
        else
            m_own = std::move(slot);
    }
}

bool MapRecovery::readKept(const QString &path, int tubeCount, Kept &kept) const
{
    tarnwick::JFile file = tarnwick::JFile::openForReading(path);
    const int version = file.header(kIdentifier, kFileVersion);
    file.serialize(kept.project);
    file.serialize(kept.mapFile);
    if (version >= kFirstWithStored)
        serialize(file, kept.stored);
    kept.map.read(file, tubeCount);
    return kept.project == m_roots.projectDir;
}

bool MapRecovery::offer(MapDocument &map)
{
    std::sort(m_left.begin(), m_left.end(), [](const auto &a, const auto &b) {
        return QFileInfo(a->path).lastModified() > QFileInfo(b->path).lastModified();
    });
    bool restored = false;
    for (size_t i = 0; i < m_left.size() && !restored; ++i)
        restored = offerOne(m_left[i], map);
    m_left.clear(); // what was not decided upon is free for the next start
    return restored;
}

bool MapRecovery::offerOne(std::unique_ptr<Slot> &slot, MapDocument &map)
{
    Kept kept;
    try {
        if (!readKept(slot->path, map.tubeCount(), kept))
            return false;
    } catch (const tarnwick::Error &error) {
        messages::errorWithReason(m_prompts, messages::kReadMapFailed, error);
        QFile::rename(slot->path, slot->path + u".bad"_s);
        return false;
    }
    const auto time = tarnwick::JDateTime::fromSeconds(QFileInfo(slot->path).lastModified().toSecsSinceEpoch());
    const QString name = kept.mapFile.isEmpty() ? u"<New>"_s : kept.mapFile;
    switch (m_prompts.question(tarnwick::Buttons::YesNoCancel, messages::kAskRestoreMap, name, time)) {
    case tarnwick::Answer::Yes:
        map.restoreContent(std::move(kept.map), kept.mapFile, kept.stored);
        m_own = std::move(slot); // the copy stays until the map is saved or the program ends well
        m_prompts.status(messages::kRestoredMap, name);
        return true;
    case tarnwick::Answer::No:
        QFile::remove(slot->path);
        return false;
    default:
        return false;
    }
}

void MapRecovery::update(const MapDocument &map, bool isModified)
{
    if (!m_own)
        return;
    if (!isModified) {
        if (QFileInfo::exists(m_own->path))
            QFile::remove(m_own->path);
        m_written.clear();
        return;
    }
    tarnwick::JFile file = tarnwick::JFile::forWriting({});
    map.content().write(file);
    if (file.bytes() != m_written)
        write(map, file.bytes());
}

void MapRecovery::write(const MapDocument &map, const QByteArray &content)
{
    tarnwick::JFile file = tarnwick::JFile::forWriting(m_own->path);
    file.header(kIdentifier, kFileVersion);
    QString project = m_roots.projectDir;
    QString mapFile = map.file();
    file.serialize(project);
    file.serialize(mapFile);
    MapDocument::Stored stored = map.stored();
    serialize(file, stored);
    try {
        tarnwick::writeFileAtomically(m_own->path, file.bytes() + content);
        m_written = content;
        m_failureSaid = false;
    } catch (const tarnwick::Error &error) {
        if (!std::exchange(m_failureSaid, true))
            m_prompts.status(messages::kRecoveryFailed, error.text());
    }
}

void MapRecovery::end()
{
    if (m_own)
        QFile::remove(m_own->path);
    m_own.reset();
    m_left.clear();
    m_written.clear();
}

} // namespace app
