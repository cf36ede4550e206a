#include "ProjectCommands.h"

#include <app/logic/Messages.h>
#include <app/logic/ProjectSession.h>
#include <app/logic/RecentLists.h>
#include <app/logic/WindowCommandTable.h>

#include <setup/dialogs/NewProjectDlg.h>
#include <setup/FilledDemo.h>
#include <tarnwick/Failures.h>
#include <tarnwick/gui/FileDialogs.h>

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace app {

ProjectCommands::ProjectCommands(ProjectSession &session, std::function<bool()> mayReplaceMap, QWidget *parent)
    : m_session(session)
    , m_mayReplaceMap(std::move(mayReplaceMap))
    , m_parent(parent)
{
}

void ProjectCommands::bind(tarnwick::CommandHandlers &handlers)
{
    handlers.bind(OpenProject, [this] { openProject(); });
    handlers.bind(NewProject, [this] { newProject(); });
    handlers.bind(DemoProject, [this] { demoProject(); });
    handlers.bindList(
        FirstRecentProject, [this](const auto &folder) { openFolder(folder.value); },
        [this] { return recentProjectEntries(m_session); });
    handlers.bind(ClearRecentProjects, [this] { clearProjects(); });
}

void ProjectCommands::openFolder(const QString &folder)
{
    if (m_mayReplaceMap())
        Q_EMIT projectWanted(folder);
}

void ProjectCommands::openProject()
{
    const QString start = m_session.hasProject() ? QFileInfo(m_session.project().folder).absolutePath()
                                                 : QStandardPaths::writableLocation(QStandardPaths::HomeLocation);
    const QString folder = m_dialogs->openFolder(u"Open Project"_s, start);
    if (!folder.isEmpty())
        openFolder(folder);
}

void ProjectCommands::newProject()
{
    setup::NewProjectDlg dialog({.prompts = m_session.prompts(),
                                 .files = *m_dialogs,
                                 .roots = m_session.roots(),
                                 .makeProgress = m_session.makeProgress,
                                 .parent = m_parent});
    if (dialog.exec() == QDialog::Accepted)
        openFolder(dialog.folder());
}

void ProjectCommands::demoProject()
{
    const QString chosen = m_dialogs->openFolder(u"Folder for the Demo Project"_s,
                                                 QStandardPaths::writableLocation(QStandardPaths::HomeLocation));
    if (chosen.isEmpty())
        return;
    // A folder with other things in it is not filled with those of a project.
    const auto all = QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System;
    const QString folder = QDir(chosen).isEmpty(all) ? chosen : QDir(chosen).filePath(u"demo-project"_s);
    const auto make = [&] {
        const auto progress = m_session.newProgress(u"Demo Project"_s);
        setup::makeFilledDemo({}, folder, progress.get());
    };
    if (tarnwick::attemptCancellable(m_session.prompts(), make, messages::kDemoNotMade) == tarnwick::Outcome::Done)
        openFolder(folder);
}

void ProjectCommands::clearProjects()
{
    if (m_session.prompts().question(tarnwick::Buttons::YesNo, messages::kAskClearRecent) == tarnwick::Answer::Yes)
        m_session.clearRecentProjects();
}

} // namespace app
