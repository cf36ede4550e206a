#include "ProjectSession.h"

#include "ComponentReload.h"
#include "Messages.h"
#include "SystemMacros.h"

#include <db/CreateDatabase.h>
#include <db/Messages.h>
#include <db/revision/ComponentUpload.h>
#include <db/revision/ConnectDatabase.h>
#include <ellery/ComponentFile.h>
#include <map/MapFiles.h>
#include <tarnwick/Failures.h>
#include <tarnwick/Leftovers.h>
#include <tarnwick/OptionPrompts.h>

#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace app {

namespace {

const QString kConnectTitle = u"Connect to Database"_s;

} // namespace

ProjectSession::ProjectSession(tarnwick::UserPrompts &prompts)
    : m_prompts(prompts)
    , m_project(std::make_unique<brannock::Project>())
    , m_recovery(prompts)
    , m_database(prompts)
    , m_queries(m_database, m_queryContext)
    , m_runner(m_queries, prompts)
{
    m_queryContext.roots = roots();
    m_queryContext.systemMacros = [this] { return systemMacros(); };
    try {
        m_queryContext.roots.makeInstallationFolders();
    } catch (const tarnwick::Error &error) {
        m_prompts.error(tarnwick::messages::kOptionsNotStored, error.text());
    }
    map::shipStandardHeader(m_queryContext.roots);
    load(m_system);
    load(m_options);
    load(m_recent);
    load(m_queryContext.history);
    query::loadFormats(m_queryContext.formats, m_queryContext.roots, m_prompts);
    m_queryContext.userMacros = m_options.userMacros;
}

ProjectSession::~ProjectSession()
{
    end();
}

void ProjectSession::end()
{
    closeDatabase(db::messages::kCloseDatabase);
}

std::unique_ptr<tarnwick::Progress> ProjectSession::newProgress(const QString &title) const
{
    return makeProgress ? makeProgress(title) : nullptr;
}

void ProjectSession::load(tarnwick::OptionFile &options)
{
    tarnwick::loadOptions(options, roots(), m_prompts);
}

void ProjectSession::change(tarnwick::OptionFile &recent, const std::function<void()> &change)
{
    if (keepsRecentFiles)
        tarnwick::changeOptions(recent, roots(), m_prompts, change);
    else
        change();
}

void ProjectSession::setOptions(const query::ArvoOptions &options)
{
    m_options = options;
    m_queryContext.userMacros = m_options.userMacros;
    try {
        m_options.store(roots());
    } catch (const tarnwick::Error &error) {
        m_prompts.error(tarnwick::messages::kOptionsNotStored, error.text());
    }
}

void ProjectSession::notify()
{
    if (changed)
        changed();
}

tarnwick::PathRoots ProjectSession::roots() const
{
    return m_project->isLoaded() ? m_project->roots() : tarnwick::PathRoots::fromEnvironment();
}

bool ProjectSession::openProject(const QString &folder)
{
    if (!brannock::Project::isProjectFolder(folder)) {
        m_prompts.error(messages::kProjectNotThere, QDir::toNativeSeparators(folder));
        return false;
    }
    std::unique_ptr<brannock::Project> loaded;
    const auto read = [&] { loaded = std::make_unique<brannock::Project>(brannock::Project::load(folder)); };
    if (!tarnwick::attempt(m_prompts, read, messages::kProjectUnreadable, QDir::toNativeSeparators(folder)))
        return false;
    closeDatabase(db::messages::kCloseDatabase);
    m_recovery.end();
    // The former project is deleted after its component is no longer used.
    m_project.swap(loaded);
    m_map.setProject(m_project.get());
    loaded.reset();
    m_componentStamp = componentStamp(componentFolder());
    m_options.setProjectFormat(m_project->databaseFormat);
    m_queryContext.roots = roots();
    if (keepsRecoveryCopies)
        m_recovery.begin(m_project->folder);
    headerDraft.reset();
    tarnwick::removeLeftoversBelow(m_project->folder);
    tarnwick::removeLeftoversBelow(roots().palomineDir + u"/config"_s);
    tarnwick::removeLeftoversBelow(roots().palomineDir + u"/user"_s);
    change(m_system, [this] { m_system.addRecentProject(m_project->folder); });
    if (replaced)
        replaced();
    const std::unique_ptr<tarnwick::Progress> progress = newProgress(kConnectTitle);
    const db::ConnectContext context{m_project.get(), this, progress.get()};
    db::connectAtStart(m_database, recentFiles().databases, m_options.databaseFormat, context);
    notify();
    return true;
}

QString ProjectSession::componentFolder() const
{
    return m_project->pathOf(u"component"_s);
}

