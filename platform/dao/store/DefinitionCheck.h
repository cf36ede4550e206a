#pragma once
#include "Catalog.h"

namespace dao::store {

/// Completes definitions and refuses invalid ones. Each function returns the definition to be stored: names spelled as
/// in the catalog, sizes and attributes set.
class DefinitionCheck
{
public:
    DefinitionCheck(const Catalog &catalog, const QString &source)
        : m_catalog(catalog)
        , m_source(source)
    {
    }

    /// The name of a table or stored query. Error 3125.
    void name(const QString &name) const;
    /// A new table. Errors 3010 or 3012 if the name is in use.
    TableInfo table(const TableInfo &given) const;
    /// A new definition for an existing table.
    TableInfo shape(const TableInfo &given) const;
    FieldInfo field(const FieldInfo &given) const;
    IndexInfo index(const TableInfo &table, const IndexInfo &given) const;
    RelationInfo relation(const RelationInfo &given) const;

private:
    [[noreturn]] void fail(int number, const QStringList &arguments = {}) const;
    void plainName(const QString &name) const;
    const TableInfo &storedTable(const QString &name) const;

    const Catalog &m_catalog;
    QString m_source;
};

/// Case-folded names.
QSet<QString> fieldNames(const IndexInfo &index);
QSet<QString> keyFieldNames(const RelationInfo &relation);
/// True if the primary table has a unique index on exactly the fields of the relation.
bool hasUniqueIndex(const TableInfo &table, const RelationInfo &relation);

} // namespace dao::store
