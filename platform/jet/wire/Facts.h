#pragma once
#include "Protocol.h"
#include "WireReader.h"
#include "WireWriter.h"

#include <dao/values/Schema.h>

namespace jet::wire {

/// The file as a whole.
struct FileFacts
{
    int jetVersion = 0; ///< 3 or 4
    int codePage = 0;   ///< for the text of Jet 3 files
    quint32 pageSize = 0;
    quint32 pageCount = 0;
};

/// A table: its description for the engine, and the data that only Jet has.
struct TableFacts
{
    dao::TableInfo info;
    QString description;
    QStringList fieldDescriptions; ///< in the order of info.fields
    quint32 rowCount = 0;          ///< as stated in the file
    quint32 lastAutoNumber = 0;    ///< last number assigned by an autonumber field; 0 if there is none
};

/// A remark or an error: its code, the object, a count, and the cause with its page.
struct Note
{
    std::uint16_t code = 0;
    QString object;
    QString detail; ///< a field, a list of names, the target of a link
    qint64 count = 0;
    qint64 expected = 0;
    Fault fault = Fault::None;
    quint32 page = 0;
};

void put(WireWriter &writer, const FileFacts &facts);
void put(WireWriter &writer, const TableFacts &facts);
void put(WireWriter &writer, const dao::RelationInfo &relation);
void put(WireWriter &writer, const dao::QueryInfo &query);
void put(WireWriter &writer, const Note &note);

/// Inverse functions. Throw ProtocolError if the payload is invalid.
FileFacts takeFileFacts(WireReader &reader);
TableFacts takeTableFacts(WireReader &reader);
dao::RelationInfo takeRelation(WireReader &reader);
dao::QueryInfo takeQuery(WireReader &reader);
Note takeNote(WireReader &reader);

} // namespace jet::wire
