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
    int codePage = 0;   ///< of the text of Jet 3 files
    quint32 pageSize = 0;
    quint32 pageCount = 0;
};

/// A table: what the engine knows of one, and what only Jet keeps.
struct TableFacts
{
    dao::TableInfo info;
    QString description;
    QStringList fieldDescriptions; ///< in the order of info.fields
    quint32 rowCount = 0;          ///< as the file states it
    quint32 lastAutoNumber = 0;    ///< the last number given to an autonumber field; 0 when there is none
};

/// A remark or an error: its code, whom it concerns, how often, and the fault behind it with its page.
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

/// The opposite ways; ProtocolError when a payload does not hold what it should.
FileFacts takeFileFacts(WireReader &reader);
TableFacts takeTableFacts(WireReader &reader);
dao::RelationInfo takeRelation(WireReader &reader);
dao::QueryInfo takeQuery(WireReader &reader);
Note takeNote(WireReader &reader);

} // namespace jet::wire
