#include "CalList.h"

#include "Messages.h"

#include <dao/ProgressScope.h>
#include <db/FieldAccess.h>
#include <tarnwick/Failures.h>

namespace results {

using namespace Qt::StringLiterals;
using tarnwick::Answer;
using tarnwick::Buttons;

namespace {

const QString kCalsSql = u"SELECT COUNT(*), site_code, comp, outage, cal_num, oper_type, sec\nFROM report\n"
                         u"GROUP BY site_code, comp, outage, cal_num, oper_type, sec\n"
                         u"ORDER BY site_code, comp, outage, cal_num, oper_type, sec"_s;

const QString kDayCountsSql =
    u"SELECT COUNT(*), site_code, comp, outage, cal_num, oper_type, sec, analyst_id, DateValue(entry_time)\n"
    u"FROM report\n"
    u"GROUP BY site_code, comp, outage, cal_num, oper_type, sec, analyst_id, DateValue(entry_time)\n"
    u"ORDER BY analyst_id, DateValue(entry_time)"_s;

Cal calOf(const dao::Recordset &cals)
{
    return {db::getField<QString>(cals, u"site_code"_s), db::getField<QString>(cals, u"comp"_s),
            db::getField<QString>(cals, u"oper_type"_s), db::getField<QString>(cals, u"outage"_s),
            db::getField<qint32>(cals, u"sec"_s),        db::getField<qint32>(cals, u"cal_num"_s)};
}

} // namespace

QList<CalList::Row> readCals(dao::Database &database)
{
    QList<CalList::Row> rows;
    dao::Recordset cals(database);
    for (cals.open(dao::Recordset::Type::Snapshot, kCalsSql); !cals.isEof(); cals.moveNext()) {
        rows.append({calOf(cals), db::getField<qint32>(cals, 0)});
    }
    return rows;
}

bool CalList::open()
{
    if (!db::checkConnected(*m_session))
        return false;
    const dao::ProgressScope stoppable(m_session->database(), m_progress);
    try {
        if (!m_transaction.begin())
            return false;
        fill();
        return true;
    } catch (const tarnwick::Cancelled &) {
        m_transaction.rollback();
        m_session->prompts().status(messages::kCalListCancelled);
        return false;
    }
}

bool CalList::fill()
{
    const auto read = [this] {
        m_dayCounts.reset();
        m_rows = readCals(m_session->database());
        m_current = qMin(m_current, int(m_rows.size()) - 1);
    };
    return tarnwick::attempt(m_session->prompts(), read, messages::kUpdateCalList);
}

const QList<CalList::DayCount> &CalList::dayCounts()
{
    if (!m_dayCounts) {
        m_dayCounts.emplace();
        const auto read = [this] {
            constexpr int kDay = 8;
            dao::Recordset counts(m_session->database());
            for (counts.open(dao::Recordset::Type::Snapshot, kDayCountsSql); !counts.isEof(); counts.moveNext()) {
                const dao::Value day = counts.value(kDay);
                m_dayCounts->append({calOf(counts), db::getField<QString>(counts, u"analyst_id"_s),
                                     day.isNull() ? tarnwick::JDateTime() : db::fieldAs<tarnwick::JDateTime>(day),
                                     db::getField<qint32>(counts, 0)});
            }
        };
        tarnwick::attempt(m_session->prompts(), read, messages::kUpdateCalList);
    }
    return *m_dayCounts;
}

QString CalList::caption() const
{
    return tarnwick::format(messages::kCalsCaption.text, m_session->path());
}

void CalList::deleteCurrent()
{
    deleteCals({m_current});
}

void CalList::deleteCals(const QList<int> &rows)
{
    tarnwick::UserPrompts &prompts = m_session->prompts();
    const Answer answer = rows.size() > 1 ? prompts.question(Buttons::YesNo, messages::kDeleteCals, int(rows.size()))
                                          : prompts.question(Buttons::YesNo, messages::kDeleteCal);
    if (answer != Answer::Yes) {
        prompts.status(messages::kDeleteCalCancelled);
        return;
    }
    const auto isListed = [this](int row) { return row >= 0 && row < m_rows.size(); };
    if (rows.isEmpty() || !std::all_of(rows.begin(), rows.end(), isListed)) {
        prompts.information(messages::kSelectCal);
        return;
    }
    const auto remove = [&] {
        for (const int row : rows) {
            deleteCalRows(m_session->database(), m_rows[row].cal);
            ++m_deleted;
        }
    };
    const bool isDone = tarnwick::attempt(prompts, remove, messages::kCouldNotDeleteCal);
    if (fill() && isDone)
        prompts.status(messages::kCalDeleted);
}

void CalList::closeWithOk()
{
    end(true);
}

bool CalList::closeWithCancel()
{
    Answer answer = Answer::No;
    if (isChanged())
        answer = m_session->prompts().question(Buttons::YesNoCancel, messages::kSaveChanges);
    if (answer == Answer::Cancel)
        return false;
    end(answer == Answer::Yes);
    return true;
}

void CalList::end(bool commit)
{
    if (!m_transaction.isOpen())
        return;
    const dao::ProgressScope stoppable(m_session->database(), m_progress);
    try {
        if (commit && m_transaction.commit())
            return;
    } catch (const tarnwick::Cancelled &) {
        m_session->prompts().status(messages::kDeleteCalCancelled);
    }
    m_transaction.rollback();
}

QStringList CalList::columnTitles(const ellery::SteamGen &steamGen)
{
    QStringList titles{u"ENTRY#"_s, u"SITE CODE"_s, u"COMP"_s, u"OUTAGE"_s, u"CAL"_s, u"OPTYPE"_s};
    if (steamGen.hasSections())
        titles.append(steamGen.axisNames[int(ellery::Axis::Sec)]);
    titles.append(u"COUNT"_s);
    return titles;
}

QStringList CalList::cells(const Row &row, int index, const ellery::SteamGen &steamGen)
{
    QStringList cells{QString::number(index + 1),      row.cal.siteCode, row.cal.comp, row.cal.outage,
                      QString::number(row.cal.calNum), row.cal.operType};
    if (steamGen.hasSections())
        cells.append(steamGen.tubeLabel(ellery::Axis::Sec, row.cal.sec));
    cells.append(QString::number(row.count));
    return cells;
}

} // namespace results
