#include "FilledDemo.h"

#include "DatabaseWork.h"
#include "NewProject.h"
#include "WholeFolder.h"

#include <conversion/ReportConversion.h>
#include <db/revision/ComponentUpload.h>
#include <db/SqlText.h>
#include <demo/DemoProject.h>
#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <results/history/HistoryList.h>
#include <tarnwick/FileWriter.h>

namespace setup {

using namespace Qt::StringLiterals;
using brannock::Project;

namespace {

constexpr const char16_t *kTables[] = {
    u"INSERT INTO repairs (sec, row, col, repair_type, type, date_scheduled, date_completed, site_code, comp, outage, "
    u"reason) SELECT sec, row, col, 'PLUG', 'ROLLED', MIN(entry_time), MIN(entry_time), site_code, comp, MIN(outage), "
    u"'Found plugged' FROM report WHERE defect = 'PLG' GROUP BY sec, row, col, site_code, comp",

    u"INSERT INTO repairs (sec, row, col, repair_type, type, date_scheduled, site_code, comp, outage, reason) "
    u"SELECT sec, row, col, 'PLUG', 'ROLLED', MAX(entry_time), site_code, comp, outage, 'Depth of 40% and above' "
    u"FROM report WHERE outage = '%1' AND pcnt >= 40 AND oper_type = 'RES' AND defect NOT IN ('NDD', 'PLG') "
    u"GROUP BY sec, row, col, site_code, comp, outage",

    u"INSERT INTO tube_sets (name, [desc]) VALUES ('Periphery', 'Tubes on the edge of the bundle')",

    u"INSERT INTO tube_set_entry (name, entry_num, sec, row, col, color, symbol) "
    u"SELECT 'Periphery', (SELECT COUNT(*) FROM tubes AS b WHERE b.is_periph = True "
    u"AND b.sec * 1000000 + b.row * 1000 + b.col < a.sec * 1000000 + a.row * 1000 + a.col), sec, row, col, 255, 80 "
    u"FROM tubes AS a WHERE a.is_periph = True",

    u"INSERT INTO plans (name, probe_model, beg_test, end_test, create_time, [desc]) "
    u"SELECT 'Depth 20 and above', 'RX-580', MIN(beg_test), MAX(end_test), MAX(entry_time), "
    u"'Tubes with a depth of 20% and above' FROM report WHERE pcnt >= 20",

    u"INSERT INTO plan_entry (name, entry_num, sec, row, col) "
    u"SELECT 'Depth 20 and above', (SELECT COUNT(*) FROM tubes AS b WHERE EXISTS (SELECT * FROM report AS r "
    u"WHERE r.sec = b.sec AND r.row = b.row AND r.col = b.col AND r.pcnt >= 20) "
    u"AND b.sec * 1000000 + b.row * 1000 + b.col < a.sec * 1000000 + a.row * 1000 + a.col), sec, row, col "
    u"FROM tubes AS a WHERE EXISTS (SELECT * FROM report AS r "
    u"WHERE r.sec = a.sec AND r.row = a.row AND r.col = a.col AND r.pcnt >= 20)"};

/// The texts of one folder by the numbers of their cals.
QList<QStringList> textsByCal(const QDir &folder)
{
    static const QRegularExpression number(u"[0-9]+"_s);
    QMap<int, QStringList> cals;
    for (const QString &name : folder.entryList({u"*.txt"_s}, QDir::Files, QDir::Name))
        cals[number.match(name).captured().toInt()].append(folder.filePath(name));
    return cals.values();
}

/// Converts the texts of a folder except those of the last cals, of which one in so many is left. Returns the reports
/// to upload: those of the last converted cal are left for the user.
QStringList convertMost(const Project &project, const QString &folder, const QString &specFile, qsizetype oneIn,
                        DatabaseWork &work, tarnwick::Progress *progress)
{
    const QList<QStringList> cals = textsByCal(QDir(project.folder + u'/' + folder));
    const qsizetype left = (cals.size() + 1) / oneIn;
    const qsizetype converted = cals.size() - left;
    tarnwick::ProgressLoop loop(progress, cals.size(), u"Converting texts ..."_s);
    QStringList reports;
    for (qsizetype cal = 0; cal < converted; ++cal) {
        for (const QString &path : cals[cal]) {
            conversion::ReportConversion run(project);
            run.spec.loadFrom(project.pathOf(u"report_formats\\"_s + specFile));
            run.convertFile(path, progress);
            work.require(run.store(work.prompts()) == conversion::StoreResult::Stored);
            if (left == 0 || cal + 1 < converted)
                reports.append(project.pathOf(run.target().text()));
        }
        loop.tick(cal + 1);
    }
    return reports;
}

void uploadReports(const Project &project, const QStringList &paths, DatabaseWork &work, tarnwick::Progress *progress)
{
    tarnwick::ProgressLoop loop(progress, paths.size(), u"Storing the reports ..."_s);
    results::UploadRun run(work.session(), project, results::UploadRun::Mode::Store, nullptr);
    qint64 done = 0;
    for (const QString &path : paths) {
        brannock::Report report;
        report.loadReport(path);
        const results::UploadSummary summary = run.upload(report);
        work.require(summary.completed && summary.failed == 0);
        loop.tick(++done);
    }
}

void fillTables(const Project &project, DatabaseWork &work)
{
    dao::Database &database = work.session().database();
    dao::Transaction transaction(work.session().workspace());
    for (const char16_t *sql : kTables)
        db::executeSql(database, QString::fromUtf16(sql).replace(u"%1"_s, project.outageName()));
    transaction.commit();
}

void makeHistory(const Project &project, DatabaseWork &work, tarnwick::Progress *progress)
{
    results::ArvoHistoryOptions options;
    results::HistoryList list(work.session(), project, options, progress);
    work.require(list.fetchFilters());
    list.choices().mode = results::OutageMode::All;
    const tarnwick::Outcome outcome = list.fetch();
    if (outcome == tarnwick::Outcome::Cancelled)
        throw tarnwick::Cancelled();
    work.require(outcome == tarnwick::Outcome::Done);
    QDir(project.folder).mkpath(u"history/palomine"_s); // if that fails, storing the file tells it
    work.require(list.saveAs(project.pathOf(u"history\\palomine\\project.hst"_s)));
}

/// The log of uploads names files by their paths, which are those of the finished folder.
void moveLog(const QString &folder, const QString &wanted)
{
    const QString path = folder + u"/report_log.jsonl"_s;
    QByteArray log = tarnwick::readFile(path);
    tarnwick::writeFileAtomically(path, log.replace(folder.toUtf8(), wanted.toUtf8()));
}

} // namespace

void makeFilledDemo(const demo::DemoOptions &options, const QString &wanted, tarnwick::Progress *progress)
{
    makeWholeFolder(wanted, [&](const QString &folder) {
        demo::makeProject(options, folder, progress);
        const Project project = Project::load(folder);
        const QDir reports(folder + u"/reports"_s);
        QStringList paths;
        for (const QString &name : reports.entryList({u"*.rep"_s}, QDir::Files, QDir::Name))
            paths.append(reports.filePath(name));
        DatabaseWork work(project, progress);
        work.require(db::uploadComponent(work.session(), project.steamGen, progress));
        paths += convertMost(project, u"foreign"_s, u"default.fmt"_s, 6, work, progress);
        paths += convertMost(project, u"foreign2"_s, u"quillmark.fmt"_s, 3, work, progress);
        uploadReports(project, paths, work, progress);
        fillTables(project, work);
        makeHistory(project, work, progress);
        moveLog(folder, QDir::cleanPath(QFileInfo(wanted).absoluteFilePath()));
    });
}

} // namespace setup
