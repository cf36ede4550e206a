#include "SystemMacros.h"

#include <tarnwick/Format.h>

using namespace Qt::StringLiterals;

namespace app {

tarnwick::JMacro systemMacros(const brannock::Project &project, const ellery::TubeStates &tubes, const QString &mapFile,
                              const DatabaseStatus &database)
{
    const ellery::SteamGen &steamGen = project.steamGen;
    const bool connected = !database.path.isEmpty();
    const auto databasePath = tarnwick::SuitePath::fromMachine(database.path, project.roots());
    const QString none = u"<No Database>"_s;

    tarnwick::JMacro macros;
    macros.set(u"[MAP FILE]"_s, mapFile);
    macros.set(u"[PROJECT DIR]"_s, project.folder);
    macros.set(u"[PROJECT NAME]"_s, project.name);
    macros.set(u"[OUTAGE NAME]"_s, project.outageName());
    macros.set(u"[OUTAGE DATE]"_s, tarnwick::format(u"%{%m/%d/%Y}t", project.outageDate()));
    macros.set(u"[SITE CODE]"_s, project.site.siteCode);
    macros.set(u"[COMPONENT NAME]"_s, project.site.compName);
    macros.set(u"[COMPONENT MODEL]"_s, steamGen.modelName);
    macros.set(u"[MAP NAME]"_s, tarnwick::SuitePath(mapFile).baseName());
    macros.set(u"[MAP OPEN TUBES]"_s, QString::number(tubes.openCount()));
    macros.set(u"[MAP SELECT COUNT]"_s, QString::number(tubes.selectedCount()));
    macros.set(u"[MAP SYMBOL COUNT]"_s, QString::number(tubes.symbolCount()));
    macros.set(u"[MAP TUBE COUNT]"_s, QString::number(steamGen.numTube()));
    for (const auto *name : {u"[QUERY FILE]", u"[QUERY NAME]", u"[QUERY RECORDS]", u"[QUERY TOTAL TUBES]"})
        macros.set(QString::fromUtf16(name), QString());
    macros.set(u"[TOLVENMARK REV]"_s, brannock::TOLVENMARK_REV);
    macros.set(u"[DATABASE FILE]"_s, connected ? databasePath.text() : none);
    macros.set(u"[DATABASE NAME]"_s, connected ? databasePath.baseName() : none);
    macros.sort();
    return macros;
}

tarnwick::JMacro printMacros(const tarnwick::JMacro &system, const tarnwick::JMacro &user)
{
    tarnwick::JMacro macros = user;
    macros.merge(system);
    macros.set(u"[CUR DATETIME]"_s, tarnwick::format(u"%t", tarnwick::JDateTime::now()));
    macros.sort();
    return macros;
}

} // namespace app
