#include "LegacyImport.h"

#include "Messages.h"

#include <dao/ProgressScope.h>
#include <dao/values/Errors.h>
#include <db/Errors.h>
#include <db/FieldAccess.h>
#include <db/ReportRows.h>
#include <db/Schema.h>
#include <db/SqlText.h>
#include <db/TableGrowth.h>

namespace db {

using namespace Qt::StringLiterals;

namespace {

constexpr char16_t kRepairsSql[] =
    u"INSERT INTO repairs (sec, row, col, repair_type, type, date_scheduled, date_completed,\n"
    u"                     heat1, heat2, loc_land, loc_off, site_code, comp, outage, comment)\n"
    u"SELECT TUBEQUAD, TUBEROW, TUBECOL, REPRDESC, PLUGTYPE, REPRISUD, REPRCMPD,\n"
    u"       HEAT1, HEAT2, FLAWLOC1, FLAWLOC3, '%S', '%S', REPROUT, NOTEPTR\n"
    u"FROM REPRDATA\n"
    u"ORDER BY PRIMEKEY";

constexpr char16_t kPluggedSetSql[] = u"INSERT INTO tube_sets (name)\nVALUES ('PL');";
constexpr char16_t kPluggedSql[] = u"INSERT INTO tube_set_entry (name, entry_num, sec, row, col, color, symbol)\n"
                                   u"SELECT 'PL', PRIMEKEY, TUBEQUAD, TUBEROW, TUBECOL, 0, %d\n"
                                   u"FROM TUBEDATA\n"
                                   u"WHERE TUBESTAT = 'PL'";
constexpr char16_t kMarkedSetSql[] = u"INSERT INTO tube_sets (name)\nVALUES ('IN');";
constexpr char16_t kMarkedSql[] = u"INSERT INTO tube_set_entry (name, entry_num, sec, row, col, color, symbol)\n"
                                  u"SELECT 'IN', PRIMEKEY, TUBEQUAD, TUBEROW, TUBECOL, %d, %d\n"
                                  u"FROM TUBEDATA\n"
                                  u"WHERE TUBESTAT = 'IN'";
constexpr int kFilledCircle = 9679; // U+25CF
constexpr int kBlue = 0xFF0000;     // 0x00BBGGRR

/// The columns read from each foreign table.
struct ForeignTable
{
    QString name;
    QStringList columns;

    /// Throws dao::DaoException naming missing columns; a query would treat them as parameters.
    void require(const dao::Database &database) const
    {
        if (!database.hasTable(name))
            throw dao::DaoException(dao::error::UnknownSource, u"DAO.Database"_s,
                                    u"The foreign database has no table '%1'."_s.arg(name));
        QStringList missing;
        for (const QString &column : columns)
            if (!database.table(name).field(column))
                missing.append(column);
        if (!missing.isEmpty())
            throw dao::DaoException(dao::error::ItemNotFound, u"DAO.TableDef"_s,
                                    u"The foreign table '%1' has no column '%2'."_s.arg(name, missing.join(u"', '"_s)));
    }
};

const ForeignTable &identTable()
{
    static const ForeignTable table{u"IDENT"_s, {u"SITE"_s, u"COMP"_s}};
    return table;
}

const ForeignTable &repairsTable()
{
    static const ForeignTable table{u"REPRDATA"_s,
                                    {u"PRIMEKEY"_s, u"TUBEQUAD"_s, u"TUBEROW"_s, u"TUBECOL"_s, u"REPRDESC"_s,
                                     u"PLUGTYPE"_s, u"REPRISUD"_s, u"REPRCMPD"_s, u"HEAT1"_s, u"HEAT2"_s, u"FLAWLOC1"_s,
                                     u"FLAWLOC3"_s, u"REPROUT"_s, u"NOTEPTR"_s}};
    return table;
}

const ForeignTable &tubesTable()
{
    static const ForeignTable table{u"TUBEDATA"_s,
                                    {u"PRIMEKEY"_s, u"TUBEQUAD"_s, u"TUBEROW"_s, u"TUBECOL"_s, u"TUBESTAT"_s}};
    return table;
}

/// One import; its steps share the session and the content of IDENT.
class Import
{
public:
    Import(DatabaseSession &session, const brannock::Project &project, tarnwick::Progress *progress)
        : m_session(&session)
        , m_project(&project)
        , m_progress(progress)
        , m_ident(readIdent(session.database()))
    {
    }

