#pragma once
#include <tarnwick/OptionFile.h>

#include <QHash>

namespace app {

/// The databases and maps last used, project by project, most recent first, in the suite's form of paths. Kept with the
/// installation, so that a project on a read-only or shared folder is not written to.
class RecentFiles : public tarnwick::OptionFile
{
public:
    /// As many as the menu has numbers for.
    static constexpr int kMaxFiles = 5;
    static constexpr int kMaxProjects = 100;

    struct Lists
    {
        QStringList databases;
        QStringList maps;
    };

    RecentFiles();
    /// Of a project, by its folder; empty lists for one that was never opened.
    Lists lists(const QString &projectFolder) const;
    void addDatabase(const QString &projectFolder, const QString &path);
    void addMap(const QString &projectFolder, const QString &path);
    void clearDatabases(const QString &projectFolder);
    void clearMaps(const QString &projectFolder);

protected:
    void serializeBody(tarnwick::JFile &file, int version) override;
    void resetToDefaults() override;

private:
    struct Entry
    {
        QString project;
        Lists lists;
    };
    /// The project's entry, moved or added to the front.
    Lists &front(const QString &projectFolder);

    QList<Entry> m_entries; ///< the project used last first
};

} // namespace app
