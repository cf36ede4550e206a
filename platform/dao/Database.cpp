#include "Database.h"

#include "DatabaseImpl.h"
#include "PlanExecution.h"

#include <dao/store/ConnectionScopes.h>
#include <dao/store/DamageCheck.h>
#include <dao/store/ErrorTranslation.h>
#include <dao/store/FileReading.h>
#include <dao/store/Statistics.h>
#include <dao/store/SystemTables.h>
#include <dao/store/TableDefinition.h>

using namespace Qt::StringLiterals;

namespace dao {

namespace {

// The form of sqlite_stat1: number of rows, then rows per distinct prefix of the index. 0 is not allowed there.
QString numbersOf(qint64 rows, const Database::IndexStatistics &index)
{
    QStringList numbers{QString::number(rows)};
    for (const qint64 sharing : index.rowsPerKey)
        numbers.append(QString::number(qMax<qint64>(sharing, 1)));
    return numbers.join(u' ');
}

} // namespace

Database::Database(Workspace &workspace)
    : m_impl(std::make_shared<DatabaseImpl>(workspace.m_impl))
{
}

Database::~Database()
{
    m_impl->close();
}

void Database::create(const QString &path, const QString &locale, FileFormat format)
{
    m_impl->create(path, locale, format);
}

void Database::open(const QString &path, OpenMode mode)
{
    m_impl->open(path, mode);
}

void Database::close()
{
    m_impl->close();
}

bool Database::isOpen() const
{
    return m_impl->isOpen();
}

bool Database::isUpdatable() const
{
    return isOpen() && !m_impl->connection.isReadOnly();
}

QString Database::name() const
{
    return m_impl->path;
}

FileFormat Database::fileFormat() const
{
    return property(u"Format"_s).toInt() == int(FileFormat::Jet3) ? FileFormat::Jet3 : FileFormat::Jet4;
}

// Reading the schema reloads it first if another program has changed it.
const SchemaView &Database::schema() const
{
    m_impl->prepareStatement();
    return m_impl->catalog;
}

QStringList Database::tableNames() const
{
    m_impl->prepareStatement();
    QStringList names;
    for (const store::StoredTable &table : m_impl->catalog.tables())
        names.append(table.info.name);
    for (const TableInfo &table : store::systemTables())
        names.append(table.name);
    return names;
}

bool Database::hasTable(QStringView name) const
{
    return schema().findTable(name) != nullptr;
}

const TableInfo &Database::table(QStringView name) const
{
    const TableInfo *table = schema().findTable(name);
    if (!table)
        throw store::engineError(error::ItemNotFound, u"DAO.TableDefs"_s);
    return *table;
}

// source: the collection that errors of this change name.
void Database::define(const QString &source, const std::function<void(store::SchemaEditor &)> &change)
{
    store::SourceScope scope(m_impl->connection, source);
    m_impl->prepareStatement();
    m_impl->connection.clearCancel();
    change(m_impl->editor);
}

void Database::createTable(const TableInfo &table)
{
    define(u"DAO.TableDefs"_s, [&](store::SchemaEditor &editor) { editor.createTable(table); });
}

void Database::deleteTable(QStringView name)
{
    define(u"DAO.TableDefs"_s, [&](store::SchemaEditor &editor) { editor.deleteTable(name); });
}

void Database::alterTable(QStringView name, const TableInfo &newShape, const QList<FieldFill> &fills)
{
    define(u"DAO.TableDef"_s, [&](store::SchemaEditor &editor) { editor.alterTable(name, newShape, fills); });
}

void Database::addField(QStringView table, const FieldInfo &field)
{
    define(u"DAO.Fields"_s, [&](store::SchemaEditor &editor) { editor.addField(table, field); });
}

void Database::deleteField(QStringView table, QStringView field)
{
    define(u"DAO.Fields"_s, [&](store::SchemaEditor &editor) { editor.deleteField(table, field); });
}

void Database::createIndex(QStringView table, const IndexInfo &index)
{
    define(u"DAO.Indexes"_s, [&](store::SchemaEditor &editor) { editor.createIndex(table, index); });
}

void Database::deleteIndex(QStringView table, QStringView index)
{
    define(u"DAO.Indexes"_s, [&](store::SchemaEditor &editor) { editor.deleteIndex(table, index); });
}

QList<RelationInfo> Database::relations() const
{
    m_impl->prepareStatement();
    return m_impl->catalog.relations();
}

void Database::createRelation(const RelationInfo &relation)
{
    define(u"DAO.Relations"_s, [&](store::SchemaEditor &editor) { editor.createRelation(relation); });
}

void Database::deleteRelation(QStringView name)
{
    define(u"DAO.Relations"_s, [&](store::SchemaEditor &editor) { editor.deleteRelation(name); });
}

QStringList Database::queryNames() const
{
    m_impl->prepareStatement();
    return m_impl->catalog.queryNames();
}

bool Database::hasQuery(QStringView name) const
{
    return schema().findQuery(name) != nullptr;
}

QueryInfo Database::query(QStringView name) const
{
    const QueryInfo *query = schema().findQuery(name);
    if (!query)
        throw store::engineError(error::ItemNotFound, u"DAO.QueryDefs"_s);
    return *query;
}

void Database::createQuery(const QueryInfo &query)
{
    define(u"DAO.QueryDefs"_s, [&](store::SchemaEditor &editor) { editor.createQuery(query); });
}

void Database::setQuerySql(QStringView name, const QString &sql)
{
    define(u"DAO.QueryDef"_s, [&](store::SchemaEditor &editor) { editor.setQuerySql(name, sql); });
}

void Database::deleteQuery(QStringView name)
{
    define(u"DAO.QueryDefs"_s, [&](store::SchemaEditor &editor) { editor.deleteQuery(name); });
}

QString Database::property(const QString &name) const
{
    m_impl->prepareStatement();
    return m_impl->catalog.property(name);
}

void Database::setProperty(const QString &name, const QString &value)
{
    define(u"DAO.Database"_s, [&](store::SchemaEditor &editor) { editor.setProperty(name, value); });
}

void Database::readFile(const std::function<void(QByteArrayView)> &take) const
{
    m_impl->requireOpen();
    store::readFile(m_impl->path, take, m_impl->connection.progress());
}

// data_version changes with commits of other connections only, not with those of this one.
qint64 Database::changeStamp() const
{
    m_impl->prepareStatement();
    return m_impl->connection.number(u"PRAGMA data_version"_s);
}

int Database::execute(const QString &sql)
{
    m_impl->requireOpen();
    QueryDefImpl query(m_impl, sql);
    query.parse();
    return executeStatement(query);
}

bool Database::mayWrite(const QString &path)
{
    return DatabaseImpl::mayWrite(path);
}

QList<DamageFinding> Database::check(Check kind) const
{
    store::SourceScope scope(m_impl->connection, u"DAO.Database"_s);
    m_impl->prepareStatement();
    return store::findDamage(m_impl->connection, kind == Check::Whole);
}

void Database::analyze(const QString &table)
{
    store::SourceScope scope(m_impl->connection, u"DAO.Database"_s);
    m_impl->prepareStatement();
    store::analyze(m_impl->connection, table.isEmpty() ? QString() : this->table(table).name);
}

bool Database::hasStatistics(const QString &tableName) const
{
    store::SourceScope scope(m_impl->connection, u"DAO.Database"_s);
    return !store::readStatistics(m_impl->connection, table(tableName).name).isEmpty();
}

// Written to sqlite_stat1 like the result of ANALYZE. An autonumber has no index of its own, so it is omitted; a table
// without other indexes gets the number of its rows only.
void Database::seedStatistics(const QString &tableName, qint64 rows, const QList<IndexStatistics> &indexes)
{
    store::SourceScope scope(m_impl->connection, u"DAO.Database"_s);
    const TableInfo &info = table(tableName);
    QList<store::StatisticsLine> lines;
    for (const IndexStatistics &statistics : indexes) {
        const IndexInfo *index = info.index(statistics.index);
        if (!index)
            throw store::engineError(error::ItemNotFound, u"DAO.Indexes"_s);
        if (store::isKeptAsIndex(info, *index))
            lines.append({store::indexNameInFile(info.name, index->name), numbersOf(rows, statistics)});
    }
    if (lines.isEmpty())
        lines.append({QString(), QString::number(rows)});
    store::Savepoint savepoint(m_impl->connection);
    store::writeStatistics(m_impl->connection, info.name, lines);
    savepoint.release();
}

tarnwick::Progress *Database::setProgress(tarnwick::Progress *progress)
{
    tarnwick::Progress *before = m_impl->connection.progress();
    m_impl->connection.setProgress(progress);
    return before;
}

DatabaseImpl &Database::impl() const
{
    return *m_impl;
}

} // namespace dao
