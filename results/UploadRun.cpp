#include "UploadRun.h"

#include "Messages.h"

#include <brannock/ProblemCollector.h>
#include <db/FieldAccess.h>
#include <db/SqlText.h>
#include <QFileInfo>
#include <tarnwick/Failures.h>

namespace results {

using namespace Qt::StringLiterals;
using brannock::FileOutcome;
using brannock::Report;
using brannock::ReportEntry;
using brannock::ReportProblem;
using tarnwick::Answer;
using tarnwick::Buttons;

namespace {

/// What identifies the rows of an upload later: its first cal, and the last row that was there before.
QJsonObject markOf(dao::Database &database, const Report &report)
{
    const auto first = std::find_if(report.entries.begin(), report.entries.end(),
                                    [](const ReportEntry &entry) { return entry.isResult(); });
    if (first == report.entries.end())
        return {};
    const Cal cal = Cal::of(*first);
    const qint32 last = db::fieldAs<qint32>(db::firstValue(database, u"SELECT MAX(recd_num) FROM report"_s));
    return {{u"after"_s, last},        {u"site"_s, cal.siteCode}, {u"comp"_s, cal.comp}, {u"type"_s, cal.operType},
            {u"outage"_s, cal.outage}, {u"sec"_s, cal.sec},       {u"cal"_s, cal.calNum}};
}

} // namespace

Answer CheckPrompts::ask(Buttons buttons, const QString &, int)
{
    return buttons == Buttons::OkCancel ? Answer::Ok : Answer::Yes;
}

UploadRun::UploadRun(db::DatabaseSession &session, const brannock::Project &project, Mode mode,
                     tarnwick::Progress *progress, tarnwick::UserPrompts *prompts)
    : m_session(session)
    , m_project(project)
    , m_progress(progress)
    , m_prompts(prompts ? *prompts : session.prompts())
    , m_check(project.steamGen, project.defects)
    , m_log(project.folder)
{
    if (mode == Mode::Check)
        m_dryRun.emplace(session);
}

UploadSummary UploadRun::upload(const Report &report)
{
    UploadSummary summary;
    if (m_dryRun && !m_dryRun->isOpen() && m_session.isOpen() && m_session.isUpdatable() && !m_dryRun->begin()) {
        addOutcome(report, summary);
        return summary;
    }
    const QString id = m_dryRun ? QString() : beginLog(report);
    summary = ReportUpload(m_session, m_project, m_progress, &m_prompts).upload(report);
    addOutcome(report, summary);
    if (!id.isEmpty())
        endLog(id, summary.completed);
    return summary;
}

UploadSummary UploadRun::uploadCurrent(tarnwick::FileStatusList &files, const Report &report)
{
    if (!files.checkCurrent(m_prompts))
        return {};
    const UploadSummary summary = upload(report);
    if (summary.completed && !m_dryRun)
        files.markCurrentDone();
    return summary;
}

void UploadRun::addOutcome(const Report &report, const UploadSummary &summary)
{
    FileOutcome outcome;
    outcome.file = report.path;
    outcome.entries = int(std::count_if(report.entries.begin(), report.entries.end(),
                                        [](const ReportEntry &entry) { return entry.isResult(); }));
    outcome.stored = summary.completed ? summary.stored : 0;
    outcome.skipped = outcome.entries - outcome.stored;
    brannock::ProblemCollector problems(m_check);
    for (int i = 0; i < report.numEntry(); ++i)
        problems.add(report[i], i + 1);
    outcome.problems = problems.problems();
    for (const ReportProblem &problem : summary.problems) {
        // The reason why an entry cannot be stored is usually a problem that the check has found.
        if (problem.kind != u"not stored" || !problems.hasProblem(problem.entry))
            outcome.problems.append(problem);
    }
    m_outcomes.append(outcome);
}

QString UploadRun::beginLog(const Report &report)
{
    if (m_project.folder.isEmpty() || !m_session.isOpen() || !m_session.isUpdatable())
        return {};
    QString id;
    tarnwick::attempt(
        m_prompts, [&] { id = m_log.begin(u"upload"_s, report.path, markOf(m_session.database(), report)); },
        messages::kCouldNotLog);
    return id;
}

void UploadRun::endLog(const QString &id, bool isCompleted)
{
    const FileOutcome &outcome = m_outcomes.last();
    using State = brannock::ReportLog::Entry::State;
    brannock::ReportLog::Entry entry;
    entry.id = id;
    entry.state = isCompleted ? State::Stored : State::NotStored;
    entry.entries = outcome.entries;
    entry.stored = outcome.stored;
    entry.skipped = outcome.skipped;
    entry.problems = int(outcome.problems.size());
    tarnwick::attempt(
        m_prompts, [&] { m_log.end(entry); }, messages::kCouldNotLog);
}

std::optional<bool> wasUploaded(dao::Database &database, const brannock::ReportLog::Entry &entry)
{
    const QJsonObject &mark = entry.mark;
    if (!mark.contains(u"after"_s))
        return std::nullopt;
    const auto text = [&](const QString &name) { return mark.value(name).toString(); };
    const QString sql =
        db::sqlText(u"SELECT COUNT(*)\nFROM report\nWHERE recd_num > %d\nAND site_code = '%S'\nAND comp = '%S'\n"
                    u"AND oper_type = '%S'\nAND outage = '%S'\nAND sec = %d\nAND cal_num = %d\n",
                    mark.value(u"after"_s).toInt(), text(u"site"_s), text(u"comp"_s), text(u"type"_s),
                    text(u"outage"_s), mark.value(u"sec"_s).toInt(), mark.value(u"cal"_s).toInt());
    return db::fieldAs<qint32>(db::firstValue(database, sql)) > 0;
}

QString loggedState(const brannock::ReportLog::Entry &entry, dao::Database *database)
{
    QString state = brannock::stateName(entry.state);
    if (!database || entry.state != brannock::ReportLog::Entry::State::Interrupted)
        return state;
    if (const auto isStored = wasUploaded(*database, entry))
        state += *isStored ? u", stored"_s : u", not stored"_s;
    return state;
}

} // namespace results
