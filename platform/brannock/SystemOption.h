#pragma once
#include <QStringList>
#include <tarnwick/OptionFile.h>

namespace brannock {

/// Inserts the entry at the front, removes duplicates of it (ignoring case and separators), and limits the list.
void addRecent(QStringList &list, const QString &entry, int limit);

/// The suite's own options, shared by its programs: config\system.opt.
class SystemOption : public tarnwick::OptionFile
{
public:
    static constexpr int kMaxRecentProjects = 12;

    SystemOption();
    QStringList recentProjects; ///< folders of this machine, most recent first
    void addRecentProject(const QString &folder) { addRecent(recentProjects, folder, kMaxRecentProjects); }

protected:
    void serializeBody(tarnwick::JFile &file, int version) override;
    void resetToDefaults() override;
};

} // namespace brannock
