#include "MapDocument.h"

#include "Messages.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace app {

MapDocument::MapDocument(plans::MapLegend &legend, tarnwick::UserPrompts &prompts)
    : m_legend(legend)
    , m_prompts(prompts)
{
    m_legend.edited = [this] { header.clearSignatures(); };
}

void MapDocument::setProject(const brannock::Project *project)
{
    m_project = project;
    clear();
}

QString MapDocument::name() const
{
    return tarnwick::SuitePath(m_file).baseName();
}

tarnwick::JDateTime MapDocument::storedAt() const
{
    return m_stored.at.isNull() ? tarnwick::JDateTime()
                                : tarnwick::JDateTime::fromSeconds(m_stored.at.toSecsSinceEpoch());
}

bool MapDocument::isFileChanged() const
{
    const QFileInfo info(tarnwick::SuitePath(m_file).machinePath(m_project->roots()));
    return !m_stored.at.isNull() && info.exists() && info.lastModified() != m_stored.at;
}

bool MapDocument::isFileGone() const
{
    return !m_stored.at.isNull() && !QFileInfo::exists(tarnwick::SuitePath(m_file).machinePath(m_project->roots()));
}

bool MapDocument::isOfOtherModel() const
{
    return !m_stored.at.isNull() && m_stored.site.model != m_project->steamGen.modelName;
}

void MapDocument::clear()
{
    setContent(MapFile(), {});
}

MapFile MapDocument::content() const
{
    MapFile map;
    if (m_project) {
        static_cast<fenwright::SiteInfo &>(map) = m_project->site;
        map.modelName = map.model = m_project->steamGen.modelName;
        map.outage = m_project->outageName();
    }
    map.header = header;
    map.description = description;
    map.entries = m_legend.copyEntries();
    return map;
}

void MapDocument::setContent(MapFile map, const QString &file)
{
    header = map.header;
    description = map.description;
    m_file = file;
    m_stored = {map, {}};
    m_legend.replaceEntries(std::move(map.entries));
}

void MapDocument::restoreContent(MapFile map, const QString &file, const Stored &stored)
{
    checkModel(map);
    setContent(std::move(map), file);
    m_stored = stored;
}

void MapDocument::checkModel(const MapFile &map)
{
    if (map.modelName != m_project->steamGen.modelName)
        m_prompts.error(messages::kOtherModel, map.modelName, m_project->steamGen.modelName);
}

void MapDocument::noteStored(const QString &machinePath, const fenwright::SiteInfo &site)
{
    m_file = tarnwick::SuitePath::fromMachine(machinePath, m_project->roots()).text();
    m_stored = {site, QFileInfo(machinePath).lastModified()};
}

bool MapDocument::readMap(const QString &machinePath)
{
    MapFile map;
    try {
        map.readMap(machinePath, tubeCount());
    } catch (const tarnwick::Error &error) {
        messages::errorWithReason(m_prompts, messages::kReadMapFailed, error);
        return false;
    }
    checkModel(map);
    fenwright::SiteInfo site = map;
    site.model = map.modelName; // files of the first versions hold no site
    setContent(std::move(map), {});
    noteStored(machinePath, site);
    return true;
}

bool MapDocument::writeTo(const QString &machinePath)
{
    try {
        content().storeMap(machinePath);
        return true;
    } catch (const tarnwick::Error &error) {
        messages::errorWithReason(m_prompts, messages::kStoreMapFailed, error);
        return false;
    }
}

bool MapDocument::storeMap(const QString &machinePath)
{
    if (!writeTo(machinePath))
        return false;
    noteStored(machinePath, content());
    return true;
}

bool MapDocument::exportMap(const QString &machinePath)
{
    return writeTo(machinePath);
}

QByteArray MapDocument::headerRecord() const
{
    tarnwick::JFile file = tarnwick::JFile::forWriting({});
    MapHeader(header).serialize(file);
    QString text = description;
    file.serialize(text);
    return file.bytes();
}

void MapDocument::setHeaderRecord(const QByteArray &record)
{
    tarnwick::JFile file = tarnwick::JFile::fromBytes(record, {});
    header.serialize(file);
    file.serialize(description);
}

} // namespace app
