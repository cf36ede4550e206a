#include "ReportTable.h"

#include "PlainInserts.h"

#include <db/CreateDatabase.h>
#include <db/DatabaseSession.h>
#include <demo/DemoProject.h>
#include <demo/Inspection.h>

#include <QDir>
#include <QFile>

namespace bench {

using namespace Qt::StringLiterals;
using brannock::ReportEntry;

namespace {

demo::DemoOptions options(qint64 rows)
{
    constexpr int kOutages = 10;
    demo::DemoOptions options;
    options.outages = kOutages;
    options.entries = rows;
    return options;
}

/// Creates the indexes after the rows: half the time for the same result.
class IndexesLeftOut
{
public:
    explicit IndexesLeftOut(const QString &path)
        : m_database(path)
    {
        QStringList names;
        {
            PlainStatement indexes(m_database, "SELECT name, sql FROM sqlite_schema "
                                               "WHERE type = 'index' AND tbl_name = 'report' AND sql IS NOT NULL");
            while (indexes.step()) {
                names.append(text(indexes, 0));
                m_definitions.append(text(indexes, 1));
            }
        }
        for (const QString &name : names)
            m_database.run(QString(u"DROP INDEX \""_s + name + u'"').toUtf8().constData());
    }

    void makeThem()
    {
        m_database.run("PRAGMA cache_size = -524288");
        for (const QString &definition : std::as_const(m_definitions))
            m_database.run(definition.toUtf8().constData());
    }

private:
    static QString text(const PlainStatement &row, int column)
    {
        return QString::fromUtf8(reinterpret_cast<const char *>(sqlite3_column_text(row.handle(), column)));
    }

    PlainDatabase m_database;
    QStringList m_definitions;
};

void fill(const QString &path, qint64 rows)
{
    makeDatabase(path);
    IndexesLeftOut indexes(path);
    PlainInserts inserts(path);
    makeResults(rows, [&](const ReportEntry &entry) { inserts.add(entry); });
    inserts.commit();
    indexes.makeThem();
}

} // namespace

const brannock::Project &resultsProject()
{
    static const brannock::Project project = demo::inventProject(options(0), QDir::tempPath());
    return project;
}

void makeResults(qint64 rows, const std::function<void(const ReportEntry &)> &take)
{
    demo::Inspection inspection(resultsProject(), options(rows));
    inspection.run(
        [&](const demo::InspectedCal &cal) {
            for (const QList<ReportEntry> &results : cal.results)
                for (const ReportEntry &entry : results)
                    take(entry);
        },
        nullptr);
}

void makeDatabase(const QString &path)
{
    QFile::remove(path);
    tarnwick::RecordingPrompts prompts;
    if (!db::createDatabase(prompts, path))
        qFatal("no database");
}

QString reportDatabase(qint64 rows)
{
    // The name contains the version of the data, so that other data get another file.
    const QDir folder(QDir::tempPath() + u"/arvo-bench"_s);
    const QString path = folder.filePath(u"report-1-%1.mdb"_s.arg(rows));
    if (QFile::exists(path))
        return path;
    folder.mkpath(u"."_s);
    const QString unfinished = path + u".unfinished"_s;
    fill(unfinished, rows);
    tarnwick::RecordingPrompts prompts;
    db::DatabaseSession session(prompts);
    session.open(unfinished);
    session.database().analyze(u"report"_s);
    session.close();
    QFile::rename(unfinished, path);
    return path;
}

} // namespace bench
