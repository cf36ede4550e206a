#include "Schema.h"

#include "Errors.h"
#include "FieldDefinition.h"
#include "Messages.h"

namespace db {

using namespace Qt::StringLiterals;

namespace {

/// Engine numbers of disk failures: every further table would fail in the same way.
bool isDiskFailure(const dao::DaoException &exception)
{
    constexpr int kDiskFull = 3026;
    constexpr int kDiskError = 3043;
    return exception.number() == kDiskFull || exception.number() == kDiskError;
}

template <typename Build, typename... Args>
bool guarded(tarnwick::UserPrompts &prompts, Build build, const tarnwick::Message &failure, const Args &...args)
{
    try {
        build();
        return true;
    } catch (const dao::DaoException &exception) {
        if (isDiskFailure(exception))
            throw;
        showDaoError(prompts, exception, failure, args...);
        return false;
    }
}

dao::TableInfo definition(const TableSpec &spec)
{
    dao::TableInfo table;
    table.name = QString::fromUtf16(spec.name);
    for (const FieldSpec &field : spec.fields)
        createField(table, QString::fromUtf16(field.name), field.type, field.size,
                    QString::fromUtf16(field.defaultValue), QString::fromUtf16(field.validationRule),
                    QStringView(field.flags));
    for (const IndexSpec &index : spec.indexes)
        createIndex(table, QString::fromUtf16(index.name), index.flags, index.fieldNames());
    return table;
}

dao::TableInfo definition(const AliasSpec &spec)
{
    constexpr int kLabelSize = 50;
    dao::TableInfo table;
    table.name = QString::fromUtf16(spec.table);
    createField(table, u"index"_s, dao::DataType::Integer, 0, u"0"_s, QString(), u"R--");
    createField(table, QString::fromUtf16(spec.labelField), dao::DataType::Text, kLabelSize, QString(), QString(),
                u"R--");
    createIndex(table, u"primary_key"_s, PrimaryIndex | UniqueIndex, {u"index"_s});
    return table;
}

dao::RelationInfo definition(const RelationSpec &spec)
{
    const QString field = QString::fromUtf16(spec.field);
    return {QString::fromUtf16(spec.name),
            QString::fromUtf16(spec.table),
            QString::fromUtf16(spec.foreignTable),
            spec.attributes,
            {{field, field}}};
}

} // namespace

bool createTable(tarnwick::UserPrompts &prompts, dao::Database &database, const TableSpec &spec)
{
    return guarded(
        prompts, [&] { database.createTable(definition(spec)); }, *spec.failure);
}

bool createAliasTable(tarnwick::UserPrompts &prompts, dao::Database &database, const AliasSpec &spec)
{
    return guarded(
        prompts, [&] { database.createTable(definition(spec)); }, messages::kCreateAlias,
        QString::fromUtf16(spec.table));
}

bool createRelations(tarnwick::UserPrompts &prompts, dao::Database &database)
{
    return guarded(
        prompts,
        [&] {
            for (const RelationSpec &spec : relationSpecs())
                database.createRelation(definition(spec));
        },
        messages::kCreateRelations);
}

void createRelation(dao::Database &database, QStringView name)
{
    for (const RelationSpec &spec : relationSpecs())
        if (name == spec.name)
            database.createRelation(definition(spec));
}

void createSchema(tarnwick::UserPrompts &prompts, dao::Database &database)
{
    for (const TableSpec &spec : tableSpecs())
        createTable(prompts, database, spec);
    for (const AliasSpec &spec : aliasSpecs())
        createAliasTable(prompts, database, spec);
    createRelations(prompts, database);
}

void seedStatistics(dao::Database &database)
{
    for (const TableSpec &spec : tableSpecs())
        if (spec.expectedRows > 0 && database.hasTable(QStringView(spec.name)))
            seedStatistics(database, spec);
}

void seedStatistics(dao::Database &database, const TableSpec &spec)
{
    const QString table = QString::fromUtf16(spec.name);
    QList<dao::Database::IndexStatistics> statistics;
    for (const IndexSpec &index : spec.indexes) {
        dao::Database::IndexStatistics entry;
        entry.index = QString::fromUtf16(index.name);
        for (qint64 rows : index.rowsPerKey)
            if (rows > 0)
                entry.rowsPerKey.append(rows);
        if (!entry.rowsPerKey.isEmpty() && database.table(table).index(entry.index))
            statistics.append(entry);
    }
    database.seedStatistics(table, spec.expectedRows, statistics);
}

} // namespace db
