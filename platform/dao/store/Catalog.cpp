#include "Catalog.h"

#include "ConnectionScopes.h"
#include "EngineRules.h"
#include "ErrorTranslation.h"
#include "SystemTables.h"

using namespace Qt::StringLiterals;

namespace dao::store {

namespace {

// Reloads the catalog if a change fails: its steps may have loaded definitions that were undone.
class ReloadOnFailure
{
public:
    explicit ReloadOnFailure(Catalog &catalog)
        : m_catalog(&catalog)
    {
    }
    ~ReloadOnFailure()
    {
        try {
            if (m_catalog)
                m_catalog->refresh();
        } catch (const std::exception &) {
            // The original error must be reported; the next statement checks the version again.
        }
    }
    ReloadOnFailure(const ReloadOnFailure &) = delete;
    ReloadOnFailure &operator=(const ReloadOnFailure &) = delete;
    void disarm() { m_catalog = nullptr; }

private:
    Catalog *m_catalog;
};

} // namespace

void Catalog::create()
{
    for (const QString &statement : systemTablesSql())
        m_connection.run(statement);
    m_connection.run(u"PRAGMA application_id = %1"_s.arg(kApplicationId));
    m_connection.run(u"PRAGMA user_version = 1"_s);
    writeProperty(m_connection, u"Layout"_s, QString::number(kFileLayoutVersion));
}

void Catalog::load()
{
    m_connection.holdRead();
    m_version = m_connection.catalogVersion();
    m_tablesByName.clear();
    m_contents = readCatalog(m_connection);
    for (size_t i = 0; i < m_contents.tables.size(); ++i)
        m_tablesByName.insert({m_contents.tables[i].info.name}, qsizetype(i));
    ++m_generation;
    installEngineRules(m_connection, m_contents);
}

// The version is PRAGMA user_version, a field of the file header, so the check reads no table.
bool Catalog::refresh()
{
    if (m_connection.catalogVersion() == m_version)
        return false;
    load();
    return true;
}

void Catalog::rolledBack()
{
    // The schema is the same, but temporary triggers that were created inside the transaction are gone.
    if (!refresh())
        installEngineRules(m_connection, m_contents);
}

void Catalog::clear()
{
    m_tablesByName.clear();
    m_contents = {};
    m_version = -1;
    ++m_generation;
}

const StoredTable *Catalog::findStored(QStringView name) const
{
    const auto place = m_tablesByName.constFind({name});
    return place == m_tablesByName.cend() ? nullptr : &m_contents.tables[size_t(*place)];
}

const TableInfo *Catalog::findTable(QStringView name) const
{
    if (const StoredTable *table = findStored(name))
        return &table->info;
    if (!isSystemTableName(name))
        return nullptr;
    for (const TableInfo &table : systemTables()) {
        if (name.compare(table.name, Qt::CaseInsensitive) == 0)
            return &table;
    }
    return nullptr;
}

const QueryInfo *Catalog::findQuery(QStringView name) const
{
    const auto query = m_contents.queries.constFind(folded(name));
    return query == m_contents.queries.cend() ? nullptr : &*query;
}

QStringList Catalog::sourceNames() const
{
    QStringList names;
    for (const StoredTable &table : m_contents.tables) {
        if (!(table.info.attributes & (HiddenObject | SystemObject)))
            names.append(table.info.name);
    }
    return names + queryNames();
}

const RelationInfo *Catalog::findRelation(QStringView name) const
{
    for (const RelationInfo &relation : m_contents.relations) {
        if (name.compare(relation.name, Qt::CaseInsensitive) == 0)
            return &relation;
    }
    return nullptr;
}

QStringList Catalog::queryNames() const
{
    QStringList names;
    for (const QueryInfo &query : m_contents.queries)
        names.append(query.name);
    return names;
}

QString Catalog::property(const QString &name) const
{
    return m_contents.properties.value(folded(name));
}

void Catalog::change(const std::function<void()> &steps)
{
    if (m_connection.isReadOnly())
        throw engineError(error::ReadOnly, m_connection.source());
    if (m_beforeChange)
        m_beforeChange();
    m_connection.releaseRead();
    // Declared before the savepoint, so that its destructor runs after the savepoint was undone.
    ReloadOnFailure reload(*this);
    Savepoint savepoint(m_connection);
    steps();
    m_connection.throwIfCancelled();
    // The version is part of the transaction: other connections see it together with the change.
    m_connection.run(u"PRAGMA user_version = %1"_s.arg((m_connection.catalogVersion() + 1) & 0x7fffffff));
    savepoint.release();
    reload.disarm();
    load();
}

} // namespace dao::store
