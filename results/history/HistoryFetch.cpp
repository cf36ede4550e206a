#include "HistoryFetch.h"

#include "Messages.h"

#include <brannock/HistoryFields.h>
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

/// Reads the rows of 'report'. The columns are looked up once, by name.
class RowReader
{
public:
    RowReader(const dao::Recordset &report, HistoryRows &rows);

    HistoryRow read();

    // As a visitor of brannock::visitHistoryFields(): a column that table 'report' lacks leaves the field as it is.
    void field(QStringView, quint32 &text)
    {
        read(text, [this](const Value &value) { return textOf(value); });
    }
    void field(QStringView, qint64 &time)
    {
        read(time, [this](const Value &value) { return secondsOf(value); });
    }
    void field(QStringView, double &number) { read(number, db::decimalOf); }
    void field(QStringView, bool &) { ++m_next; } // only files have it
    template <typename Number>
    void field(QStringView, Number &number, brannock::IntRange)
    {
        read(number, [](const Value &value) { return Number(db::fieldAs<qint32>(value)); });
    }
    void sparse(QStringView, float &number) { read(number, db::fieldAs<float>); }
    template <typename Number, typename... Range>
    void sparse(QStringView name, Number &number, Range... range)
    {
        field(name, number, range...);
    }

private:
    /// For each field its column in 'report'; -1: none.
    using Columns = std::vector<int>;

    template <typename Field, typename Convert>
    void read(Field &field, const Convert &convert)
    {
        const size_t place = m_next++;
        if ((*m_columns)[place] < 0)
            return;
        const Value value = m_report.value((*m_columns)[place]);
        m_isNull[place] = value.hasNoValue();
        field = convert(value);
    }
    quint32 textOf(const Value &value) { return m_rows.texts.add(value.text()); }
    qint64 secondsOf(const Value &time);

    const dao::Recordset &m_report;
    HistoryRows &m_rows;
    int m_fromLand;
    Columns m_located; ///< of a row without a from-location: its location, and no extent
    Columns m_extent;  ///< of a row with one: it is the location
    const Columns *m_columns = nullptr;
    size_t m_next = 0;
    std::vector<bool> m_isNull; ///< of each field of the row
    size_t m_volts;
    size_t m_phase;
    size_t m_percent;
    double m_lastTime = 0; ///< as the engine has it; consecutive rows often share their time
    qint64 m_lastSeconds = HistoryRow::kNoTime;
};

RowReader::RowReader(const dao::Recordset &report, HistoryRows &rows)
    : m_report(report)
    , m_rows(rows)
    , m_fromLand(db::requireField(report, u"from_land"_s))
{
    static const QStringList onlyInFiles{u"to_dist"_s, u"edited"_s};
    brannock::FieldNames fields;
    const HistoryRow any;
    brannock::visitHistoryFields(any, fields);
    for (QString name : std::as_const(fields.names)) {
        const int column = onlyInFiles.contains(name) ? -1 : db::requireField(report, name);
        const bool isExtent = name.startsWith(u"to_");
        m_located.push_back(isExtent ? -1 : column);
        if (name == u"loc_dist")
            m_extent.push_back(-1); // a from-location has none
        else if (name.startsWith(u"loc_"))
            m_extent.push_back(db::requireField(report, name.replace(0, 3, u"from"_s)));
        else
            m_extent.push_back(column);
    }
    m_isNull.resize(m_located.size());
    m_volts = size_t(fields.names.indexOf(u"volts"_s));
    m_phase = size_t(fields.names.indexOf(u"phase"_s));
    m_percent = size_t(fields.names.indexOf(u"pcnt"_s));
}

HistoryRow RowReader::read()
{
    HistoryRow row;
    m_columns = m_report.value(m_fromLand).text().isEmpty() ? &m_located : &m_extent;
    m_next = 0;
    brannock::visitHistoryFields(row, *this);
    row.hasVolts = !m_isNull[m_volts];
    row.hasPhase = !m_isNull[m_phase];
    row.hasPercent = !m_isNull[m_percent];
    return row;
}

qint64 RowReader::secondsOf(const Value &time)
{
    if (time.hasNoValue())
        return HistoryRow::kNoTime;
    if (m_lastSeconds == HistoryRow::kNoTime || time.real() != m_lastTime) {
        m_lastTime = time.real();
        m_lastSeconds = db::fieldAs<tarnwick::JDateTime>(time).seconds();
    }
    return m_lastSeconds;
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
