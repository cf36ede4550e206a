#pragma once
#include "DefectList.h"

#include <ellery/SteamGen.h>
#include <fenwright/Infos.h>
#include <tarnwick/JDateTime.h>
#include <tarnwick/Paths.h>

namespace brannock {

/// The suite's revision as footers, questions and macros show it.
extern const QString TOLVENMARK_REV;

/// One inspection project: a folder with one site, one component and its outages. project.json holds the settings;
/// docs/file-formats.md describes the folder.
class Project
{
public:
    struct Outage
    {
        QString name;
        tarnwick::JDateTime date;
    };

    /// Reads project.json and the component. Throws tarnwick::FileError naming what is missing or wrong.
    static Project load(const QString &folder);
    void store() const; ///< project.json
    /// True when the folder holds a project.json.
    static bool isProjectFolder(const QString &folder);
    /// Makes the project's sub-folders (arvo, maps, map_headers, plans, queries, reports, report_formats, tube_lists,
    /// history, temp).
    void makeFolders() const;

    bool isLoaded() const { return !folder.isEmpty(); }

    QString folder; ///< absolute path of the machine
    QString name;
    fenwright::SiteInfo site;
    QList<Outage> outages; ///< ascending; the last is the present one unless currentOutage says otherwise
    QString currentOutage;
    QList<fenwright::UserInfo> users;
    QList<fenwright::ProbeInfo> probes;
    QStringList operTypes;
    int databaseFormat = 2002;
    DefectList defects = DefectList::standard();
    ellery::SteamGen steamGen;

    QString outageName() const;
    /// What is to be said of its tables: those that do not state the number of their rows. Empty when there is nothing.
    QString tablesRemark() const;
    tarnwick::JDateTime outageDate() const;
    tarnwick::PathRoots roots() const;
    /// Machine path of a path of the suite.
    QString pathOf(const QString &suitePath) const;
    /// arvo\project.mdb on this machine.
    QString databasePath() const;
};

} // namespace brannock
