#include "Facts.h"

namespace jet::wire {
namespace {

constexpr size_t kLeastText = 4;

void putField(WireWriter &writer, const dao::FieldInfo &field)
{
    writer.text(field.name);
    writer.u8(quint8(field.type));
    writer.u32(quint32(field.size));
    writer.u32(quint32(field.ordinal));
    writer.u32(quint32(field.attributes));
    writer.u8(field.required);
    writer.u8(field.allowZeroLength);
    writer.text(field.defaultValue);
    writer.text(field.validationRule);
    writer.text(field.validationText);
}

dao::FieldInfo takeField(WireReader &reader)
{
    dao::FieldInfo field;
    field.name = reader.text();
    field.type = dao::DataType(reader.u8());
    field.size = int(reader.u32());
    field.ordinal = int(reader.u32());
    field.attributes = int(reader.u32());
    field.required = reader.flag();
    field.allowZeroLength = reader.flag();
    field.defaultValue = reader.text();
    field.validationRule = reader.text();
    field.validationText = reader.text();
    return field;
}

void putIndex(WireWriter &writer, const dao::IndexInfo &index)
{
    writer.text(index.name);
    writer.u32(quint32(index.fields.size()));
    for (const dao::IndexField &field : index.fields) {
        writer.text(field.name);
        writer.u8(field.descending);
    }
    writer.u8(index.primary);
    writer.u8(index.unique);
    writer.u8(index.ignoreNulls);
    writer.u8(index.required);
    writer.u8(index.foreign);
}

dao::IndexInfo takeIndex(WireReader &reader)
{
    dao::IndexInfo index;
    index.name = reader.text();
    for (quint32 left = reader.count(kLeastText + 1); left > 0; --left) {
        dao::IndexField field;
        field.name = reader.text();
        field.descending = reader.flag();
        index.fields.append(field);
    }
    index.primary = reader.flag();
    index.unique = reader.flag();
    index.ignoreNulls = reader.flag();
    index.required = reader.flag();
    index.foreign = reader.flag();
    return index;
}

} // namespace

void put(WireWriter &writer, const FileFacts &facts)
{
    writer.u32(kMagic);
    writer.u32(quint32(facts.jetVersion));
    writer.u32(quint32(facts.codePage));
    writer.u32(facts.pageSize);
    writer.u32(facts.pageCount);
}

FileFacts takeFileFacts(WireReader &reader)
{
    if (reader.u32() != kMagic)
        throw ProtocolError();
    FileFacts facts;
    facts.jetVersion = int(reader.u32());
    facts.codePage = int(reader.u32());
    facts.pageSize = reader.u32();
    facts.pageCount = reader.u32();
    return facts;
}

void put(WireWriter &writer, const TableFacts &facts)
{
    writer.text(facts.info.name);
    writer.u32(quint32(facts.info.attributes));
    writer.u32(quint32(facts.info.fields.size()));
    for (qsizetype i = 0; i < facts.info.fields.size(); ++i) {
        putField(writer, facts.info.fields.at(i));
        writer.text(facts.fieldDescriptions.value(i));
    }
    writer.u32(quint32(facts.info.indexes.size()));
    for (const dao::IndexInfo &index : facts.info.indexes)
        putIndex(writer, index);
    writer.text(facts.info.validationRule);
    writer.text(facts.info.validationText);
    writer.text(facts.description);
    writer.u32(facts.rowCount);
    writer.u32(facts.lastAutoNumber);
}

TableFacts takeTableFacts(WireReader &reader)
{
    TableFacts facts;
    facts.info.name = reader.text();
    facts.info.attributes = int(reader.u32());
    for (quint32 left = reader.count(kLeastText); left > 0; --left) {
        facts.info.fields.append(takeField(reader));
        facts.fieldDescriptions.append(reader.text());
    }
    for (quint32 left = reader.count(kLeastText); left > 0; --left)
        facts.info.indexes.append(takeIndex(reader));
    facts.info.validationRule = reader.text();
    facts.info.validationText = reader.text();
    facts.description = reader.text();
    facts.rowCount = reader.u32();
    facts.lastAutoNumber = reader.u32();
    return facts;
}

void put(WireWriter &writer, const dao::RelationInfo &relation)
{
    writer.text(relation.name);
    writer.text(relation.table);
    writer.text(relation.foreignTable);
    writer.u32(quint32(relation.attributes));
    writer.u32(quint32(relation.fields.size()));
    for (const dao::RelationField &field : relation.fields) {
        writer.text(field.field);
        writer.text(field.foreignField);
    }
}

dao::RelationInfo takeRelation(WireReader &reader)
{
    dao::RelationInfo relation;
    relation.name = reader.text();
    relation.table = reader.text();
    relation.foreignTable = reader.text();
    relation.attributes = int(reader.u32());
    for (quint32 left = reader.count(2 * kLeastText); left > 0; --left) {
        dao::RelationField field;
        field.field = reader.text();
        field.foreignField = reader.text();
        relation.fields.append(field);
    }
    return relation;
}

void put(WireWriter &writer, const dao::QueryInfo &query)
{
    writer.text(query.name);
    writer.text(query.sql);
}

dao::QueryInfo takeQuery(WireReader &reader)
{
    dao::QueryInfo query;
    query.name = reader.text();
    query.sql = reader.text();
    return query;
}

void put(WireWriter &writer, const Note &note)
{
    writer.u16(note.code);
    writer.text(note.object);
    writer.text(note.detail);
    writer.i64(note.count);
    writer.i64(note.expected);
    writer.u16(quint16(note.fault));
    writer.u32(note.page);
}

Note takeNote(WireReader &reader)
{
    Note note;
    note.code = reader.u16();
    note.object = reader.text();
    note.detail = reader.text();
    note.count = reader.i64();
    note.expected = reader.i64();
    note.fault = Fault(reader.u16());
    note.page = reader.u32();
    return note;
}

} // namespace jet::wire