    bool importExamData();
    void importRepairs();
    void importTubeSets();

private:
    template <typename Step>
    void guarded(Step step, const tarnwick::Message &failure)
    {
        const auto inTransaction = [&] {
            dao::Transaction transaction(m_session->workspace());
            step();
            transaction.commit();
        };
        tarnwick::attempt(m_session->prompts(), inTransaction, failure);
    }

    DatabaseSession *m_session;
    const brannock::Project *m_project;
    tarnwick::Progress *m_progress;
    LegacyIdent m_ident;
};

bool Import::importExamData()
{
    constexpr int kRecordsPerStatus = 100;
    dao::Database &database = m_session->database();
    const qint64 total = firstValue(database, u"SELECT COUNT(*) FROM EXAMDATA"_s).integer();
    tarnwick::ProgressLoop progress(m_progress, total, QString::fromUtf16(messages::kConvertingRecords.text));
    LegacyEntries entries(database, m_ident, *m_project);
    qint64 count = 0;
    qint32 record = 0;
    try {
        ReportWriter writer(database);
        while (entries.next()) {
            record = entries.recordNumber();
            brannock::ReportEntry entry = entries.entry();
            writer.add(entry, record);
            if (++count % kRecordsPerStatus == 0)
                m_session->prompts().status(messages::kConvertingRecord, count);
            progress.tick(count);
        }
    } catch (const dao::DaoException &exception) {
        dao::DaoException named = exception;
        const QString lead = exception.hint().isEmpty() ? QString() : QString(exception.hint() + u' ');
        named.withHint(lead + u"Record %1 of EXAMDATA."_s.arg(record));
        showDaoError(m_session->prompts(), named, messages::kUploadEntry);
        return false;
    }
    noteTableGrowth(database, u"report"_s, count);
    m_session->prompts().status(messages::kImportDone);
    return true;
}

void Import::importRepairs()
{
    const auto orProjects = [](const QString &own, const QString &projects) { return own.isEmpty() ? projects : own; };
    guarded(
        [&] {
            repairsTable().require(m_session->database());
            executeSql(m_session->database(), sqlText(kRepairsSql, orProjects(m_ident.site, m_project->site.siteCode),
                                                      orProjects(m_ident.comp, m_project->site.compCode)));
        },
        messages::kConvertRepairs);
}

void Import::importTubeSets()
{
    dao::Database &database = m_session->database();
    guarded(
        [&] {
            tubesTable().require(database);
            executeSql(database, sqlText(kPluggedSetSql));
            executeSql(database, sqlText(kPluggedSql, kFilledCircle));
            executeSql(database, sqlText(kMarkedSetSql));
            executeSql(database, sqlText(kMarkedSql, kBlue, kFilledCircle));
        },
        messages::kConvertTubes);
}

} // namespace

bool isLegacyDatabase(const dao::Database &database)
{
    return database.hasTable(u"EXAMDATA") && !database.hasTable(u"report");
}

LegacyIdent readIdent(dao::Database &database)
{
    LegacyIdent ident;
    dao::Recordset rows(database);
    for (rows.open(dao::Recordset::Type::Snapshot, u"SELECT SITE, COMP\nFROM IDENT"_s); !rows.isEof(); rows.moveNext())
        ident = {getField<QString>(rows, u"SITE"_s).trimmed(), getField<QString>(rows, u"COMP"_s).trimmed()};
    return ident;
}

bool importLegacyDatabase(DatabaseSession &session, const brannock::Project &project, tarnwick::Progress *progress)
{
    if (!checkConnected(session) || !session.isUpdatable())
        return false;
    identTable().require(session.database());
    ForeignTable{u"EXAMDATA"_s, LegacyEntries::columns()}.require(session.database());
    const dao::ProgressScope stoppable(session.database(), progress);
    dao::Transaction transaction(session.workspace());
    if (!isLegacyDatabase(session.database()))
        return false;
    createSchema(session.prompts(), session.database());
    seedStatistics(session.database());
    Import import(session, project, progress);
    // If only the other tables were kept, the next connection would take the import for complete. So everything is
    // rolled back.
    if (!import.importExamData()) {
        transaction.rollback();
        session.prompts().information(messages::kImportUndone);
        return false;
    }
    import.importRepairs();
    import.importTubeSets();
    transaction.commit();
    return true;
}

} // namespace db
