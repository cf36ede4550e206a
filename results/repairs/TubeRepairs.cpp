#include "TubeRepairs.h"

#include <dao/ProgressScope.h>
#include <dao/Recordset.h>
#include <db/FieldAccess.h>
#include <db/SqlText.h>
#include <tarnwick/base/Error.h>
#include <tarnwick/base/Progress.h>
#include <tarnwick/Format.h>
#include <tarnwick/JDateTime.h>

namespace results {

namespace {

/// Gives up as soon as another program has the database locked.
class NoWaiting : public tarnwick::Progress
{
public:
    bool cancelled() override { return m_waits; }
    void waiting() override { m_waits = true; }

private:
    bool m_waits = false;
};

QString lineOf(const dao::Recordset &row)
{
    enum { Type, Outage, Scheduled, Completed };
    const auto completed = db::getField<tarnwick::JDateTime>(row, int(Completed));
    QStringList parts{db::getField<QString>(row, int(Type)), db::getField<QString>(row, int(Outage))};
    parts.removeAll(QString());
    if (completed.isNull())
        parts.append(
            tarnwick::format(u"scheduled %{%m/%d/%Y}t", db::getField<tarnwick::JDateTime>(row, int(Scheduled))));
    else
        parts.append(tarnwick::format(u"completed %{%m/%d/%Y}t", completed));
    return parts.join(QStringLiteral(", "));
}

} // namespace

QStringList repairLines(db::DatabaseSession &session, const ellery::TubeAddress &tube, int most)
{
    QStringList lines;
    if (!session.isOpen())
        return lines;
    NoWaiting noWaiting;
    try {
        const dao::ProgressScope scope(session.database(), &noWaiting);
        dao::Recordset rows(session.database());
        const QString sql = db::sqlText(u"SELECT repair_type, outage, date_scheduled, date_completed FROM repairs\n"
                                        u"WHERE row = %d AND col = %d AND sec = %d ORDER BY date_scheduled",
                                        tube.row, tube.col, tube.sec);
        for (rows.open(dao::Recordset::Type::Snapshot, sql); !rows.isEof(); rows.moveNext())
            lines.append(lineOf(rows));
    } catch (const tarnwick::Cancelled &) {
        return {};
    } catch (const tarnwick::Error &) {
        return {}; // a tip has no place for errors; the dialogs tell them
    }
    if (lines.size() > most) {
        const qsizetype more = lines.size() - most + 1;
        lines.resize(most - 1);
        lines.append(tarnwick::format(u"and %D more repairs", more));
    }
    return lines;
}

} // namespace results
