#pragma once
#include <tarnwick/OptionFile.h>

#include <QHash>

namespace app {

/// The last used databases and maps of each project, most recent first, in the suite's form of paths. Stored in the
/// installation, so that a project in a read-only or shared folder is not written to.
class RecentFiles : public tarnwick::OptionFile
{
public:
    /// Limited by the command numbers of the menu.
    static constexpr int kMaxFiles = 5;
    static constexpr int kMaxProjects = 100;

    struct Lists
    {
        QStringList databases;
        QStringList maps;
    };

    RecentFiles();
    /// Lists of a project, by its folder; empty if it was never opened.
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
    /// Returns the project's entry after moving or adding it to the front.
    Lists &front(const QString &projectFolder);

    QList<Entry> m_entries; ///< sorted by last use, latest first
};

} // namespace app
