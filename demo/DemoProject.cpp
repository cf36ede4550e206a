#include "DemoProject.h"

#include "Bundle.h"
#include "Inspection.h"
#include "StoredQueries.h"
#include "TextReports.h"
#include "TubeFiles.h"

#include <brannock/Project.h>
#include <ellery/ComponentFile.h>
#include <QDir>
#include <QFileInfo>
#include <QScopeGuard>
#include <tarnwick/FileWriter.h>

using namespace Qt::StringLiterals;
using brannock::Project;
using brannock::ReportEntry;
using tarnwick::JDateTime;

namespace demo {

namespace {

constexpr const char16_t *kNames[] = {u"Ada Lorrin",   u"Bram Eskel",  u"Cora Tindle",  u"Dov Marrick", u"Edda Quist",
                                      u"Finn Harrow",  u"Greta Soll",  u"Hugo Venn",    u"Ilse Marden", u"Jonas Rook",
                                      u"Kira Dunmore", u"Lars Ottery", u"Maud Penrith", u"Nils Carver", u"Orla Whitby"};
constexpr int kFirstUser = 1001;
constexpr int kFirstOutage = 10;
constexpr int kPresentYear = 2024;
constexpr int kMonthsBetween = 18;

void check(const DemoOptions &options)
{
    const auto within = [](const QString &what, qint64 value, qint64 low, qint64 high) {
        if (value < low || value > high)
            throw tarnwick::Error(
                u"A demo project has %1 to %2 %3; %4 were asked for."_s.arg(low).arg(high).arg(what).arg(value));
    };
    if (options.tubes != 0)
        within(u"tubes"_s, options.tubes, DemoOptions::kLeastTubes, DemoOptions::kMostTubes);
    if (options.entries != 0)
        within(u"entries"_s, options.entries, 1, DemoOptions::kMostEntries);
    within(u"outages"_s, options.outages, 1, DemoOptions::kMostOutages);
    within(u"sections"_s, options.sections, 0, DemoOptions::kMostSections);
}

/// A suite path would be resolved by searching the existing files, which is slow with thousands of files.
QString fileIn(const Project &project, const QString &name)
{
    return project.folder + u'/' + name;
}

ReportEntry headerEntry(const QString &text)
{
    ReportEntry entry;
    entry.kind = ReportEntry::Kind::Header;
    entry.headerText = text;
    return entry;
}

/// The measurement of the calibration standard that opens and closes a cal: a through-wall hole at a known phase.
ReportEntry standardEntry(const InspectedCal &cal, const ReportEntry &like)
{
    ReportEntry entry = like;
    entry.kind = ReportEntry::Kind::Standard;
    entry.sec = entry.row = entry.col = 0;
    entry.fileNumber = 0;
    entry.defect = u"STD"_s;
    entry.channel = u"1"_s;
    entry.meas = {u"Vpp"_s, 4, 146, 40, 100};
    entry.location.clear();
    entry.from.clear();
    entry.to.clear();
    entry.comment.clear();
    entry.entryTime = cal.start;
    return entry;
}

void writeReport(const Project &project, const InspectedCal &cal, Oper oper)
{
    const QList<ReportEntry> &results = cal.results[size_t(oper)];
    const QString outage = project.outages[cal.outage].name;
    brannock::Report report;
    report.entries.reserve(results.size() + 3);
    report.entries.append(
        headerEntry(u"%1 %2 %3 CAL %4 %5 %6"_s.arg(project.site.siteCode, project.site.compCode, outage)
                        .arg(cal.number)
                        .arg(operCode(oper), cal.start.toString())));
    report.entries.append(standardEntry(cal, results.first()));
    report.entries += results;
    report.entries.append(standardEntry(cal, results.last()));
    // Cal numbers start at 1 in each outage, and the conversion writes those of the present one as 00001_PRI.rep.
    const QString name =
        u"reports/%1_%2_%3.rep"_s.arg(outage).arg(cal.number, 5, 10, QLatin1Char('0')).arg(operCode(oper));
    report.storeReport(fileIn(project, name));
}

void writeResults(const Project &project, const DemoOptions &options, tarnwick::Progress *progress)
{
    TextLayout layouts[] = {plainLayout(), titledLayout()};
    for (TextLayout &layout : layouts)
        layout.spec.storeTo(fileIn(project, u"report_formats/"_s + layout.specFile));
    Inspection inspection(project, options);
    const auto write = [&](const InspectedCal &cal) {
        const bool present = cal.outage == options.outages - 1;
        for (const Oper oper : {Oper::Primary, Oper::Secondary, Oper::Resolution}) {
            if (cal.results[size_t(oper)].isEmpty())
                continue;
            const TextLayout &layout = layouts[cal.rotating ? 1 : 0];
            if (present)
                tarnwick::writeFileAtomically(fileIn(project, layout.folder + u'/' + textReportName(layout, cal, oper)),
                                              textReport(layout, cal, oper, project));
            else
                writeReport(project, cal, oper);
        }
    };
    inspection.run(write, progress);
}

/// Removes everything from a folder that did not exist or was empty before.
void removeAll(const QString &folder, bool existed)
{
    QDir dir(folder);
    if (!existed) {
        dir.removeRecursively();
        return;
    }
    const QFileInfoList entries =
        dir.entryInfoList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System);
    for (const QFileInfo &entry : entries) {
        if (entry.isDir() && !entry.isSymLink())
            QDir(entry.filePath()).removeRecursively();
        else
            QFile::remove(entry.filePath());
    }
}

void makeFiles(const DemoOptions &options, const QString &folder, tarnwick::Progress *progress)
{
    const Project project = inventProject(options, folder);
    project.makeFolders();
    ellery::writeComponent(project.steamGen, QDir(project.folder).filePath(u"component"_s));
    writeResults(project, options, progress);
    writeQueries(project);
    const Flaws flaws(project.steamGen, options);
    writeTubeLists(project, flaws);
    writePlans(project, flaws);
    // Stored last, so that an interrupted folder is not taken for a project.
    project.store();
}

} // namespace

