#include "ReportUpload.h"

#include "Messages.h"

#include <dao/ProgressScope.h>
#include <dao/values/Errors.h>
#include <db/Errors.h>
#include <db/Messages.h>
#include <db/ReportRows.h>
#include <db/SessionTransaction.h>
#include <db/SqlText.h>
#include <db/TableGrowth.h>
#include <fenwright/TableScanner.h>
#include <QFileInfo>
#include <QScopeGuard>

namespace results {

using namespace Qt::StringLiterals;
using brannock::Report;
using brannock::ReportEntry;
using tarnwick::Answer;
using tarnwick::Buttons;

namespace {

bool isUploaded(const ReportEntry &entry)
{
    return !entry.isHeader() && !entry.isStd();
}

QString text(const tarnwick::Message &message)
{
    return QString::fromUtf16(message.text);
}

} // namespace

ReportUpload::ReportUpload(db::DatabaseSession &session, const brannock::Project &project, tarnwick::Progress *progress,
                           tarnwick::UserPrompts *prompts)
    : m_session(&session)
    , m_project(&project)
    , m_progress(progress)
    , m_prompts(prompts ? *prompts : session.prompts())
{
}

ReportUpload::~ReportUpload() = default;

UploadSummary ReportUpload::upload(const Report &report)
{
    m_summary = {};
    m_skipUnknownTubes = false;
    m_firstCal = true;
    m_siteAsked = false;
    m_cal.reset();
    if (!db::checkConnected(*m_session) || !checkWritable() || !checkTubes(report))
        return m_summary;
    if (!report.isCounted)
        m_prompts.showInformation(fenwright::uncountedRemark({QFileInfo(report.path).fileName()}));
    m_oneCal = isOneCal(report);

    // The upload can be cancelled while it waits for other programs, at its begin and at its commit.
    const dao::ProgressScope stoppable(m_session->database(), m_progress);
    db::SessionTransaction transaction(*m_session);
    // If an unexpected exception leaves this function, the record set is closed before the transaction is rolled back.
    const auto closing = qScopeGuard([this] { m_writer.reset(); });
    try {
        if (!transaction.begin())
            return m_summary;
        const Next outcome = walk(report);
        m_writer.reset();
        m_summary.completed = outcome == Next::GoOn && commit(transaction);
    } catch (const tarnwick::Cancelled &) {
        m_prompts.status(messages::kUploadCancelled);
    }
    if (!m_summary.completed)
        undo(transaction);
    return m_summary;
}

// Checked once for the file, so that it is not reported for every entry.
bool ReportUpload::checkWritable() const
{
    if (m_session->isUpdatable())
        return true;
    const dao::DaoException readOnly(dao::error::ReadOnly, u"DAO.Workspace"_s, dao::errorText(dao::error::ReadOnly));
    db::showDaoError(m_prompts, readOnly, db::messages::kBeginTransaction);
    return false;
}

bool ReportUpload::checkTubes(const Report &report)
{
    m_tubes.clear();
    const ellery::SteamGen &steamGen = m_project->steamGen;
    if (steamGen.numTube() == 0)
        return true;
    m_tubes.reserve(size_t(report.numEntry()));
    for (const ReportEntry &entry : report.entries)
        m_tubes.push_back(isUploaded(entry) ? steamGen.findTube(entry.address()) : -1);

    int count = 0;
    const QString list = unknownTubeList(report, count);
    if (count == 0)
        return true;
    switch (m_prompts.question(Buttons::YesNoCancel, messages::kUnknownTubes, count, steamGen.name, list)) {
    case Answer::Yes:
        return true;
    case Answer::No:
        m_skipUnknownTubes = true;
        return true;
    default:
        m_prompts.status(messages::kUnknownTubesCancelled);
        return false;
    }
}

QString ReportUpload::unknownTubeList(const Report &report, int &count) const
{
    constexpr int kListed = 19;
    QString list;
    count = 0;
    for (int i = 0; i < report.numEntry(); ++i) {
        const ReportEntry &entry = report[i];
        if (!isUploaded(entry) || m_tubes[size_t(i)] >= 0)
            continue;
        ++count;
        if (count <= kListed)
            list += tarnwick::format(messages::kUnknownTubeLine.text, i + 1, entry.row, entry.col, entry.sec);
        else if (count == kListed + 1)
            list += text(messages::kMoreUnknownTubes);
    }
    return list;
}

bool ReportUpload::isOneCal(const Report &report) const
{
    std::optional<Cal> cal;
    for (const ReportEntry &entry : report.entries) {
        if (!isUploaded(entry))
            continue;
        if (!cal)
            cal = Cal::of(entry);
        else if (!belongsTo(entry, *cal))
            return false;
    }
    return true;
}

ReportUpload::Next ReportUpload::walk(const Report &report)
{
    tarnwick::ProgressLoop progress(m_progress, report.numEntry(), text(messages::kUploading));
    for (int i = 0; i < report.numEntry(); ++i) {
        progress.tick(i);
        if (!isUploaded(report[i])) {
            ++m_summary.headers;
            continue;
        }
        ++m_summary.read;
        m_position = i + 1;
        const int tube = m_tubes.empty() ? -1 : m_tubes[size_t(i)];
        if (tube < 0 && m_skipUnknownTubes) {
            ++m_summary.skipped;
            continue;
        }
        ReportEntry entry = report[i];
        entry.tubeIndex = tube;
        if (!(m_cal && belongsTo(entry, *m_cal)) && enterCal(entry) == Next::Stop)
            return Next::Stop;
        setLocationDistance(entry);
        if (store(entry, i + 1) == Next::Stop)
            return Next::Stop;
    }
    return Next::GoOn;
}

// If a file contains several cals, only the first is looked up in the database. This is intended.
ReportUpload::Next ReportUpload::enterCal(const ReportEntry &entry)
{
    const Cal cal = Cal::of(entry);
    if (!cal.isValid()) {
        m_prompts.information(messages::kFillInCal);
        return Next::Stop;
    }
    // If a text contained a quote, the statements that look for the cal could never find its rows again.
    const tarnwick::FormatArg texts[] = {cal.siteCode, cal.comp, cal.operType, cal.outage};
    if (!tarnwick::attempt(
            m_prompts, [&] { db::refuseQuotes(texts); }, messages::kCheckCal))
        return Next::Stop;
    m_cal = cal;
    if ((m_firstCal || m_oneCal) && testDuplicate(cal) == Next::Stop)
        return Next::Stop;
    m_firstCal = false;
    return compareSite(entry);
}

ReportUpload::Next ReportUpload::testDuplicate(const Cal &cal)
{
    Next next = Next::Stop;
    const auto look = [&] {
        const qint64 rows = countCalRows(m_session->database(), cal);
        next = rows == 0 ? Next::GoOn : askToReplace(cal, rows);
    };
    return tarnwick::attempt(m_prompts, look, messages::kCheckCal) ? next : Next::Stop;
}

ReportUpload::Next ReportUpload::askToReplace(const Cal &cal, qint64 rows)
{
    note(u"cal_num"_s, u"duplicate cal"_s,
         u"The database already has %1 entries of cal %2 (%3, outage %4)."_s.arg(rows)
             .arg(cal.calNum)
             .arg(cal.operType, cal.outage));
    const QString section = m_project->steamGen.tubeLabel(ellery::Axis::Sec, cal.sec);
    const Answer answer = m_prompts.question(Buttons::YesNoCancel, messages::kCalExists, rows, cal.calNum, cal.operType,
                                             cal.siteCode, cal.comp, cal.outage, section);
    if (answer == Answer::No)
        return Next::GoOn;
    if (answer != Answer::Yes || m_prompts.question(Buttons::YesNo, messages::kAreYouSure) != Answer::Yes) {
        m_prompts.status(messages::kUploadCancelled);
        return Next::Stop;
    }
    m_summary.replaced = deleteCalRows(m_session->database(), cal);
    m_prompts.status(messages::kOldCalDeleted);
    return Next::GoOn;
}

ReportUpload::Next ReportUpload::compareSite(const ReportEntry &entry)
{
    const fenwright::SiteInfo &site = m_project->site;
    const bool agrees = entry.site.siteCode == site.siteCode && entry.site.compCode == site.compCode;
    if (agrees || m_siteAsked)
        return Next::GoOn;
    note(u"site_code"_s, u"other site"_s,
         u"Site %1 Comp %2 does not agree with the project."_s.arg(entry.site.siteCode, entry.site.compCode));
    if (m_prompts.question(Buttons::YesNo, messages::kOtherSite, entry.site.siteCode, entry.site.compCode) !=
        Answer::Yes)
        return Next::Stop;
    m_siteAsked = true;
    return Next::GoOn;
}

void ReportUpload::note(const QString &field, const QString &kind, const QString &text)
{
    m_summary.problems.append({0, m_position, field, kind, text});
}

void ReportUpload::setLocationDistance(ReportEntry &entry) const
{
    if (entry.location.dist > 0 || entry.tubeIndex < 0)
        return;
    const ellery::SteamGen &steamGen = m_project->steamGen;
    const ellery::LandmarkSet *set = steamGen.getLandmarkSet(entry.tubeIndex);
    const int found = set ? set->find(entry.location.landmark) : -1;
    if (found < 0)
        return;
    ellery::Landmark landmark = (*set)[found];
    landmark.setDist(steamGen[entry.tubeIndex], set->bendLengthPerRow);
    entry.location.dist = landmark.pos + (landmark.forward ? entry.location.offset : -entry.location.offset);
}

// A failure of the whole file: every further entry would fail too, so the user is not asked.
static bool meansTheFile(int number)
{
    namespace error = dao::error;
    return number == error::ReadOnly || number == error::FileLocked || number == error::FileInUse ||
           number == error::DiskFull || number == error::DiskError || number == error::DatabaseDamaged;
}

ReportUpload::Next ReportUpload::store(ReportEntry &entry, int position)
{
    try {
        if (!m_writer)
            m_writer = std::make_unique<db::ReportWriter>(m_session->database());
        m_writer->add(entry);
        ++m_summary.stored;
        return Next::GoOn;
    } catch (const dao::DaoException &exception) {
        db::showDaoError(m_prompts, exception, db::messages::kUploadEntry);
        note({}, u"not stored"_s, exception.text());
        if (meansTheFile(exception.number()))
            return Next::Stop;
    }
    ++m_summary.failed;
    m_summary.failedEntries.append(position);
    return m_prompts.question(Buttons::YesNo, messages::kContinueAfterFailure, position) == Answer::Yes ? Next::GoOn
                                                                                                        : Next::Stop;
}

bool ReportUpload::commit(db::SessionTransaction &transaction)
{
    db::noteTableGrowth(m_session->database(), u"report"_s, m_summary.stored);
    if (!transaction.commit())
        return false;
    m_prompts.status(messages::kUploaded, m_summary.counted());
    return true;
}

void ReportUpload::undo(db::SessionTransaction &transaction)
{
    m_writer.reset();
    transaction.rollback();
    m_prompts.status(messages::kTerminated);
}

} // namespace results
