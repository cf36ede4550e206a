#include "NewProject.h"

#include "DatabaseWork.h"
#include "WholeFolder.h"

#include <db/revision/ComponentUpload.h>
#include <ellery/ComponentFile.h>
#include <fenwright/TableScanner.h>
#include <QDir>
#include <QFileInfo>

namespace setup {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype kLongestCode = 50; ///< of the fields site_code, comp and outage

void checkCode(const QString &code, const QString &what, QStringList &missing)
{
    const auto isControl = [](QChar c) { return c.category() == QChar::Other_Control; };
    if (code.trimmed().isEmpty())
        missing.append(u"The %1 is missing."_s.arg(what));
    else if (code.size() > kLongestCode)
        missing.append(u"The %1 has more than %2 characters."_s.arg(what).arg(kLongestCode));
    else if (code.contains(u'\'') || std::any_of(code.cbegin(), code.cend(), isControl))
        missing.append(u"The %1 contains a quote or a control character."_s.arg(what));
}

ellery::SteamGen readFolder(const NewProject &wanted)
{
    const QDir folder(wanted.component);
    const bool isProject = brannock::Project::isProjectFolder(folder.path());
    const QDir component(isProject ? folder.filePath(u"component"_s) : folder.path());
    QStringList missing;
    for (const QString &name : {u"component.json"_s, u"tubes.txt"_s}) {
        if (!component.exists(name))
            missing.append(tarnwick::FileError(component.filePath(name), 0, u"The file is missing."_s).text());
    }
    if (!missing.isEmpty())
        throw TableError(missing);
    return ellery::readComponent(component.path());
}

ellery::SteamGen readTable(const NewProject &wanted, QStringList &remarks)
{
    const TubeTable table = TubeTable::read(wanted.component, wanted.pattern);
    remarks = table.remarks;
    ellery::SteamGen gen;
    gen.name = wanted.comp.trimmed();
    gen.pitch = float(table.pitch);
    gen.triangular = table.triangular;
    gen.setTubes(table.tubes);
    gen.modelName =
        u"%1-%2x%3"_s.arg(gen.name).arg(gen.maxNumber(ellery::Axis::Row)).arg(gen.maxNumber(ellery::Axis::Col));
    return gen;
}

brannock::Project projectOf(const NewProject &wanted, const NewComponent &component)
{
    brannock::Project project;
    project.site.siteCode = wanted.site.trimmed();
    project.site.siteName = project.site.siteCode;
    project.site.compCode = wanted.comp.trimmed();
    project.site.compName = project.site.compCode;
    project.site.model = component.steamGen.modelName;
    project.site.outage = wanted.outage.trimmed();
    project.name = wanted.name.trimmed();
    if (project.name.isEmpty())
        project.name = project.site.siteCode + u", "_s + project.site.compCode;
    project.outages.append({project.site.outage, wanted.date});
    project.currentOutage = project.site.outage;
    project.operTypes = QStringList{u"PRI"_s, u"SEC"_s, u"RES"_s, u"TER"_s};
    project.steamGen = component.steamGen;
    return project;
}

} // namespace

NewComponent NewComponent::read(const NewProject &wanted)
{
    NewComponent component;
    const QFileInfo info(wanted.component);
    if (!info.exists())
        throw tarnwick::FileError(wanted.component, 0, u"There is no such file or folder."_s);
    component.steamGen = info.isDir() ? readFolder(wanted) : readTable(wanted, component.remarks);
    if (const QString remark = fenwright::uncountedRemark(component.steamGen.uncountedTables); !remark.isEmpty())
        component.remarks.append(remark);
    component.steamGen.uncountedTables.clear(); // the project's own files state it
    if (component.steamGen.landmarkSets.isEmpty())
        component.remarks.append(u"There are no landmarks, so the places of indications cannot be checked. They can be "
                                 u"added to the project as component/landmarks.txt."_s);
    return component;
}

QString NewComponent::summary() const
{
    const auto range = [this](qint16 ellery::TubeAddress::*part) {
        const auto &tubes = steamGen.tubes();
        const auto [least, most] =
            std::minmax_element(tubes.cbegin(), tubes.cend(), [&](const ellery::Tube &a, const ellery::Tube &b) {
                return a.address.*part < b.address.*part;
            });
        return u"%1 to %2"_s.arg(least->address.*part).arg(most->address.*part);
    };
    QString text = u"%1 tubes"_s.arg(steamGen.numTube());
    if (steamGen.hasSections())
        text += u", sections "_s + range(&ellery::TubeAddress::sec);
    return text + u", rows "_s + range(&ellery::TubeAddress::row) + u", columns "_s + range(&ellery::TubeAddress::col);
}

QStringList missingOf(const NewProject &wanted)
{
    QStringList missing;
    if (wanted.folder.trimmed().isEmpty())
        missing.append(u"The folder of the project is missing."_s);
    checkCode(wanted.site, u"site code"_s, missing);
    checkCode(wanted.comp, u"component code"_s, missing);
    checkCode(wanted.outage, u"name of the outage"_s, missing);
    if (wanted.component.trimmed().isEmpty())
        missing.append(u"The component is missing: a table of tubes, or a folder."_s);
    return missing;
}

void makeDatabase(const brannock::Project &project, tarnwick::Progress *progress)
{
    DatabaseWork work(project, progress);
    work.require(db::uploadComponent(work.session(), project.steamGen, progress));
}

NewComponent makeNewProject(const NewProject &wanted, tarnwick::Progress *progress)
{
    if (const QStringList missing = missingOf(wanted); !missing.isEmpty())
        throw tarnwick::Error(missing.join(u'\n'));
    NewComponent component;
    makeWholeFolder(wanted.folder, [&](const QString &folder) {
        component = NewComponent::read(wanted);
        brannock::Project project = projectOf(wanted, component);
        project.folder = folder;
        project.makeFolders();
        ellery::writeComponent(project.steamGen, QDir(folder).filePath(u"component"_s));
        makeDatabase(project, progress);
        // Stored last, so that an unfinished folder is no project.
        project.store();
    });
    return component;
}

} // namespace setup
