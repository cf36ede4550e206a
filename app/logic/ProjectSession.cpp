#include "ProjectSession.h"

#include "ComponentUpload.h"
#include "Messages.h"
#include "SystemMacros.h"

#include <db/Errors.h>
#include <db/Messages.h>
#include <tarnwick/OptionPrompts.h>

#include <QDir>

using namespace Qt::StringLiterals;

namespace app {

ProjectSession::ProjectSession(tarnwick::UserPrompts &prompts)
    : m_prompts(prompts)
    , m_project(std::make_unique<brannock::Project>())
    , m_legend(m_project->steamGen)
    , m_undo(m_legend, m_project->steamGen)
    , m_database(prompts)
    , m_queries(m_database, m_queryContext)
{
    m_queryContext.roots = roots();
    m_queryContext.systemMacros = [this] { return systemMacros(); };
    try {
        m_queryContext.roots.makeInstallationFolders();
    } catch (const tarnwick::Error &error) {
        m_prompts.error(tarnwick::messages::kOptionsNotStored, error.text());
    }
    load(m_system);
    load(m_options);
    load(m_recent);
    load(m_queryContext.history);
    load(m_queryContext.formats);
    m_queryContext.userMacros = m_options.userMacros;
}

ProjectSession::~ProjectSession()
{
    try {
        m_database.close();
    } catch (const dao::DaoException &exception) {
        db::showDaoError(m_prompts, exception, db::messages::kCloseDatabase);
    }
}

void ProjectSession::load(tarnwick::OptionFile &options)
{
    tarnwick::loadOptions(options, roots(), m_prompts);
}

void ProjectSession::store(tarnwick::OptionFile &options)
{
    tarnwick::storeOptions(options, roots(), m_prompts);
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
    try {
        loaded = std::make_unique<brannock::Project>(brannock::Project::load(folder));
    } catch (const tarnwick::Error &error) {
        m_prompts.error(messages::kProjectUnreadable, QDir::toNativeSeparators(folder), error.text());
        return false;
    }
    closeDatabase();
    if (replacing)
        replacing();
    m_legend.setSteamGen(loaded->steamGen);
    m_undo.reset(loaded->steamGen);
    m_project = std::move(loaded);
    mapFile.clear();
    m_queryContext.roots = roots();
    m_system.addRecentProject(m_project->folder);
    store(m_system);
    const db::ConnectContext context{m_project.get(), this};
    db::connectAtStart(m_database, recentFiles().databases, m_options.databaseFormat, context);
    notify();
    return true;
}

DatabaseStatus ProjectSession::databaseStatus() const
{
    return {m_database.path(), m_database.isOpen() && m_database.isUpdatable()};
}

tarnwick::JMacro ProjectSession::systemMacros() const
{
    return app::systemMacros(*m_project, mapFile, databaseStatus());
}

void ProjectSession::databaseConnected(const QString &path)
{
    m_recent.addDatabase(m_project->folder, tarnwick::SuitePath::fromMachine(path, roots()).text());
    store(m_recent);
    notify();
}

bool ProjectSession::connectDatabase(const QString &machinePath)
{
    const bool connected = db::connectDatabase(m_database, machinePath, {m_project.get(), this});
    notify();
    return connected;
}

bool ProjectSession::createDatabase(const QString &machinePath)
{
    return db::createDatabase(m_prompts, machinePath, m_options.databaseFormat) && connectDatabase(machinePath);
}

void ProjectSession::closeDatabase()
{
    try {
        m_database.close();
    } catch (const dao::DaoException &exception) {
        db::showDaoError(m_prompts, exception, db::messages::kDisconnectDatabase);
    }
    notify();
}

void ProjectSession::uploadComponent()
{
    if (!db::checkConnected(m_database) ||
        m_prompts.question(tarnwick::Buttons::YesNo, messages::kAskUploadModel) != tarnwick::Answer::Yes)
        return;
    app::uploadComponent(m_database, m_project->steamGen);
}

void ProjectSession::clearRecentProjects()
{
    m_system.recentProjects.clear();
    store(m_system);
    notify();
}

void ProjectSession::clearRecentDatabases()
{
    m_recent.clearDatabases(m_project->folder);
    store(m_recent);
    notify();
}

void ProjectSession::clearRecentMaps()
{
    m_recent.clearMaps(m_project->folder);
    store(m_recent);
    notify();
}

} // namespace app
