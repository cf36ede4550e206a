#include "HistoryFetch.h"

#include "Messages.h"

#include <array>
#include <cmath>
#include <dao/ProgressScope.h>
#include <db/FieldAccess.h>

namespace results {

using namespace Qt::StringLiterals;
using dao::Value;

namespace {

const QString kHistorySql = u"SELECT *\nFROM report\n"
                            u"ORDER BY sec, row, col, outage DESC, defect, volts DESC, pcnt DESC, phase DESC"_s;
const QString kOutagesSql = u"SELECT DISTINCT outage\nFROM report\nORDER BY outage"_s;
const QString kDefectsSql = u"SELECT DISTINCT COUNT(*), defect\nFROM report\nGROUP BY defect\nORDER BY defect"_s;

constexpr qint64 kRecordsBetweenReports = 1000;

/// A number that was stored in single precision as the decimal number it was meant to be: 0.7, not 0.69999998. So a
/// value passes a threshold that looks equal.
double decimalOf(const Value &value)
{
    const double number = db::fieldAs<double>(value);
    if (value.type() != Value::Type::Float)
        return number;
    constexpr double scale = 1e4;
    const double rounded = std::round(number * scale) / scale;
    return float(rounded) == float(number) ? rounded : number;
}

/// Reads the rows of 'report'. The columns are looked up once, by name.
class RowReader
{
public:
    RowReader(const dao::Recordset &report, HistoryRows &rows)
        : m_report(report)
        , m_rows(rows)
    {
    }

    HistoryRow read();

private:
    int at(const char16_t *name) const { return db::requireField(m_report, QString::fromUtf16(name)); }
    template <typename T>
    T get(int column) const
    {
        return db::fieldAs<T>(m_report.value(column));
    }
    quint32 text(int column) { return m_rows.texts.add(m_report.value(column).text()); }

    const dao::Recordset &m_report;
    HistoryRows &m_rows;
    int m_chan = at(u"chan"), m_defect = at(u"defect"), m_outage = at(u"outage");
    int m_begTest = at(u"beg_test"), m_endTest = at(u"end_test"), m_probeModel = at(u"probe_model");
    int m_analystId = at(u"analyst_id"), m_operId = at(u"oper_id");
    int m_locLand = at(u"loc_land"), m_fromLand = at(u"from_land"), m_toLand = at(u"to_land");
    int m_sec = at(u"sec"), m_row = at(u"row"), m_col = at(u"col"), m_volts = at(u"volts"), m_phase = at(u"phase");
    int m_pcnt = at(u"pcnt"), m_calNum = at(u"cal_num"), m_leg = at(u"leg"), m_probeSize = at(u"probe_size");
    int m_locOff = at(u"loc_off"), m_locPnt = at(u"loc_pnt"), m_locDist = at(u"loc_dist");
    int m_fromOff = at(u"from_off"), m_fromPnt = at(u"from_pnt"), m_toOff = at(u"to_off"), m_toPnt = at(u"to_pnt");
    int m_entryTime = at(u"entry_time");
    double m_lastTime = 0; ///< as the engine has it; consecutive rows often share their time
    qint64 m_lastSeconds = HistoryRow::kNoTime;
};

HistoryRow RowReader::read()
{
    HistoryRow row;
    row.sec = get<qint16>(m_sec);
    row.row = get<qint16>(m_row);
    row.col = get<qint16>(m_col);
    row.channel = text(m_chan);
    const Value volts = m_report.value(m_volts);
    const Value phase = m_report.value(m_phase);
    const Value percent = m_report.value(m_pcnt);
    row.volts = decimalOf(volts);
    row.phase = db::fieldAs<double>(phase);
    row.percent = db::fieldAs<qint16>(percent);
    row.hasVolts = !volts.hasNoValue();
    row.hasPhase = !phase.hasNoValue();
    row.hasPercent = !percent.hasNoValue();
    row.defect = text(m_defect);
    row.calNumber = quint16(get<qint16>(m_calNum));
    row.leg = get<qint16>(m_leg);
    row.beginTest = text(m_begTest);
    row.endTest = text(m_endTest);
    row.probeSize = get<qint16>(m_probeSize);
    row.probeModel = text(m_probeModel);
    row.analystId = text(m_analystId);
    row.operatorId = text(m_operId);
    row.outage = text(m_outage);
    row.locLand = text(m_fromLand);
    if (row.locLand != 0) {
        row.locOffset = get<float>(m_fromOff);
        row.locPoint = get<qint32>(m_fromPnt);
        row.toLand = text(m_toLand);
        row.toOffset = get<float>(m_toOff);
        row.toPoint = get<qint32>(m_toPnt);
    } else {
        row.locLand = text(m_locLand);
        row.locOffset = get<float>(m_locOff);
        row.locPoint = get<qint32>(m_locPnt);
        row.locDist = get<float>(m_locDist);
    }
    const Value time = m_report.value(m_entryTime);
    if (!time.hasNoValue()) {
        if (m_lastSeconds == HistoryRow::kNoTime || time.real() != m_lastTime) {
            m_lastTime = time.real();
            m_lastSeconds = db::fieldAs<tarnwick::JDateTime>(time).seconds();
        }
        row.entryTime = m_lastSeconds;
    }
    return row;
}

bool isSame(const QString &left, const QString &right)
{
    return left.compare(right, Qt::CaseInsensitive) == 0;
}

} // namespace

void fetchHistoryRows(db::DatabaseSession &session, HistoryRows &rows, tarnwick::Progress *progress)
{
    const dao::ProgressScope stoppable(session.database(), progress);
    dao::Recordset report(session.database());
    report.open(dao::Recordset::Type::Snapshot, kHistorySql);
    RowReader reader(report, rows);
    tarnwick::ProgressLoop loop(progress, 0, u"Fetching history"_s);
    qint64 processed = 0;
    for (; !report.isEof(); report.moveNext()) {
        rows.append(reader.read());
        loop.tick(++processed);
        if (processed % kRecordsBetweenReports == 0)
            session.prompts().status(messages::kProcessed, processed);
    }
    rows.number();
}

QList<OutageChoice> fetchOutages(dao::Database &database, const QList<OutageChoice> &former)
{
    QList<OutageChoice> outages;
    dao::Recordset names(database);
    for (names.open(dao::Recordset::Type::Snapshot, kOutagesSql); !names.isEof(); names.moveNext()) {
        OutageChoice choice;
        choice.outage = db::getField<QString>(names, 0);
        for (const OutageChoice &known : former) {
            if (isSame(known.outage, choice.outage))
                choice.keep = known.keep;
        }
        outages.append(choice);
    }
    return outages;
}

QList<DefectChoice> fetchDefects(dao::Database &database, const QList<DefectChoice> &former)
{
    QList<DefectChoice> defects;
    dao::Recordset codes(database);
    for (codes.open(dao::Recordset::Type::Snapshot, kDefectsSql); !codes.isEof(); codes.moveNext()) {
        DefectChoice choice;
        choice.code = db::getField<QString>(codes, 1);
        for (const DefectChoice &known : former) {
            if (isSame(known.code, choice.code))
                choice = known;
        }
        choice.count = db::getField<qint32>(codes, 0);
        choice.code = db::getField<QString>(codes, 1);
        defects.append(choice);
    }
    return defects;
}

} // namespace results
