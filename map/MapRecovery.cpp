#include "MapRecovery.h"

#include "MapFiles.h"
#include "Messages.h"

#include <QDateTime>
#include <tarnwick/Failures.h>

using namespace Qt::StringLiterals;
using tarnwick::RecoveryCopies;

namespace map {

namespace {

const QString kIdentifier = u"MapRecovery"_s;
constexpr int kFileVersion = 3;
constexpr int kFirstWithStored = 2;
constexpr int kFirstWithWork = 3;

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

void MapRecovery::begin(const QString &projectFolder)
{
    end();
    m_project = projectFolder;
    m_copies.emplace(projectFolder, u"map"_s);
    try {
        m_copies->begin();
    } catch (const tarnwick::Error &error) {
        fail(error.text());
    }
}

void MapRecovery::fail(const QString &reason)
{
    if (m_problem.isEmpty())
        m_prompts.status(messages::kRecoveryFailed, reason);
    m_problem = reason;
}

std::optional<UnsavedWork> MapRecovery::offer(MapDocument &map)
{
    std::optional<UnsavedWork> restored;
    if (m_copies)
        m_copies->offer([&](const RecoveryCopies::Left &left) { return decide(left, map, restored); });
    return restored;
}

RecoveryCopies::Decision MapRecovery::decide(const RecoveryCopies::Left &left, MapDocument &map,
                                             std::optional<UnsavedWork> &restored)
{
    Kept kept;
    try {
        const int tubeCount = map.component().numTube();
        tarnwick::JFile file = tarnwick::JFile::fromBytes(left.content(), left.path);
        kept.serializeHead(file);
        kept.map.read(file, tubeCount);
        kept.work.selection.removeIf([tubeCount](qint32 tube) { return tube < 0 || tube >= tubeCount; });
        if (kept.project != m_project)
            return RecoveryCopies::Decision::Keep;
    } catch (const tarnwick::Error &error) {
        tarnwick::showFailure(m_prompts, error, messages::kReadMapFailed);
        return RecoveryCopies::Decision::Damaged;
    }
    const auto time = tarnwick::JDateTime::fromSeconds(left.time.toSecsSinceEpoch());
    const QString name = kept.mapFile.isEmpty() ? u"<New>"_s : tarnwick::SuitePath(kept.mapFile).shown();
    switch (m_prompts.question(tarnwick::Buttons::YesNoCancel, messages::kAskRestoreMap, name, time)) {
    case tarnwick::Answer::Yes:
        reportOtherModel(map, kept.map, m_prompts);
        map.restore(kept.map, kept.mapFile, kept.stored, kept.work.selection);
        // If the map's own file was changed or deleted, only the copy holds this content.
        kept.work.isModified = kept.work.isModified || map.isFileChanged() || map.isFileGone();
        if (kept.work.isModified)
            map.setNeverSaved();
        m_prompts.status(messages::kRestoredMap, name);
        restored = kept.work;
        return RecoveryCopies::Decision::Restore;
    case tarnwick::Answer::No:
        return RecoveryCopies::Decision::Discard;
    default:
        return RecoveryCopies::Decision::Keep;
    }
}

void MapRecovery::update(const MapDocument &map, const UnsavedWork &work)
{
    if (!m_copies || !m_copies->isOn())
        return;
    QByteArray content;
    if (!work.isEmpty()) {
        tarnwick::JFile file = tarnwick::JFile::forWriting({});
        Kept{m_project, map.file(), map.stored(), work, {}}.serializeHead(file);
        map.content().write(file);
        content = file.bytes();
    }
    try {
        m_copies->update(content);
        m_problem.clear();
    } catch (const tarnwick::Error &error) {
        fail(error.text());
    }
}

void MapRecovery::end()
{
    if (m_copies)
        m_copies->end();
    m_copies.reset();
    m_problem.clear();
}

} // namespace map
