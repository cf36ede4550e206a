#include "PanelTexts.h"

#include <tarnwick/Format.h>

#include <QDir>

using namespace Qt::StringLiterals;

namespace app {

using tarnwick::format;

QString statusPanelText(const ellery::TubeStates &tubes)
{
    return format(u"Tube Count  : %6D\n", tubes.count()) + format(u"Symbol Count: %6D\n", tubes.symbolCount()) +
           format(u"Open Tubes  : %6D\n", tubes.openCount()) + format(u"Selected    : %6D\n", tubes.selectedCount());
}

QString databaseText(const brannock::Project &project, const DatabaseStatus &database)
{
    if (database.path.isEmpty())
        return u"<none>"_s;
    const tarnwick::SuitePath path = tarnwick::SuitePath::fromMachine(database.path, project.roots());
    QString text = path.shown(u"arvo"_s);
    if (!database.updatable)
        text += u" READ ONLY"_s;
    return text;
}

QString projectPanelText(const brannock::Project &project, const QString &mapName, const DatabaseStatus &database)
{
    return format(u"Site Code: %S\n", project.site.siteCode) + format(u"Component: %S\n", project.site.compCode) +
           format(u"Model    : %S\n", project.steamGen.modelName) + format(u"Outage   : %S\n", project.outageName()) +
           format(u"Map Name : %S\n", mapName) + format(u"Database : %S", databaseText(project, database));
}

QString selectionText(const ellery::TubeStates &tubes)
{
    return format(u"%D of %D selected", tubes.selectedCount(), tubes.count());
}

QString projectInfoText(const brannock::Project &project, const DatabaseStatus &database)
{
    QStringList lines{
        format(u"Project   : %S", project.name),
        format(u"Folder    : %S", QDir::toNativeSeparators(project.folder)),
        format(u"Site      : %S %S", project.site.siteCode, project.site.siteName),
        format(u"Unit      : %S", project.site.unit),
        format(u"Component : %S %S", project.site.compCode, project.site.compName),
        format(u"Model     : %S (%D tubes)", project.steamGen.modelName, project.steamGen.numTube()),
        format(u"Database  : %S", databaseText(project, database)),
        QString(),
    };
    if (const QString remark = project.tablesRemark(); !remark.isEmpty())
        lines.insert(lines.size() - 1, u"Remark    : "_s + remark);
    for (const brannock::Project::Outage &outage : project.outages) {
        const QString mark = outage.name == project.outageName() ? u" (current)"_s : QString();
        lines.append(format(u"Outage    : %S  %{%m/%d/%Y}t%S", outage.name, outage.date, mark));
    }
    return lines.join(u'\n');
}

QString mapInfoText(const map::MapDocument &map)
{
    QStringList lines;
    if (!map.file().isEmpty())
        lines.append(format(u"Map       : %S", map.file()));
    if (!map.storedAt().isNull()) {
        const fenwright::SiteInfo &site = map.stored().site;
        const QString inspection = QStringList{site.siteCode, site.compCode, site.outage}.join(u' ').simplified();
        lines.append(format(u"Map saved : %t%S%S", map.storedAt(), inspection.isEmpty() ? u"" : u" for ", inspection));
    }
    if (!map.description().isEmpty())
        lines.append(format(u"Map notes : %S", QString(map.description()).replace(u'\n', u"\n            "_s)));
    return lines.join(u'\n');
}

} // namespace app
