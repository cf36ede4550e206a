#pragma once
#include "DefectList.h"

#include <ellery/SteamGen.h>
#include <fenwright/Infos.h>
#include <tarnwick/JDateTime.h>
#include <tarnwick/Paths.h>

namespace brannock {

/// The suite's revision, shown in footers, questions and macros.
extern const QString TOLVENMARK_REV;

/// One inspection project: a folder with one site, one component and its outages. The settings are in project.json;
/// docs/file-formats.md describes the folder.
class Project
{
public:
    struct Outage
    {
        QString name;
        tarnwick::JDateTime date;
    };

    /// Reads project.json and the component. Throws tarnwick::FileError, which names the missing or wrong item.
    static Project load(const QString &folder);
    void store() const; ///< project.json
    /// True if the folder contains a project.json.
    static bool isProjectFolder(const QString &folder);
    /// Creates the project's sub-folders (arvo, maps, map_headers, plans, queries, reports, report_formats, tube_lists,
    /// history, temp).
    void makeFolders() const;

    bool isLoaded() const { return !folder.isEmpty(); }

    QString folder; ///< absolute machine path
    QString name;
    fenwright::SiteInfo site;
    QList<Outage> outages; ///< ascending; the last is the present one unless currentOutage is set
    QString currentOutage;
    QList<fenwright::UserInfo> users;
    QList<fenwright::ProbeInfo> probes;
    QStringList operTypes;
    int databaseFormat = 2002;
    DefectList defects = DefectList::standard();
    ellery::SteamGen steamGen;

    QString outageName() const;
    /// Remark for the user about tables that do not state their number of rows; empty if there are none.
    QString tablesRemark() const;
    tarnwick::JDateTime outageDate() const;
    tarnwick::PathRoots roots() const;
    /// Machine path of a suite path.
    QString pathOf(const QString &suitePath) const;
    /// Machine path of arvo\project.mdb.
    QString databasePath() const;
};

} // namespace brannock
