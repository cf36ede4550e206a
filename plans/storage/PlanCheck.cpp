#include "PlanCheck.h"

#include "Messages.h"
#include "TubeGroups.h"

#include <dao/ProgressScope.h>
#include <db/FieldAccess.h>
#include <db/SqlText.h>
#include <QElapsedTimer>
#include <tarnwick/Failures.h>

namespace plans {

using namespace Qt::StringLiterals;
using brannock::InspPlan;
using brannock::PlanEntry;
using tarnwick::Outcome;

namespace {

constexpr int kPercents = 100;

QString checkSql(const QString &outage, const QStringList &incompleteCodes)
{
    QString sql = db::sqlText(u"SELECT COUNT(*)\nFROM report\nWHERE outage = '%S'\nAND row=[row_num]\n"
                              u"AND col=[col_num]\nAND sec=[sec_num]\n",
                              outage);
    QStringList codes;
    for (const QString &code : incompleteCodes)
        codes.append(db::sqlText(u"'%S'", code));
    if (!codes.isEmpty())
        sql += tarnwick::format(u"AND (defect IS NULL OR defect NOT IN (%S))", codes.join(u','));
    return sql;
}

} // namespace

void markAnalyzed(db::DatabaseSession &session, InspPlan &plan, const QString &outage,
                  const QStringList &incompleteCodes, tarnwick::Progress *progress)
{
    const dao::ProgressScope stoppable(session.database(), progress);
    dao::QueryDef query(session.database(), checkSql(outage, incompleteCodes));
    query.setParameter(u"row_num"_s, dao::Value::fromShort(0));
    query.setParameter(u"col_num"_s, dao::Value::fromShort(0));
    query.setParameter(u"sec_num"_s, dao::Value::fromShort(0));
    // Parameters are numbered in the order of the text.
    enum Parameter { Row, Col, Sec };

    const int total = int(plan.entries.size());
    const int step = std::max(1, total / kPercents);
    QList<quint8> analyzed(total);
    dao::Recordset results(session.database());
    tarnwick::ProgressLoop loop(progress, total, QString::fromUtf16(messages::kCheckingPlan.text));
    for (int i = 0; i < total; ++i) {
        loop.tick(i);
        if (i % step == 0)
            session.prompts().status(messages::kPercent, int(qint64(i) * kPercents / total));
        const PlanEntry &entry = plan.entries[i];
        const auto set = [&](auto &object) {
            object.setParameter(Row, dao::Value::fromShort(entry.row));
            object.setParameter(Col, dao::Value::fromShort(entry.col));
            object.setParameter(Sec, dao::Value::fromShort(entry.sec));
        };
        if (results.isOpen()) {
            set(results);
            results.requery();
        } else {
            set(query);
            results.open(dao::Recordset::Type::Snapshot, query);
        }
        analyzed[i] = results.value(0).integer() > 0 ? 1 : 0;
    }
    for (int i = 0; i < total; ++i)
        plan.entries[i].analyzed = analyzed[i];
}

bool checkPlan(db::DatabaseSession &session, InspPlan &plan, const QString &outage, const QStringList &incompleteCodes,
               tarnwick::Progress *progress)
{
    if (plan.entries.isEmpty() || !db::checkConnected(session))
        return false;
    QElapsedTimer clock;
    clock.start();
    const auto check = [&] { markAnalyzed(session, plan, outage, incompleteCodes, progress); };
    const Outcome outcome = tarnwick::attemptCancellable(session.prompts(), check, messages::kCheckPlan);
    if (outcome == Outcome::Cancelled)
        session.prompts().status(messages::kCheckPlanCancelled);
    if (outcome == Outcome::Done)
        session.prompts().status(messages::kPlanChecked, double(clock.elapsed()) / 1000);
    return outcome == Outcome::Done;
}

QList<OutageCount> countByOutage(db::DatabaseSession &session, const InspPlan &plan, tarnwick::Progress *progress)
{
    const dao::ProgressScope stoppable(session.database(), progress);
    const TubeGroup tubes(addressesOf(plan.entries));
    QList<OutageCount> counts;
    dao::Recordset rows(session.database());
    rows.open(dao::Recordset::Type::Snapshot,
              u"SELECT outage, sec, row, col FROM report GROUP BY outage, sec, row, col ORDER BY outage"_s);
    tarnwick::ProgressLoop loop(progress, 0, QString::fromUtf16(messages::kCheckingPlan.text));
    for (qint64 read = 0; !rows.isEof(); rows.moveNext()) {
        loop.tick(++read);
        const QString outage = db::getField<QString>(rows, 0);
        if (counts.isEmpty() || counts.last().outage != outage)
            counts.append({outage, 0});
        if (tubes.contains(
                {db::getField<qint16>(rows, 1), db::getField<qint16>(rows, 2), db::getField<qint16>(rows, 3)}))
            ++counts.last().tubes;
    }
    return counts;
}

} // namespace plans