int ProjectSession::reloadComponent()
{
    const QByteArray stamp = componentStamp(componentFolder());
    if (!hasProject() || stamp == m_componentStamp)
        return 0;
    ellery::SteamGen loaded;
    const auto read = [&] { loaded = ellery::readComponent(componentFolder()); };
    if (!tarnwick::attempt(m_prompts, read, messages::kComponentUnreadable))
        return 0;
    m_componentStamp = stamp;
    ellery::SteamGen &present = m_project->steamGen;
    const ellery::SteamGen before = std::exchange(present, std::move(loaded));
    m_project->site.model = present.modelName;
    const int dropped = m_map.followComponent(before);
    notify();
    return dropped;
}

DatabaseStatus ProjectSession::databaseStatus() const
{
    return {m_database.path(), m_database.isOpen() && m_database.isUpdatable()};
}

tarnwick::JMacro ProjectSession::systemMacros() const
{
    return app::systemMacros(*m_project, m_map.tubes(), m_map.file(), databaseStatus());
}

tarnwick::JMacro ProjectSession::printMacros() const
{
    return app::printMacros(systemMacros(), m_options.userMacros);
}

void ProjectSession::databaseConnected(const QString &path)
{
    change(m_recent,
           [&] { m_recent.addDatabase(m_project->folder, tarnwick::SuitePath::fromMachine(path, roots()).text()); });
    notify();
}

bool ProjectSession::connect(const QString &machinePath)
{
    const std::unique_ptr<tarnwick::Progress> progress = newProgress(kConnectTitle);
    const bool connected = db::connectDatabase(m_database, machinePath, {m_project.get(), this, progress.get()});
    notify();
    return connected;
}

bool ProjectSession::connectDatabase(const QString &machinePath)
{
    const QString former = m_database.isOpen() ? m_database.path() : QString();
    if (connect(machinePath))
        return true;
    if (former.isEmpty() || QFileInfo(former) == QFileInfo(machinePath))
        return false;
    const QString name = tarnwick::SuitePath::fromMachine(former, roots()).shown(u"arvo"_s);
    if (m_prompts.question(tarnwick::Buttons::YesNo, messages::kAskConnectAgain, name) == tarnwick::Answer::Yes)
        connect(former);
    return false;
}

bool ProjectSession::createDatabase(const QString &machinePath)
{
    if (db::createDatabase(m_prompts, machinePath, m_options.databaseFormat))
        return connectDatabase(machinePath);
    m_prompts.showStatus({}); // removes "Create database ..."
    return false;
}

void ProjectSession::closeDatabase()
{
    closeDatabase(db::messages::kDisconnectDatabase);
}

void ProjectSession::closeDatabase(const tarnwick::Message &failure)
{
    tarnwick::attempt(
        m_prompts, [this] { m_database.close(); }, failure);
    notify();
}

void ProjectSession::newMap()
{
    m_map.clear();
    notify();
}

bool ProjectSession::openMap(const QString &machinePath)
{
    if (!map::readMap(m_map, machinePath, m_prompts))
        return false;
    noteMapFile(messages::kOpenedMap);
    return true;
}

bool ProjectSession::saveMap(const QString &machinePath)
{
    if (!map::storeMap(m_map, machinePath, m_prompts))
        return false;
    updateRecoveryCopy();
    noteMapFile(messages::kStoredMap);
    return true;
}

void ProjectSession::noteMapFile(const tarnwick::Message &status)
{
    change(m_recent, [this] { m_recent.addMap(m_project->folder, m_map.file()); });
    notify();
    m_prompts.status(status, tarnwick::SuitePath(m_map.file()).shown());
}

void ProjectSession::updateRecoveryCopy()
{
    m_recovery.update(m_map, {m_map.isModified(), m_map.selection(), headerDraft});
}

void ProjectSession::openMapAtStart()
{
    // Shown here, because messages during connecting would replace it.
    if (const QString remark = m_project->tablesRemark(); !remark.isEmpty())
        m_prompts.showStatus(remark);
    if (const std::optional<map::UnsavedWork> work = m_recovery.offer(m_map)) {
        headerDraft = work->draft;
        notify();
        return;
    }
    const QString last = recentFiles().maps.value(0);
    if (last.isEmpty())
        return;
    const QString path = tarnwick::SuitePath(last).machinePath(roots());
    if (QFileInfo::exists(path))
        openMap(path);
    else
        m_prompts.status(messages::kRecentNotThere, last);
}

void ProjectSession::uploadComponent()
{
    const std::unique_ptr<tarnwick::Progress> progress = newProgress(u"Upload Component"_s);
    db::uploadComponent(m_database, m_project->steamGen, progress.get());
}

void ProjectSession::clearRecentProjects()
{
    change(m_system, [this] { m_system.recentProjects.clear(); });
    notify();
}

void ProjectSession::clearRecentDatabases()
{
    change(m_recent, [this] { m_recent.clearDatabases(m_project->folder); });
    notify();
}

void ProjectSession::clearRecentMaps()
{
    change(m_recent, [this] { m_recent.clearMaps(m_project->folder); });
    notify();
}

} // namespace app
