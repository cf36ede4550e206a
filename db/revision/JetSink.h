#pragma once
#include "JetImportReport.h"

#include <dao/ProgressScope.h>
#include <dao/TableLoad.h>
#include <exception>
#include <map>
#include <QMap>

namespace db {

/// Content that violates the Jet file's own definitions, found while its rows were read. The copy is then restarted
/// with definitions that allow it.
struct JetAllowances
{
    std::map<QString, QStringList> nullFields;   ///< required fields that contain Nulls, by table
    std::map<QString, QStringList> plainIndexes; ///< unique indexes that contain duplicate keys, by table
    QStringList plainNumbers;                    ///< tables with repeated autonumbers
};

/// Writes the content of a Jet file into a new database.
class JetSink : public jet::Sink
{
public:
    /// Thrown after an allowance was added: read the file again, into a new database.
    class StartAgain : public std::exception
    {
    };

    JetSink(dao::Database &database, JetAllowances &allowances, JetImportReport &report, const QString &newPath,
            tarnwick::Progress *progress, const QString &progressText);
    ~JetSink() override;

    /// Call after the last table: creates relations and stored queries.
    void finish();

    void schema(const jet::Schema &schema) override;
    void beginTable(const dao::TableInfo &table) override;
    void row(const QList<dao::Value> &values) override;
    void endTable(const dao::TableInfo &table, qint64 rows) override;

private:
    dao::TableInfo adapted(const dao::TableInfo &table);
    void adaptField(const dao::TableInfo &table, dao::FieldInfo &field);
    void createRelation(const dao::RelationInfo &relation);
    void createQuery(const dao::QueryInfo &query);
    void countRounded(const QList<dao::Value> &values);
    void storeDescriptions(const jet::Table &table);
    [[noreturn]] void allow(const dao::LoadError &error);
    void remark(jet::Remark::Kind kind, const QString &object, const QString &text);

    dao::Database *m_database;
    JetAllowances *m_allowances;
    JetImportReport *m_report;
    QString m_newPath;
    dao::ProgressScope m_cancellable;
    tarnwick::Progress *m_progress;
    QString m_progressText;
    tarnwick::ProgressLoop m_watch;
    qint64 m_rows = 0;
    jet::Schema m_schema;
    QString m_tableName;
    QMap<qsizetype, qint64> m_rounded; ///< number of rounded amounts in the current table, by field
    std::unique_ptr<dao::TableLoad> m_load;
};

} // namespace db
