#include "ReportWriter.h"

#include "FieldAccess.h"

namespace db {

using namespace Qt::StringLiterals;
using brannock::ReportEntry;
using brannock::TubeLoc;
using dao::Value;

/// Ordinals of the fields, looked up once instead of for every row.
struct ReportWriter::Columns
{
    explicit Columns(const dao::Recordset &report)
        : m_report(&report)
    {
    }

    const dao::Recordset *m_report;
    int at(const char16_t *name) const { return requireField(*m_report, QString::fromUtf16(name)); }

    int recdNum = at(u"recd_num"), sec = at(u"sec"), row = at(u"row"), col = at(u"col"), chan = at(u"chan");
    int measType = at(u"meas_type"), volts = at(u"volts"), phase = at(u"phase"), pcnt = at(u"pcnt");
    int digVolts = at(u"dig_volts"), defect = at(u"defect");
    int locLand = at(u"loc_land"), locOff = at(u"loc_off"), locPnt = at(u"loc_pnt"), locDist = at(u"loc_dist");
    int fromLand = at(u"from_land"), fromOff = at(u"from_off"), fromPnt = at(u"from_pnt");
    int toLand = at(u"to_land"), toOff = at(u"to_off"), toPnt = at(u"to_pnt");
    int begTest = at(u"beg_test"), endTest = at(u"end_test");
    int siteCode = at(u"site_code"), outage = at(u"outage"), comp = at(u"comp"), leg = at(u"leg");
    int calNum = at(u"cal_num"), fileNum = at(u"file_num"), id = at(u"id"), operType = at(u"oper_type");
    int analystId = at(u"analyst_id"), operId = at(u"oper_id"), util1 = at(u"util1"), util2 = at(u"util2");
    int plan = at(u"plan"), probeType = at(u"probe_type"), probeModel = at(u"probe_model");
    int probeSize = at(u"probe_size"), probeSn = at(u"probe_sn"), entryTime = at(u"entry_time");
    int fileName = at(u"file_name"), comment = at(u"comment");
};

namespace {

QString withoutBlanks(const QString &text)
{
    const auto isBlank = [](QChar character) { return character.isSpace(); };
    if (std::none_of(text.begin(), text.end(), isBlank))
        return text;
    QString compact = text;
    compact.removeIf(isBlank);
    return compact;
}

} // namespace

ReportWriter::ReportWriter(dao::Database &database)
    : m_recordset(database)
{
    m_recordset.open(dao::Recordset::Type::TableAppend, u"report"_s);
    m_columns = std::make_unique<Columns>(m_recordset);
}

ReportWriter::~ReportWriter() = default;

void ReportWriter::add(ReportEntry &entry, std::optional<qint32> recordNumber)
{
    m_recordset.addNew();
    try {
        if (recordNumber)
            m_recordset.setValue(m_columns->recdNum, Value::fromLong(*recordNumber));
        setIdentity(entry);
        setAddress(entry);
        setText(m_columns->defect, entry.defect);
        setMeasurement(entry);
        setLocations(entry);
        setOrigin(entry);
        setTime(entry);
        m_recordset.update();
    } catch (...) {
        m_recordset.cancelUpdate();
        throw;
    }
}

// Fields that an entry leaves out are set to Null explicitly. None of them has a default, and the engine keeps one
// prepared statement for each set of fields written.
void ReportWriter::setNull(int column)
{
    m_recordset.setValue(column, Value::null());
}

// No text field of the table allows zero-length text.
void ReportWriter::setText(int column, const QString &text)
{
    m_recordset.setValue(column, text.isEmpty() ? Value::null() : Value::fromText(text));
}

void ReportWriter::setIdentity(const ReportEntry &entry)
{
    setText(m_columns->outage, entry.outage);
    setText(m_columns->siteCode, entry.site.siteCode);
    setText(m_columns->comp, entry.site.compCode);
    setText(m_columns->operType, entry.operType);
    m_recordset.setValue(m_columns->calNum, Value::fromLong(entry.calNumber));
    m_recordset.setValue(m_columns->fileNum, Value::fromLong(entry.fileNumber));
    m_recordset.setValue(m_columns->id, Value::fromLong(entry.id));
    m_recordset.setValue(m_columns->leg, Value::fromLong(entry.leg));
}

void ReportWriter::setAddress(const ReportEntry &entry)
{
    m_recordset.setValue(m_columns->sec, Value::fromLong(entry.sec));
    m_recordset.setValue(m_columns->row, Value::fromLong(entry.row));
    m_recordset.setValue(m_columns->col, Value::fromLong(entry.col));
}

void ReportWriter::setMeasurement(const ReportEntry &entry)
{
    setText(m_columns->chan, entry.isNdd() ? QString() : withoutBlanks(entry.channel));
    if (entry.isNdd() || !entry.meas.isValid()) {
        for (int column :
             {m_columns->measType, m_columns->volts, m_columns->digVolts, m_columns->phase, m_columns->pcnt})
            setNull(column);
        return;
    }
    setText(m_columns->measType, entry.meas.type);
    m_recordset.setValue(m_columns->volts, Value::fromDouble(entry.meas.volts));
    m_recordset.setValue(m_columns->digVolts, Value::fromLong(entry.meas.digVolts));
    m_recordset.setValue(m_columns->phase, Value::fromDouble(entry.meas.phase));
    m_recordset.setValue(m_columns->pcnt, entry.meas.percent > 0 ? Value::fromLong(entry.meas.percent) : Value::null());
}

bool ReportWriter::setPlace(const TubeLoc &place, bool wanted, int landmark, int offset, int point)
{
    if (!wanted || !place.isValid()) {
        for (int column : {landmark, offset, point})
            setNull(column);
        return false;
    }
    setText(landmark, place.landmark);
    m_recordset.setValue(offset, Value::fromFloat(place.offset));
    m_recordset.setValue(point, Value::fromLong(place.point));
    return true;
}

void ReportWriter::setLocations(const ReportEntry &entry)
{
    const bool wanted = !entry.isNdd();
    const bool located = setPlace(entry.location, wanted, m_columns->locLand, m_columns->locOff, m_columns->locPnt);
    m_recordset.setValue(m_columns->locDist, located ? Value::fromFloat(entry.location.dist) : Value::null());
    setPlace(entry.from, wanted, m_columns->fromLand, m_columns->fromOff, m_columns->fromPnt);
    setPlace(entry.to, wanted, m_columns->toLand, m_columns->toOff, m_columns->toPnt);
}

void ReportWriter::setOrigin(const ReportEntry &entry)
{
    setText(m_columns->begTest, entry.beginTest);
    setText(m_columns->endTest, entry.endTest);
    setText(m_columns->probeType, entry.probe.type);
    setText(m_columns->probeModel, entry.probe.model);
    m_recordset.setValue(m_columns->probeSize, Value::fromLong(entry.probe.size));
    setText(m_columns->probeSn, entry.probe.serialNumber);
    setText(m_columns->analystId, entry.analystId);
    setText(m_columns->operId, entry.operatorId);
    setText(m_columns->fileName, entry.fileName);
    setText(m_columns->util1, entry.util1);
    setText(m_columns->util2, entry.util2);
    setText(m_columns->plan, entry.plan);
    setText(m_columns->comment, entry.comment);
}

void ReportWriter::setTime(ReportEntry &entry)
{
    if (entry.entryTime.isNull())
        entry.entryTime = tarnwick::JDateTime::fromSeconds(0);
    // Entries of one tube usually share their time, and the conversion through the local calendar is the slowest field
    // of a row.
    if (m_lastTimeValue.isEmpty() || entry.entryTime != m_lastTime) {
        m_lastTime = entry.entryTime;
        m_lastTimeValue = toValue(entry.entryTime);
    }
    setField(m_recordset, m_columns->entryTime, m_lastTimeValue);
}

} // namespace db
