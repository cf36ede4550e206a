#include "FileOpener.h"

#include "Messages.h"
#include "ProjectSession.h"

#include <brannock/Project.h>

#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace app {

bool FileOpener::open(const QStringList &paths)
{
    QStringList faults;
    QList<Group> groups;
    for (const QString &path : paths) {
        const QString shown = QDir::toNativeSeparators(path);
        const QFileInfo file(path);
        const FileKind kind = file.exists() ? fileKind(path) : FileKind::Unknown;
        if (kind == FileKind::Unknown) {
            faults.append(
                tarnwick::format(file.exists() ? messages::kUnknownFile.text : messages::kNoSuchFile.text, shown));
            continue;
        }
        const QString project = projectOf(path);
        const bool isSeveral = kind == FileKind::Report || kind == FileKind::ForeignText;
        if (isSeveral && !groups.isEmpty() && groups.last().kind == kind && groups.last().project == project)
            groups.last().paths.append(file.absoluteFilePath());
        else
            groups.append({kind, project, {file.absoluteFilePath()}});
    }
    if (!faults.isEmpty()) {
        m_session.prompts().error(messages::kCouldNotOpenFiles, faults.join(u'\n'));
        return false;
    }
    return std::all_of(groups.begin(), groups.end(), [this](const Group &group) { return openGroup(group); });
}

bool FileOpener::openGroup(const Group &group)
{
    if (group.kind == FileKind::Project) // a folder that is no project is reported by the action
        return m_actions.openProject(group.project.isEmpty() ? group.paths.first() : group.project);
    if (!enterProject(group))
        return false;
    switch (group.kind) {
    case FileKind::Database:
        m_actions.connectDatabase(group.paths.first());
        break;
    case FileKind::Map:
        m_actions.openMap(group.paths.first());
        break;
    case FileKind::Query:
        m_actions.openQuery(group.paths.first());
        break;
    case FileKind::Plan:
        m_actions.openPlan(group.paths.first());
        break;
    case FileKind::TubeList:
        m_actions.openList(group.paths.first());
        break;
    case FileKind::Report:
        m_actions.uploadReports(group.paths);
        break;
    case FileKind::ForeignText:
        m_actions.convertTexts(group.paths);
        break;
    case FileKind::Project:
    case FileKind::Unknown:
        break;
    }
    return true;
}

bool FileOpener::enterProject(const Group &group)
{
    const bool isOpen = m_session.hasProject();
    if (isOpen && (group.project.isEmpty() || group.project == m_session.project().folder))
        return true;
    const QString folder = group.project.isEmpty() ? m_session.recentProjects().value(0) : group.project;
    if (!brannock::Project::isProjectFolder(folder)) {
        m_session.prompts().error(messages::kNoProjectForFile, QDir::toNativeSeparators(group.paths.first()));
        return false;
    }
    return m_actions.openProject(folder);
}

} // namespace app
