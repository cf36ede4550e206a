#include "FileExport.h"

#include <jet/format/QueryText.h>
#include <jet/format/RowEncoder.h>
#include <jet/format/TableScan.h>
#include <jet/format/TableSchema.h>

using namespace Qt::StringLiterals;

namespace jet::reader {

using format::CatalogEntry;
using format::Damage;
using format::ObjectKind;
using wire::Frame;
using wire::RemarkCode;

FileExport::FileExport(format::Pages &pages, FrameWriter &out)
    : m_pages(pages)
    , m_out(out)
    , m_text(pages.isJet4(), pages.facts().codePage)
{
}

void FileExport::remark(RemarkCode code, const QString &object, const QString &detail, qint64 count, qint64 expected)
{
    m_out.send(Frame::Remark, wire::Note{quint16(code), object, detail, count, expected, wire::Fault::None, 0});
}

void FileExport::remark(RemarkCode code, const QString &object, const Damage &damage, const QString &detail,
                        qint64 count, qint64 expected)
{
    m_out.send(Frame::Remark,
               wire::Note{quint16(code), object, detail, count, expected, damage.fault(), damage.page()});
}

void FileExport::run(bool schemaOnly)
{
    m_out.send(Frame::File, m_pages.facts());
    const format::Catalog catalog = format::readCatalog(m_pages, m_text);
    remarkState(catalog.state, RemarkCode::CatalogIncomplete, u"MSysObjects"_s);
    sortObjects(catalog);
    sendRelations(catalog);
    sendQueries(catalog);
    wire::WireWriter counts;
    counts.u32(quint32(m_tables.size()));
    m_out.frame(Frame::SchemaEnd, counts);
    if (!schemaOnly) {
        for (const Table &table : m_tables)
            sendRows(table);
    }
    wire::WireWriter totals;
    totals.i64(m_totalRows);
    m_out.frame(Frame::End, totals);
}

void FileExport::remarkState(const format::SystemTableState &state, RemarkCode damaged, const QString &table)
{
    if (state.damaged)
        remark(damaged, {}, {}, state.rowsRead, state.rowsStated);
    else
        remarkCount(table, state.rowsRead, state.rowsStated);
}

// Intact files exist whose count is wrong by one. A larger difference means lost pages.
void FileExport::remarkCount(const QString &table, qint64 read, qint64 stated)
{
    if (read + 1 < stated)
        remark(RemarkCode::RowsMissing, table, {}, read, stated);
    else if (read != stated)
        remark(RemarkCode::RowCountDiffers, table, {}, read, stated);
}

void FileExport::sortObjects(const format::Catalog &catalog)
{
    for (const CatalogEntry &entry : catalog.entries) {
        switch (entry.kind) {
        case ObjectKind::Table:
            if (entry.isInternal())
                remark(RemarkCode::DeletedObjects, entry.name);
            else if (!entry.isSystem())
                sendTable(entry);
            else
                checkSystemTable(entry);
            break;
        case ObjectKind::OdbcTable:
        case ObjectKind::LinkedTable:
            remark(RemarkCode::LinkedTable, entry.name, entry.linkTarget);
            break;
        case ObjectKind::Query:
        case ObjectKind::Database:
        case ObjectKind::Container:
        case ObjectKind::SubDatasheet:
        case ObjectKind::Form:
        case ObjectKind::Macro:
        case ObjectKind::Report:
        case ObjectKind::Module:
        case ObjectKind::Document:
        case ObjectKind::User:
            break;
        case ObjectKind::Page:
        default:
            remark(RemarkCode::UnknownObject, entry.name);
        }
    }
    remarkObjects(catalog, ObjectKind::Form, RemarkCode::Forms);
    remarkObjects(catalog, ObjectKind::Report, RemarkCode::Reports);
    remarkObjects(catalog, ObjectKind::Macro, RemarkCode::Macros);
    remarkObjects(catalog, ObjectKind::Module, RemarkCode::Modules);
}

// The pages at the end of a file may belong to tables that are not exported. If they are missing, the file is still
// incomplete.
void FileExport::checkSystemTable(const CatalogEntry &entry)
{
    if (!entry.name.startsWith(u"MSys", Qt::CaseInsensitive))
        remark(RemarkCode::SystemTable, entry.name);
    const auto tell = [&](const Damage &damage, int pages) {
        if (damage.fault() == wire::Fault::PageBeyondEnd)
            remark(RemarkCode::SystemPagesMissing, entry.name, damage, {}, pages);
    };
    try {
        const format::TableDefinition table = format::readTableDefinition(m_pages, m_text, entry.definitionPage());
        const format::OwnedPages owned = format::readOwnedPages(m_pages, table.ownedPages);
        if (owned.firstFault)
            tell(*owned.firstFault, owned.faults);
    } catch (const Damage &damage) {
        tell(damage, 1);
    }
}

void FileExport::remarkObjects(const format::Catalog &catalog, ObjectKind kind, RemarkCode code)
{
    QStringList names;
    for (const CatalogEntry &entry : catalog.entries) {
        if (entry.kind == kind && !entry.isInternal())
            names.append(entry.name);
    }
    if (!names.isEmpty())
        remark(code, {}, names.join(u", "), names.size());
}

void FileExport::sendTable(const CatalogEntry &entry)
{
    Table table{entry, {}};
    try {
        table.definition = format::readTableDefinition(m_pages, m_text, entry.definitionPage());
    } catch (const Damage &damage) {
        remark(RemarkCode::TableDamaged, entry.name, damage);
        return;
    }
    format::Properties properties;
    const QByteArray &block = entry.properties;
    const format::Bytes bytes(reinterpret_cast<const uchar *>(block.constData()), size_t(block.size()));
    if (!bytes.empty() && !properties.parse(bytes, m_pages.isJet4(), m_text))
        remark(RemarkCode::PropertiesDamaged, entry.name);
    if (table.definition.indexFault)
        remark(RemarkCode::IndexesDamaged, entry.name, *table.definition.indexFault);
    m_out.send(Frame::Table, format::tableSchema(entry, table.definition, properties, m_pages.isJet4()));
    m_tables.append(table);
}

void FileExport::sendRelations(const format::Catalog &catalog)
{
    try {
        const format::Relations found = format::readRelations(m_pages, m_text, catalog);
        for (const dao::RelationInfo &relation : found.relations)
            m_out.send(Frame::Relation, relation);
        remarkState(found.state, RemarkCode::RelationDamaged, u"MSysRelationships"_s);
    } catch (const Damage &damage) {
        remark(RemarkCode::RelationDamaged, {}, damage);
    }
}

void FileExport::sendQueries(const format::Catalog &catalog)
{
    QHash<quint32, QList<format::QueryRow>> rows;
    try {
        const format::QueryRows found = format::readQueryRows(m_pages, m_text, catalog);
        remarkState(found.state, RemarkCode::QueriesDamaged, u"MSysQueries"_s);
        rows = found.queries;
    } catch (const Damage &damage) {
        remark(RemarkCode::QueriesDamaged, {}, damage);
        return;
    }
    qint64 internal = 0;
    for (const CatalogEntry &entry : catalog.entries) {
        if (entry.kind != ObjectKind::Query)
            continue;
        if (entry.isInternal()) {
            ++internal;
            continue;
        }
        try {
            const QList<format::QueryRow> &own = rows[entry.id];
            m_out.send(Frame::Query, dao::QueryInfo{entry.name, format::queryText(own)});
            if (format::isPassThrough(own))
                remark(RemarkCode::PassThroughQuery, entry.name);
        } catch (const Damage &damage) {
            remark(RemarkCode::QueryDamaged, entry.name, damage);
        }
    }
    if (internal > 0)
        remark(RemarkCode::HiddenQueries, {}, {}, internal);
}

void FileExport::sendRows(const Table &table)
{
    m_out.frame(Frame::TableBegin, {});
    qint64 rows = 0;
    try {
        format::TableScan scan(m_pages, table.definition);
        format::RowEncoder encoder(m_pages, m_text, table.definition);
        rows = sendRowFrames(scan, encoder);
        remarkScan(table, scan);
        remarkValues(table, encoder);
    } catch (const Damage &damage) {
        remark(RemarkCode::RowsDamaged, table.entry.name, damage, {}, 0, table.definition.rowCount);
    }
    m_totalRows += rows;
    wire::WireWriter end;
    end.i64(rows);
    m_out.frame(Frame::TableEnd, end);
}

qint64 FileExport::sendRowFrames(format::TableScan &scan, format::RowEncoder &encoder)
{
    wire::WireWriter payload;
    quint32 inFrame = 0;
    const auto flush = [&] {
        payload.patchU32(0, inFrame);
        m_out.frame(Frame::Rows, payload);
        payload.clear();
        inFrame = 0;
    };
    while (const format::Row *row = scan.next()) {
        if (inFrame == 0)
            payload.u32(0);
        encoder.encode(*row, payload);
        ++inFrame;
        if (size_t(payload.size()) >= wire::kRowsFrame)
            flush();
    }
    if (inFrame > 0)
        flush();
    return scan.rowsRead();
}

void FileExport::remarkScan(const Table &table, const format::TableScan &scan)
{
    const format::ScanFaults &faults = scan.faults();
    const QString &name = table.entry.name;
    if (faults.pages > 0)
        remark(RemarkCode::PagesDamaged, name, *faults.firstPage, {}, faults.pages);
    if (faults.rows > 0)
        remark(RemarkCode::RowsDamaged, name, *faults.firstRow, {}, faults.rows, table.definition.rowCount);
    remarkCount(name, scan.rowsRead(), table.definition.rowCount);
}

void FileExport::remarkValues(const Table &table, const format::RowEncoder &encoder)
{
    for (qsizetype i = 0; i < table.definition.columns.size(); ++i) {
        const format::ColumnFaults &faults = encoder.faults()[size_t(i)];
        const QString &field = table.definition.columns.at(i).name;
        if (faults.damaged > 0)
            remark(RemarkCode::ValueDamaged, table.entry.name, *faults.first, field, faults.damaged);
        if (faults.undecodable > 0)
            remark(RemarkCode::TextDamaged, table.entry.name, field, faults.undecodable);
        if (faults.rounded > 0)
            remark(RemarkCode::DecimalRounded, table.entry.name, field, faults.rounded);
    }
}

} // namespace jet::reader
