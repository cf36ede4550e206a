#pragma once
#include <dao/values/Schema.h>
#include <dao/values/Value.h>

namespace jet {

/// Content that could not be carried over, or was changed.
struct Remark
{
    enum class Kind {
        NotCarried, ///< of a kind that this program does not support: forms, linked tables
        Changed,    ///< carried over, but digits or characters were lost
        Suspect,    ///< apparently read completely, but the file contradicts itself
        Lost        ///< damaged: content is missing
    };
    Kind kind = Kind::NotCarried;
    QString object; ///< name of the table or query; may be empty
    QString text;   ///< a sentence for the user
};

/// A table: its description for the engine, and the data that only Jet has.
struct Table
{
    dao::TableInfo info; ///< without keyColumn
    QString description;
    QStringList fieldDescriptions; ///< in the order of info.fields
    qint64 rowCount = 0;           ///< as stated in the file
    qint64 lastAutoNumber = 0;     ///< last number assigned by the autonumber field; 0 if there is none
};

struct Schema
{
    int jetVersion = 0;  ///< 3 (Access 97) or 4 (Access 2000 to 2003)
    int codePage = 0;    ///< for the text of a Jet 3 file
    QList<Table> tables; ///< user tables, in the order of the file's catalog
    QList<dao::RelationInfo> relations;
    QList<dao::QueryInfo> queries; ///< as SQL text in the dialect of the engine
};

/// Receives the content: the schema once, then for each table in order beginTable, row for each row, endTable. A value
/// has the type of its field (dao::valueTypeOf) or is Null. An exception from these functions ends the reading.
class Sink
{
public:
    virtual ~Sink() = default;
    virtual void schema(const Schema &schema) = 0;
    virtual void beginTable(const dao::TableInfo &table) = 0;
    virtual void row(const QList<dao::Value> &values) = 0;
    /// rows: number of rows passed to row().
    virtual void endTable(const dao::TableInfo &table, qint64 rows) = 0;
};

struct ReadOptions
{
    /// The reading program. If empty: the one named by ARVO_JET_READER, else the arvo-jet-reader of this installation.
    QString program;
    /// If the reading process sends nothing for this many seconds, the reading is abandoned.
    int patience = 60;
};

} // namespace jet
