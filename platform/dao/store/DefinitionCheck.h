#pragma once
#include "Catalog.h"

namespace dao::store {

/// Definitions as they are given, made complete and refused where they cannot be: each function returns what is to be
/// stored, with names as the catalog spells them and sizes and attributes filled in.
class DefinitionCheck
{
public:
    DefinitionCheck(const Catalog &catalog, const QString &source)
        : m_catalog(catalog)
        , m_source(source)
    {
    }

    /// Of a table or stored query: 3125.
    void name(const QString &name) const;
    /// Of a new table: 3010, 3012 when the name is taken.
    TableInfo table(const TableInfo &given) const;
    /// The same for a table that is there already.
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

/// Folded names.
QSet<QString> fieldNames(const IndexInfo &index);
QSet<QString> keyFieldNames(const RelationInfo &relation);
/// The primary side has a unique index on exactly the relation's fields.
bool hasUniqueIndex(const TableInfo &table, const RelationInfo &relation);

} // namespace dao::store
