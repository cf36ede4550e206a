#pragma once
#include "CommandActions.h"

#include <brannock/Project.h>
#include <QFileInfo>

namespace app {

/// The three submenus of recent files: a placeholder while a list is empty, else its entries under the numbers after
/// the placeholder's. Entries whose file is gone, or whose folder is a project no more, are greyed, with the path in
/// their tip. Call CommandActions::refresh() after a change.
class RecentMenus : public QObject
{
    Q_OBJECT
public:
    RecentMenus(CommandActions &actions, QObject *parent);

    struct Entry
    {
        QString text; ///< as listed
        QString path; ///< of the machine
    };
    void setProjects(const QList<Entry> &entries)
    {
        fill(NoRecentProject, LastRecentProject, entries, brannock::Project::isProjectFolder);
    }
    void setDatabases(const QList<Entry> &entries) { fill(NoRecentDatabase, LastRecentDatabase, entries, isFileThere); }
    void setMaps(const QList<Entry> &entries) { fill(NoRecentMap, LastRecentMap, entries, isFileThere); }
    /// What a number stands for; empty for one that is not in use.
    QString path(int command) const { return m_paths.value(command); }

private:
    using IsThere = bool (*)(const QString &path);
    static bool isFileThere(const QString &path) { return QFileInfo::exists(path); }
    void fill(int placeholder, int last, const QList<Entry> &entries, IsThere isThere);
    void show(int number, int place, const Entry &entry, bool isThere);

    CommandActions &m_actions;
    QHash<int, QString> m_paths;
};

} // namespace app
