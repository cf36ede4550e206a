#include "PlanStorage.h"

#include "Messages.h"
#include "NamedRows.h"

#include <dao/ProgressScope.h>
#include <db/SqlText.h>
#include <QElapsedTimer>
#include <tarnwick/Failures.h>

namespace plans {

using namespace Qt::StringLiterals;
using brannock::InspPlan;
using brannock::PlanEntry;
using tarnwick::Answer;
using tarnwick::Buttons;
using tarnwick::Outcome;

namespace {

tarnwick::Error noneNamed()
{
    return tarnwick::Error(u"There is no plan of this name in the database."_s);
}

const QStringList kFields{u"row"_s, u"col"_s, u"sec"_s, u"entry_num"_s, u"is_done"_s};

void addRows(db::DatabaseSession &session, tarnwick::Progress *progress, const InspPlan &plan, const QString &name)
{
    const auto describe = [&](dao::Recordset &row) {
        db::setField(row, u"probe_model"_s, plan.probe);
        db::setField(row, u"beg_test"_s, plan.beginTest);
        db::setField(row, u"end_test"_s, plan.endTest);
        db::setField(row, u"create_time"_s, plan.createTime.isNull() ? tarnwick::JDateTime::now() : plan.createTime);
        db::setField(row, u"desc"_s, plan.description);
    };
    NamedUpload{.session = session,
                .progress = progress,
                .tables = kPlanTables,
                .name = name,
                .describe = describe,
                .fields = kFields,
                .count = plan.entries.size(),
                .entry =
                    [&](qsizetype index, dao::Value *values) {
                        const PlanEntry &entry = plan.entries[index];
                        *values++ = db::toValue(entry.row);
                        *values++ = db::toValue(entry.col);
                        *values++ = db::toValue(entry.sec);
                        *values++ = db::toValue(entry.entryNum);
                        *values++ = db::toValue(entry.acquired >= 1);
                    }}
        .run();
}

void readHead(const dao::Recordset &row, InspPlan &plan)
{
    plan.probe = db::getField<QString>(row, u"probe_model"_s);
    plan.beginTest = db::getField<QString>(row, u"beg_test"_s);
    plan.endTest = db::getField<QString>(row, u"end_test"_s);
    plan.createTime = db::getField<tarnwick::JDateTime>(row, u"create_time"_s);
    plan.description = db::getField<QString>(row, u"desc"_s);
}

InspPlan readPlan(dao::Database &database, const QString &name)
{
    InspPlan plan;
    plan.name = name;
    bool isFound = false;
    {
        dao::Recordset rows(database);
        rows.open(dao::Recordset::Type::Snapshot, db::sqlText(u"SELECT * FROM plans WHERE name = '%S'", name));
        for (; !rows.isEof(); rows.moveNext()) {
            readHead(rows, plan);
            isFound = true;
        }
    }
    if (!isFound)
        throw noneNamed();
    readEntries(database, kPlanTables, name, kFields, [&](const QList<dao::Value> &cells) {
        PlanEntry entry;
        entry.row = db::fieldAs<qint16>(cells[0]);
        entry.col = db::fieldAs<qint16>(cells[1]);
        entry.sec = db::fieldAs<qint16>(cells[2]);
        entry.entryNum = db::fieldAs<qint32>(cells[3]);
        entry.acquired = db::fieldAs<bool>(cells[4]) ? 1 : 0;
        plan.entries.append(entry);
    });
    return plan;
}

} // namespace

std::optional<QList<PlanStorage::Info>> PlanStorage::list()
{
    if (!db::checkConnected(m_session))
        return std::nullopt;
    QList<Info> plans;
    const auto read = [&] {
        dao::Recordset rows(m_session.database());
        rows.open(dao::Recordset::Type::Snapshot,
                  u"SELECT name, probe_model, beg_test, end_test, create_time, [desc], "
                  u"(SELECT COUNT(*) FROM plan_entry WHERE plan_entry.name = plans.name) AS entries, "
                  u"(SELECT COUNT(*) FROM plan_entry WHERE plan_entry.name = plans.name AND is_done) AS acquired "
                  u"FROM plans ORDER BY name"_s);
        for (; !rows.isEof(); rows.moveNext()) {
            Info &info = plans.emplaceBack();
            readHead(rows, info.plan);
            info.plan.name = db::getField<QString>(rows, u"name"_s);
            info.count = db::getField<qint32>(rows, u"entries"_s);
            info.acquired = db::getField<qint32>(rows, u"acquired"_s);
        }
    };
    if (!tarnwick::attempt(m_session.prompts(), read, messages::kListPlans))
        return std::nullopt;
    return plans;
}

std::optional<InspPlan> PlanStorage::fetch(const QString &name)
{
    if (name.isEmpty() || !db::checkConnected(m_session))
        return std::nullopt;
    InspPlan plan;
    const dao::ProgressScope stoppable(m_session.database(), m_progress);
    const auto read = [&] { plan = readPlan(m_session.database(), name); };
    const Outcome outcome = tarnwick::attemptCancellable(m_session.prompts(), read, messages::kFetchPlan, name);
    if (outcome == Outcome::Cancelled)
        m_session.prompts().status(messages::kFetchCancelled);
    if (outcome != Outcome::Done)
        return std::nullopt;
    m_session.prompts().status(messages::kPlanFetched, name);
    return plan;
}

bool PlanStorage::mayStore(const InspPlan &plan, const QString &name)
{
    tarnwick::UserPrompts &prompts = m_session.prompts();
    qint64 existing = 0;
    const auto look = [&] { existing = countNamed(m_session.database(), kPlanTables, name); };
    if (!tarnwick::attempt(prompts, look, messages::kCheckPlanExists))
        return false;
    if (existing == 0)
        return true;
    const auto tryOut = [&] {
        tryNamed(m_session, [&] {
            deleteNamed(m_session, kPlanTables, plan.name);
            deleteNamed(m_session, kPlanTables, name);
            addRows(m_session, m_progress, plan, name);
        });
    };
    if (!isDone(tarnwick::attemptCancellable(prompts, tryOut, messages::kUploadPlan, name)))
        return false;
    if (prompts.question(Buttons::OkCancel, messages::kPlanExists, name) != Answer::Ok) {
        prompts.status(messages::kUploadPlanCancelled);
        return false;
    }
    // The plan of the present name, not that of the new one: users of the suite rely on it.
    const auto remove = [&] { deleteNamed(m_session, kPlanTables, plan.name); };
    m_hasDeleted = tarnwick::attempt(prompts, remove, messages::kDeletePlan, plan.name);
    return m_hasDeleted;
}

bool PlanStorage::isDone(tarnwick::Outcome outcome) const
{
    if (outcome == Outcome::Cancelled)
        m_session.prompts().status(messages::kUploadPlanCancelled);
    return outcome == Outcome::Done;
}

bool PlanStorage::upload(const InspPlan &plan, const QString &name)
{
    if (name.isEmpty() || !db::checkConnected(m_session) || !mayStore(plan, name))
        return false;
    tarnwick::UserPrompts &prompts = m_session.prompts();
    QElapsedTimer clock;
    clock.start();
    const auto store = [&] { addRows(m_session, m_progress, plan, name); };
    if (!isDone(tarnwick::attemptCancellable(prompts, store, messages::kUploadPlan, name)))
        return false;
    prompts.status(messages::kPlanUploaded, name, double(clock.elapsed()) / 1000);
    return true;
}

bool PlanStorage::remove(const QString &name, Asks asks)
{
    tarnwick::UserPrompts &prompts = m_session.prompts();
    if (!db::checkConnected(m_session) ||
        (asks == Asks::First && prompts.question(Buttons::YesNo, messages::kAskDeletePlan) != Answer::Yes))
        return false;
    const auto remove = [&] {
        if (!deleteNamed(m_session, kPlanTables, name))
            throw noneNamed();
    };
    if (!tarnwick::attempt(prompts, remove, messages::kDeletePlan, name))
        return false;
    prompts.status(messages::kPlanDeleted);
    return true;
}

} // namespace plans