Project inventProject(const DemoOptions &options, const QString &folder)
{
    Project project;
    project.folder = QDir::cleanPath(QFileInfo(folder).absoluteFilePath());
    project.steamGen = makeBundle(options);
    addLandmarks(project.steamGen, options.kind);
    project.site = {u"S1"_s,  u"Site 1"_s, u"1"_s, u"SGA"_s, u"Steam generator A"_s, project.steamGen.modelName,
                    QString()};
    project.name = u"Site 1, steam generator A"_s;
    for (int i = 0; i < options.outages; ++i) {
        // Outages alternate between spring and autumn; the present one is in spring.
        const int monthsBack = (options.outages - 1 - i) * kMonthsBetween;
        const int months = kPresentYear * 12 + 3 - monthsBack;
        project.outages.append({u"R%1"_s.arg(kFirstOutage + i), JDateTime::fromLocal(months / 12, months % 12 + 1, 8)});
    }
    project.currentOutage = project.outages.last().name;
    project.site.outage = project.currentOutage;
    int number = kFirstUser;
    for (const char16_t *name : kNames)
        project.users.append({u"A%1"_s.arg(number++), QString::fromUtf16(name)});
    project.probes = {{u"BOBBIN"_s, u"BX-610"_s, 610, u"104000"_s}, {u"RPC"_s, u"RX-580"_s, 580, u"104500"_s}};
    project.operTypes = QStringList{u"PRI"_s, u"SEC"_s, u"RES"_s};
    return project;
}

void makeProject(const DemoOptions &options, const QString &folder, tarnwick::Progress *progress)
{
    check(options);
    DemoOptions used = options;
    constexpr int kOnceThroughSections = 4;
    if (used.kind == Kind::OnceThrough && used.sections == 0)
        used.sections = kOnceThroughSections;
    const QFileInfo info(folder);
    const bool existed = info.exists();
    if (existed &&
        (!info.isDir() || !QDir(folder).isEmpty(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System)))
        throw tarnwick::FileError(folder, 0,
                                  u"A demo project is made in a new or empty folder; this one has something in it."_s);
    auto removing = qScopeGuard([&] { removeAll(folder, existed); });
    makeFiles(used, folder, progress);
    removing.dismiss();
}

} // namespace demo
