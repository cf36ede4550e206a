#pragma once
#include "SystemTable.h"

#include <dao/values/Schema.h>
#include <QHash>

namespace jet::format {

/// Kinds of objects, with the numbers used in the file's catalog.
enum class ObjectKind : qint16 {
    Table = 1,
    Database = 2,
    Container = 3,
    OdbcTable = 4,
    Query = 5,
    LinkedTable = 6,
    SubDatasheet = 8,
    Form = -32768,
    Macro = -32766,
    Report = -32764,
    Module = -32761,
    User = -32758,
    Document = -32757,
    Page = -32756
};

struct CatalogEntry
{
    quint32 id = 0;
    QString name;
    ObjectKind kind = ObjectKind::Table;
    quint32 flags = 0;
    QByteArray properties;
    QString linkTarget; ///< for a linked table: file or connection, and the table there

    /// First page of a table's definition.
    quint32 definitionPage() const { return id & 0x00FFFFFF; }
    bool isSystem() const { return flags & 0x80000002; }
    bool isHidden() const { return flags & 0x00000008; }
    /// Names of deleted objects, and of objects that belong to forms and reports, begin with a tilde.
    bool isInternal() const { return name.startsWith(u'~'); }
};

/// The objects of a file.
struct Catalog
{
    QList<CatalogEntry> entries;
    SystemTableState state;

    const CatalogEntry *table(QStringView name) const;
};

/// Throws Damage if the catalog cannot be read at all.
Catalog readCatalog(Pages &pages, const TextCodec &text);

struct Relations
{
    QList<dao::RelationInfo> relations;
    SystemTableState state;
};

/// Reads the relations, except those between system tables.
Relations readRelations(Pages &pages, const TextCodec &text, const Catalog &catalog);

/// One row of the table of stored queries.
struct QueryRow
{
    int attribute = 0;
    int flag = 0;
    QString expression;
    QString name1;
    QString name2;
    QByteArray order;
};

/// The rows of all stored queries by object id, each list in its reading order.
struct QueryRows
{
    QHash<quint32, QList<QueryRow>> queries;
    SystemTableState state;
};
QueryRows readQueryRows(Pages &pages, const TextCodec &text, const Catalog &catalog);

} // namespace jet::format
