#include "PlainInserts.h"

namespace bench {

using brannock::ReportEntry;
using brannock::TubeLoc;

namespace {

class Row
{
public:
    explicit Row(sqlite3_stmt *statement)
        : m_statement(statement)
    {
    }

    void text(const QString &text)
    {
        const QByteArray utf8 = text.toUtf8();
        if (text.isEmpty())
            sqlite3_bind_null(m_statement, ++m_column);
        else
            sqlite3_bind_text(m_statement, ++m_column, utf8.constData(), int(utf8.size()), SQLITE_TRANSIENT);
    }
    void number(qint64 value) { sqlite3_bind_int64(m_statement, ++m_column, value); }
    void real(double value) { sqlite3_bind_double(m_statement, ++m_column, value); }
    void null() { sqlite3_bind_null(m_statement, ++m_column); }

private:
    sqlite3_stmt *m_statement;
    int m_column = 0;
};

constexpr const char *kInsert =
    "INSERT INTO report (sec, row, col, chan, meas_type, volts, phase, pcnt, defect, loc_land, loc_off, loc_pnt, "
    "beg_test, end_test, site_code, outage, comp, leg, cal_num, file_num, id, from_land, from_off, from_pnt, to_land, "
    "to_off, to_pnt, dig_volts, loc_dist, oper_type, analyst_id, oper_id, util1, util2, plan, probe_type, probe_model, "
    "probe_size, probe_sn, entry_time, file_name, comment) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, "
    "?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)";

void bindPlace(Row &row, const TubeLoc &place, bool wanted)
{
    if (!wanted || !place.isValid()) {
        row.null();
        row.null();
        row.null();
        return;
    }
    row.text(place.landmark);
    row.real(place.offset);
    row.number(place.point);
}

void bindEntry(Row row, const ReportEntry &entry)
{
    const bool full = !entry.isNdd();
    const bool measured = full && entry.meas.isValid();
    row.number(entry.sec);
    row.number(entry.row);
    row.number(entry.col);
    row.text(full ? entry.channel : QString());
    row.text(measured ? entry.meas.type : QString());
    measured ? row.real(double(float(entry.meas.volts))) : row.null();
    measured ? row.number(qRound(entry.meas.phase)) : row.null();
    measured &&entry.meas.percent > 0 ? row.number(entry.meas.percent) : row.null();
    row.text(entry.defect);
    bindPlace(row, entry.location, full);
    row.text(entry.beginTest);
    row.text(entry.endTest);
    row.text(entry.site.siteCode);
    row.text(entry.outage);
    row.text(entry.site.compCode);
    row.number(entry.leg);
    row.number(entry.calNumber);
    row.number(entry.fileNumber);
    row.number(entry.id);
    bindPlace(row, entry.from, full);
    bindPlace(row, entry.to, full);
    measured ? row.number(entry.meas.digVolts) : row.null();
    full &&entry.location.isValid() ? row.real(entry.location.dist) : row.null();
    row.text(entry.operType);
    row.text(entry.analystId);
    row.text(entry.operatorId);
    row.text(entry.util1);
    row.text(entry.util2);
    row.text(entry.plan);
    row.text(entry.probe.type);
    row.text(entry.probe.model);
    row.number(entry.probe.size);
    row.text(entry.probe.serialNumber);
    row.real(entry.entryTime.toOleDate());
    row.text(entry.fileName);
    row.text(entry.comment);
}

} // namespace

PlainInserts::PlainInserts(const QString &databasePath)
    : m_database(databasePath)
{
    m_database.run("BEGIN IMMEDIATE");
    m_insert = std::make_unique<PlainStatement>(m_database, kInsert);
}

void PlainInserts::add(const brannock::ReportEntry &entry)
{
    bindEntry(Row(m_insert->handle()), entry);
    m_insert->step();
    m_insert->reset();
}

void PlainInserts::commit()
{
    m_insert.reset();
    m_database.run("COMMIT");
}

void insertPlainly(const QString &databasePath, const brannock::Report &report)
{
    PlainInserts inserts(databasePath);
    for (const ReportEntry &entry : report.entries)
        inserts.add(entry);
    inserts.commit();
}

} // namespace bench
