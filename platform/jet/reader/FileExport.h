#pragma once
#include "FrameWriter.h"

#include <jet/format/Catalog.h>
#include <jet/format/TableDefinition.h>
#include <jet/format/TextCodec.h>

namespace jet::format {
class RowEncoder;
class TableScan;
} // namespace jet::format

namespace jet::reader {

/// Sends a whole file: the schema, the rows of each table, and a remark on everything that is not carried over or could
/// not be read.
class FileExport
{
public:
    FileExport(format::Pages &pages, FrameWriter &out);

    /// Throws format::Damage if the catalog cannot be read.
    void run(bool schemaOnly);

private:
    struct Table
    {
        format::CatalogEntry entry;
        format::TableDefinition definition;
    };

    void remark(wire::RemarkCode code, const QString &object, const QString &detail = {}, qint64 count = 0,
                qint64 expected = 0);
    void remark(wire::RemarkCode code, const QString &object, const format::Damage &damage, const QString &detail = {},
                qint64 count = 0, qint64 expected = 0);

    void remarkState(const format::SystemTableState &state, wire::RemarkCode damaged, const QString &table);
    void remarkCount(const QString &table, qint64 read, qint64 stated);
    void checkSystemTable(const format::CatalogEntry &entry);
    void sortObjects(const format::Catalog &catalog);
    void remarkObjects(const format::Catalog &catalog, format::ObjectKind kind, wire::RemarkCode code);
    void sendTable(const format::CatalogEntry &entry);
    void sendRelations(const format::Catalog &catalog);
    void sendQueries(const format::Catalog &catalog);
    void sendRows(const Table &table);
    qint64 sendRowFrames(format::TableScan &scan, format::RowEncoder &encoder);
    void remarkScan(const Table &table, const format::TableScan &scan);
    void remarkValues(const Table &table, const format::RowEncoder &encoder);

    format::Pages &m_pages;
    FrameWriter &m_out;
    format::TextCodec m_text;
    QList<Table> m_tables;
    qint64 m_totalRows = 0;
};

} // namespace jet::reader
