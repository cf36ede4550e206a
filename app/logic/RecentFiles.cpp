#include "RecentFiles.h"

#include <brannock/SystemOption.h>

using namespace Qt::StringLiterals;

namespace app {

namespace {

constexpr int kVersion = 1;
constexpr int kSmallestEntry = 3 * 4;

} // namespace

RecentFiles::RecentFiles()
    : OptionFile(u"config\\arvo\\recent.opt"_s, u"ARVO Recent Files"_s, kVersion)
{
}

RecentFiles::Lists RecentFiles::lists(const QString &projectFolder) const
{
    for (const Entry &entry : m_entries) {
        if (entry.project == projectFolder)
            return entry.lists;
    }
    return {};
}

RecentFiles::Lists &RecentFiles::front(const QString &projectFolder)
{
    Entry entry{projectFolder, lists(projectFolder)};
    m_entries.removeIf([&projectFolder](const Entry &e) { return e.project == projectFolder; });
    m_entries.prepend(entry);
    if (m_entries.size() > kMaxProjects)
        m_entries.resize(kMaxProjects);
    return m_entries.first().lists;
}

void RecentFiles::addDatabase(const QString &projectFolder, const QString &path)
{
    brannock::addRecent(front(projectFolder).databases, path, kMaxFiles);
}

void RecentFiles::addMap(const QString &projectFolder, const QString &path)
{
    brannock::addRecent(front(projectFolder).maps, path, kMaxFiles);
}

void RecentFiles::clearDatabases(const QString &projectFolder)
{
    front(projectFolder).databases.clear();
}

void RecentFiles::clearMaps(const QString &projectFolder)
{
    front(projectFolder).maps.clear();
}

void RecentFiles::serializeBody(tarnwick::JFile &file, int)
{
    file.list(m_entries, kSmallestEntry, [](tarnwick::JFile &f, Entry &entry) {
        f.serialize(entry.project);
        f.serialize(entry.lists.databases);
        f.serialize(entry.lists.maps);
    });
}

void RecentFiles::resetToDefaults()
{
    m_entries.clear();
}

} // namespace app
