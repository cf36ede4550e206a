#include "Catalog.h"

using namespace Qt::StringLiterals;

namespace jet::format {
namespace {

// Page of the definition of the catalog table; the same in every file.
constexpr quint32 kCatalogPage = 2;
constexpr qsizetype kMostRelationFields = 32;

QString linkTarget(SystemTable &table, qsizetype database, qsizetype connect, qsizetype foreignName)
{
    QString target = table.text(database);
    if (target.isEmpty())
        target = table.text(connect);
    const QString name = table.text(foreignName);
    return name.isEmpty() ? target : target + u" ("_s + name + u")"_s;
}

bool isLinked(ObjectKind kind)
{
    return kind == ObjectKind::OdbcTable || kind == ObjectKind::LinkedTable;
}

} // namespace

const CatalogEntry *Catalog::table(QStringView name) const
{
    for (const CatalogEntry &entry : entries) {
        if (entry.kind == ObjectKind::Table && entry.name.compare(name, Qt::CaseInsensitive) == 0)
            return &entry;
    }
    return nullptr;
}

Catalog readCatalog(Pages &pages, const TextCodec &text)
{
    SystemTable table(pages, text, kCatalogPage);
    const qsizetype id = table.column(u"Id");
    const qsizetype name = table.column(u"Name");
    const qsizetype kind = table.column(u"Type");
    const qsizetype flags = table.column(u"Flags");
    const qsizetype properties = table.column(u"LvProp");
    const qsizetype database = table.column(u"Database");
    const qsizetype connect = table.column(u"Connect");
    const qsizetype foreignName = table.column(u"ForeignName");
    Catalog catalog;
    while (table.next()) {
        CatalogEntry entry;
        entry.id = quint32(table.integer(id));
        entry.name = table.text(name);
        entry.kind = ObjectKind(qint16(table.integer(kind)));
        entry.flags = quint32(table.integer(flags));
        if (entry.kind == ObjectKind::Table)
            entry.properties = table.bytes(properties);
        else if (isLinked(entry.kind))
            entry.linkTarget = linkTarget(table, database, connect, foreignName);
        catalog.entries.append(entry);
    }
    catalog.state = table.state();
    return catalog;
}

Relations readRelations(Pages &pages, const TextCodec &text, const Catalog &catalog)
{
    const CatalogEntry *entry = catalog.table(u"MSysRelationships");
    if (!entry)
        throw Damage(Fault::BadName);
    SystemTable table(pages, text, entry->definitionPage());
    const qsizetype name = table.column(u"szRelationship");
    const qsizetype primary = table.column(u"szReferencedObject");
    const qsizetype primaryField = table.column(u"szReferencedColumn");
    const qsizetype foreign = table.column(u"szObject");
    const qsizetype foreignField = table.column(u"szColumn");
    const qsizetype attributes = table.column(u"grbit");
    const qsizetype count = table.column(u"ccolumn");
    const qsizetype place = table.column(u"icolumn");

    bool consistent = true;
    QList<dao::RelationInfo> relations;
    QHash<QString, qsizetype> byName;
    while (table.next()) {
        const QString relationName = table.text(name);
        const qsizetype fields = table.integer(count);
        const qsizetype field = table.integer(place);
        if (fields < 1 || fields > kMostRelationFields || field < 0 || field >= fields) {
            consistent = false;
            continue;
        }
        const QString key = relationName.toCaseFolded();
        if (!byName.contains(key)) {
            byName.insert(key, relations.size());
            relations.append({relationName, table.text(primary), table.text(foreign), table.integer(attributes), {}});
            relations.last().fields.resize(fields);
        }
        dao::RelationInfo &relation = relations[byName.value(key)];
        if (relation.fields.size() != fields)
            consistent = false;
        else
            relation.fields[field] = {table.text(primaryField), table.text(foreignField)};
    }
    relations.removeIf([&](const dao::RelationInfo &relation) {
        const CatalogEntry *to = catalog.table(relation.table);
        const CatalogEntry *from = catalog.table(relation.foreignTable);
        return to && from && to->isSystem() && from->isSystem();
    });
    SystemTableState state = table.state();
    state.damaged = state.damaged || !consistent;
    return {relations, state};
}

QueryRows readQueryRows(Pages &pages, const TextCodec &text, const Catalog &catalog)
{
    const CatalogEntry *entry = catalog.table(u"MSysQueries");
    if (!entry)
        throw Damage(Fault::BadName);
    SystemTable table(pages, text, entry->definitionPage());
    const qsizetype object = table.column(u"ObjectId");
    const qsizetype attribute = table.column(u"Attribute");
    const qsizetype flag = table.column(u"Flag");
    const qsizetype expression = table.column(u"Expression");
    const qsizetype name1 = table.column(u"Name1");
    const qsizetype name2 = table.column(u"Name2");
    const qsizetype order = table.column(u"Order");
    QHash<quint32, QList<QueryRow>> queries;
    while (table.next()) {
        queries[quint32(table.integer(object))].append({table.integer(attribute), table.integer(flag),
                                                        table.text(expression), table.text(name1), table.text(name2),
                                                        table.bytes(order)});
    }
    for (QList<QueryRow> &rows : queries) {
        std::stable_sort(rows.begin(), rows.end(), [](const QueryRow &a, const QueryRow &b) {
            return a.attribute != b.attribute ? a.attribute < b.attribute : a.order < b.order;
        });
    }
    return {queries, table.state()};
}

} // namespace jet::format
