#include "RecentLists.h"

#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace app {

namespace {

using Entries = QList<tarnwick::CommandHandlers::ListEntry>;

QString whyNot(bool isThere, const QString &path)
{
    return isThere ? QString() : QDir::toNativeSeparators(path) + u"\nIt does not exist any more."_s;
}

Entries fileEntries(const QStringList &suitePaths, const tarnwick::PathRoots &roots)
{
    Entries entries;
    for (const QString &each : suitePaths) {
        const tarnwick::SuitePath path(each);
        const QString file = path.machinePath(roots);
        entries.append({path.shown(), file, whyNot(QFileInfo::exists(file), file)});
    }
    return entries;
}

} // namespace

Entries recentProjectEntries(const ProjectSession &session)
{
    Entries entries;
    for (const QString &folder : session.recentProjects())
        entries.append(
            {QDir::toNativeSeparators(folder), folder, whyNot(brannock::Project::isProjectFolder(folder), folder)});
    return entries;
}

Entries recentDatabaseEntries(const ProjectSession &session)
{
    return session.hasProject() ? fileEntries(session.recentFiles().databases, session.roots()) : Entries();
}

Entries recentMapEntries(const ProjectSession &session)
{
    return session.hasProject() ? fileEntries(session.recentFiles().maps, session.roots()) : Entries();
}

} // namespace app
