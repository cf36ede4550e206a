#include "Project.h"

#include <ellery/ComponentFile.h>
#include <fenwright/CellText.h>
#include <fenwright/JsonSettings.h>
#include <fenwright/TableScanner.h>
#include <QDir>
#include <QFileInfo>
#include <QSet>
#include <tarnwick/base/Error.h>

using namespace Qt::StringLiterals;
using fenwright::JsonSettings;
using tarnwick::JDateTime;

namespace brannock {

const QString TOLVENMARK_REV = u"1.0"_s;

namespace {

constexpr int kVersion = 1;
constexpr int kDatabaseFormats[] = {1997, 2000, 2002};
constexpr int kLargestProbeSize = 9999;

QString settingsFile(const QString &folder)
{
    return QDir(folder).filePath(u"project.json"_s);
}

void readSite(const JsonSettings &site, fenwright::SiteInfo &info)
{
    info.siteCode = site.requiredText(u"code"_s);
    info.siteName = site.text(u"name"_s);
    info.unit = site.text(u"unit"_s);
    const JsonSettings component = site.section(u"component"_s);
    info.compCode = component.requiredText(u"code"_s);
    info.compName = component.text(u"name"_s);
}

void readOutages(const JsonSettings &settings, Project &project)
{
    QSet<QString> names;
    for (const JsonSettings &entry : settings.list(u"outages"_s)) {
        Project::Outage outage;
        outage.name = entry.requiredText(u"name"_s);
        if (names.contains(outage.name))
            entry.fail(u"name"_s, u"outage '%1' occurs twice"_s.arg(outage.name));
        names.insert(outage.name);
        const QString date = entry.text(u"date"_s);
        const std::optional<JDateTime> parsed = fenwright::cellTime(date.toUtf8());
        if (!date.isEmpty() && !parsed)
            entry.fail(u"date"_s, u"'%1' is not a date"_s.arg(date));
        outage.date = parsed.value_or(JDateTime());
        project.outages.append(outage);
    }
    project.currentOutage = settings.text(u"current_outage"_s);
    if (!project.currentOutage.isEmpty() && !names.contains(project.currentOutage))
        settings.fail(u"current_outage"_s, u"'%1' is not in the list of outages"_s.arg(project.currentOutage));
}

void readPeopleAndProbes(const JsonSettings &settings, Project &project)
{
    for (const JsonSettings &entry : settings.list(u"users"_s))
        project.users.append({entry.requiredText(u"id"_s), entry.text(u"name"_s)});
    for (const JsonSettings &entry : settings.list(u"probes"_s)) {
        project.probes.append({entry.requiredText(u"type"_s), entry.text(u"model"_s),
                               entry.integer(u"size"_s, 0, kLargestProbeSize, 0), entry.text(u"serial_number"_s)});
    }
    project.operTypes = settings.texts(u"oper_types"_s);
    if (project.operTypes.isEmpty())
        project.operTypes = QStringList{u"PRI"_s, u"SEC"_s, u"RES"_s, u"TER"_s};
}

QJsonArray outagesJson(const QList<Project::Outage> &outages)
{
    QJsonArray array;
    for (const Project::Outage &outage : outages) {
        QJsonObject entry{{u"name"_s, outage.name}};
        if (!outage.date.isNull())
            entry.insert(u"date"_s, outage.date.toString(u"%Y-%m-%d"));
        array.append(entry);
    }
    return array;
}

} // namespace

bool Project::isProjectFolder(const QString &folder)
{
    return !folder.isEmpty() && QFileInfo(settingsFile(folder)).isFile();
}

Project Project::load(const QString &folder)
{
    if (!QFileInfo(folder).isDir())
        throw tarnwick::FileError(folder, 0, u"There is no such folder."_s);
    if (!isProjectFolder(folder))
        throw tarnwick::FileError(settingsFile(folder), 0, u"The folder is not a project: it has no project.json."_s);
    const JsonSettings settings = JsonSettings::read(settingsFile(folder), u"project"_s, kVersion);
    Project project;
    project.folder = QDir::cleanPath(QFileInfo(folder).absoluteFilePath());
    project.name = settings.text(u"name"_s, QDir(project.folder).dirName());
    readSite(settings.section(u"site"_s), project.site);
    readOutages(settings, project);
    readPeopleAndProbes(settings, project);
    project.databaseFormat = settings.integer(u"database_format"_s, 0, 9999, 2002);
    if (std::find(std::begin(kDatabaseFormats), std::end(kDatabaseFormats), project.databaseFormat) ==
        std::end(kDatabaseFormats))
        settings.fail(u"database_format"_s, u"1997, 2000 or 2002 is needed"_s);
    project.steamGen = ellery::readComponent(QDir(project.folder).filePath(u"component"_s));
    project.site.model = project.steamGen.modelName;
    project.site.outage = project.outageName();
    const QString defectFile = QDir(project.folder).filePath(u"defects.txt"_s);
    if (QFileInfo::exists(defectFile))
        project.defects = DefectList::read(defectFile);
    return project;
}

void Project::store() const
{
    QJsonArray userList;
    for (const fenwright::UserInfo &user : users)
        userList.append(QJsonObject{{u"id"_s, user.id}, {u"name"_s, user.name}});
    QJsonArray probeList;
    for (const fenwright::ProbeInfo &probe : probes) {
        probeList.append(QJsonObject{{u"type"_s, probe.type},
                                     {u"model"_s, probe.model},
                                     {u"size"_s, probe.size},
                                     {u"serial_number"_s, probe.serialNumber}});
    }
    const QJsonObject siteObject{{u"code"_s, site.siteCode},
                                 {u"name"_s, site.siteName},
                                 {u"unit"_s, site.unit},
                                 {u"component"_s, QJsonObject{{u"code"_s, site.compCode}, {u"name"_s, site.compName}}}};
    const QJsonObject object{{u"name"_s, name},
                             {u"site"_s, siteObject},
                             {u"outages"_s, outagesJson(outages)},
                             {u"current_outage"_s, outageName()},
                             {u"users"_s, userList},
                             {u"probes"_s, probeList},
                             {u"oper_types"_s, QJsonArray::fromStringList(operTypes)},
                             {u"database_format"_s, databaseFormat}};
    fenwright::writeJsonSettings(settingsFile(folder), u"project"_s, kVersion, object);
}

void Project::makeFolders() const
{
    const QDir root(folder);
    for (const QStringView sub : {u"arvo", u"maps", u"map_headers", u"plans", u"queries", u"reports", u"report_formats",
                                  u"tube_lists", u"history", u"temp"}) {
        if (!root.mkpath(sub.toString()))
            throw tarnwick::FileError(root.filePath(sub.toString()), 0, u"The folder cannot be made."_s);
    }
}

QString Project::outageName() const
{
    return currentOutage.isEmpty() && !outages.isEmpty() ? outages.last().name : currentOutage;
}

QString Project::tablesRemark() const
{
    QStringList files = steamGen.uncountedTables;
    if (!defects.isCounted())
        files.append(u"defects.txt"_s);
    return fenwright::uncountedRemark(files);
}

JDateTime Project::outageDate() const
{
    for (const Outage &outage : outages) {
        if (outage.name == outageName())
            return outage.date;
    }
    return JDateTime();
}

tarnwick::PathRoots Project::roots() const
{
    return tarnwick::PathRoots::fromEnvironment(folder);
}

QString Project::pathOf(const QString &suitePath) const
{
    const tarnwick::SuitePath path(suitePath);
    // The installation folder is determined only if the path needs it.
    return path.machinePath(path.isBelow(u"[PALOMINE_DIR]"_s) ? roots() : tarnwick::PathRoots{QString(), folder});
}

QString Project::databasePath() const
{
    return pathOf(u"arvo\\project.mdb"_s);
}

} // namespace brannock
