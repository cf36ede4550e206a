#include "LegacyEntry.h"

#include <dao/values/Errors.h>
#include <db/FieldAccess.h>

namespace db {

using namespace Qt::StringLiterals;
using brannock::ReportEntry;

namespace {

const QString kColumns = u"PRIMEKEY, TUBEQUAD, TUBEROW, TUBECOL, EXAIVOLT, EXAIDEG,\n"
                         u"       EXAIDEPH, EXAMCHAN, EXAMINDN, EXAMLEG, EXAMOUT, EXAMPERS,\n"
                         u"       EXAMOPER, EXAILOC1, EXAILOC3, EXAILOC4, EXAMREEL, EXAMTECH,\n"
                         u"       EXAMDEXT, EXAMINSP, USRTEXT1, USRTEXT2, NOTEPTR, EXAMLOG"_s;

QString orElse(const QString &text, const QString &otherwise)
{
    return text.isEmpty() ? otherwise : text;
}

} // namespace

int fileNumberOf(const QString &reel)
{
    QString digits;
    for (const QChar c : reel)
        if (c >= u'0' && c <= u'9')
            digits += c;
    return digits.toInt();
}

void splitExtent(const QString &extent, QString &begin, QString &end)
{
    constexpr int kLandmark = 3;
    begin = extent.toUpper();
    end.clear();
    if (begin.size() != 2 * kLandmark || begin.startsWith(u"F/L"))
        return;
    end = begin.last(kLandmark);
    begin.truncate(kLandmark);
}

LegacyEntries::LegacyEntries(dao::Database &database, const LegacyIdent &ident, const brannock::Project &project)
    : m_rows(database)
    , m_ident(ident)
    , m_project(&project)
{
    m_rows.open(dao::Recordset::Type::Snapshot, u"SELECT "_s + kColumns + u"\nFROM EXAMDATA\nORDER BY PRIMEKEY"_s);
}

QStringList LegacyEntries::columns()
{
    QStringList names = kColumns.split(u',');
    for (QString &name : names)
        name = name.trimmed();
    return names;
}

bool LegacyEntries::next()
{
    if (m_started)
        m_rows.moveNext();
    m_started = true;
    return !m_rows.isEof();
}

qint32 LegacyEntries::recordNumber() const
{
    return longNumber(u"PRIMEKEY"_s);
}

QString LegacyEntries::text(const QString &field) const
{
    return getField<QString>(m_rows, field).trimmed();
}

/// Stricter than fieldAs(), where a value that does not fit gives 0, which would look like a result.
template <typename T>
T LegacyEntries::value(const QString &field, dao::DataType type) const
{
    const dao::Value stored = m_rows.value(field);
    if (!stored.hasNoValue() && dao::convertValue(stored, type).isEmpty())
        throw dao::DaoException(dao::error::ConversionFailed, u"DAO.Recordset"_s,
                                u"Data type conversion error in field '%1'."_s.arg(field));
    return fieldAs<T>(stored);
}

qint16 LegacyEntries::shortNumber(const QString &field) const
{
    return value<qint16>(field, dao::DataType::Integer);
}

qint32 LegacyEntries::longNumber(const QString &field) const
{
    return value<qint32>(field, dao::DataType::Long);
}

ReportEntry LegacyEntries::entry() const
{
    ReportEntry entry;
    entry.sec = shortNumber(u"TUBEQUAD"_s);
    entry.row = shortNumber(u"TUBEROW"_s);
    entry.col = shortNumber(u"TUBECOL"_s);
    setMeasurement(entry);
    setPlaces(entry);
    const QString leg = text(u"EXAMLEG"_s).toUpper();
    entry.leg = leg == u"O" || leg == u"C" ? 0 : 1;
    entry.outage = orElse(text(u"EXAMOUT"_s), m_project->outageName());
    entry.site.siteCode = orElse(m_ident.site, m_project->site.siteCode);
    entry.site.compCode = orElse(m_ident.comp, m_project->site.compCode);
    entry.analystId = orElse(text(u"EXAMPERS"_s), u"UNKNOWN"_s);
    entry.operatorId = orElse(text(u"EXAMOPER"_s), u"UNKNOWN"_s);
    entry.operType = u"PRI"_s;
    entry.fileNumber = fileNumberOf(text(u"EXAMREEL"_s));
    entry.probe.type = text(u"EXAMTECH"_s);
    splitExtent(text(u"EXAMDEXT"_s), entry.beginTest, entry.endTest);
    entry.plan = text(u"EXAMINSP"_s);
    entry.util1 = text(u"USRTEXT1"_s);
    entry.util2 = text(u"USRTEXT2"_s);
    entry.comment = text(u"NOTEPTR"_s);
    entry.entryTime = value<tarnwick::JDateTime>(u"EXAMLOG"_s, dao::DataType::Date);
    return entry;
}

void LegacyEntries::setMeasurement(ReportEntry &entry) const
{
    const double volts = value<double>(u"EXAIVOLT"_s, dao::DataType::Double);
    entry.meas.volts = volts;
    if (volts > 0)
        entry.meas.type = u"Vxx"_s;
    entry.meas.phase = longNumber(u"EXAIDEG"_s);
    entry.meas.percent = longNumber(u"EXAIDEPH"_s);
    entry.channel = text(u"EXAMCHAN"_s);
    entry.defect = text(u"EXAMINDN"_s);
    if (entry.defect.isEmpty() && volts == 0)
        entry.defect = u"NDD"_s;
}

void LegacyEntries::setPlaces(ReportEntry &entry) const
{
    const QString landmark = text(u"EXAILOC1"_s);
    entry.location.landmark = landmark;
    entry.location.offset = value<float>(u"EXAILOC3"_s, dao::DataType::Single);
    entry.to.offset = value<float>(u"EXAILOC4"_s, dao::DataType::Single);
    if (entry.to.offset != 0)
        entry.to.landmark = landmark;
}

} // namespace db
