#pragma once
#include "JetError.h"

#include <dao/values/Progress.h>
#include <dao/values/Schema.h>
#include <dao/values/Value.h>

#include <memory>

namespace jet {

/// Whether a file's first bytes are those of a Jet database. Files of the newer format count too, so that reading them
/// says why they cannot be read.
bool isJetFile(const QString &path);

/// Something that could not be carried over, or not as it was.
struct Remark
{
    enum class Kind {
        NotCarried, ///< of a kind that this program has no place for: forms, linked tables
        Changed,    ///< carried over, but not to the last digit or character
        Suspect,    ///< read whole as far as can be seen, but the file contradicts itself
        Lost        ///< damaged: content is missing
    };
    Kind kind = Kind::NotCarried;
    QString object; ///< the table or query concerned; may be empty
    QString text;   ///< a sentence for the user
};

/// A table: what the engine knows of one, and what only Jet keeps.
struct Table
{
    dao::TableInfo info; ///< without keyColumn
    QString description;
    QStringList fieldDescriptions; ///< in the order of info.fields
    qint64 rowCount = 0;           ///< as the file states it
    qint64 lastAutoNumber = 0;     ///< the last number given to the autonumber field; 0 when there is none
};

struct Schema
{
    int jetVersion = 0;  ///< 3 (Access 97) or 4 (Access 2000 to 2003)
    int codePage = 0;    ///< of the text of a Jet 3 file
    QList<Table> tables; ///< those of users, in the order of the file's catalog
    QList<dao::RelationInfo> relations;
    QList<dao::QueryInfo> queries; ///< as SQL text in the dialect of the engine
};

/// Takes what is read: the schema once, then for each of its tables in turn beginTable, row for each row, endTable.
/// A value has the kind of its field's type (dao::valueTypeOf), or is Null. What these throw ends the reading.
class Sink
{
public:
    virtual ~Sink() = default;
    virtual void schema(const Schema &schema) = 0;
    virtual void beginTable(const dao::TableInfo &table) = 0;
    virtual void row(const QList<dao::Value> &values) = 0;
    /// rows: how many were given.
    virtual void endTable(const dao::TableInfo &table, qint64 rows) = 0;
};

struct ReadOptions
{
    /// The reading program. Empty: the one that ARVO_JET_READER names, else arvo-jet-reader beside the running program.
    QString program;
    /// Seconds without a byte from the reading process after which it is given up.
    int patience = 60;
};

/// Reads a Jet 3 or Jet 4 file in a process of its own with limits on time and memory, so that no file, however
/// damaged, can harm this one. The file is not written to. What is missing is told by remarks(), never left out in
/// silence; a caller must look at them before it presents the content as whole.
class JetReader
{
public:
    explicit JetReader(const QString &path, const ReadOptions &options = {});
    ~JetReader();
    JetReader(const JetReader &) = delete;
    JetReader &operator=(const JetReader &) = delete;

    /// The whole file. Errors: JetError; JetCancelled when progress (may be null) says so, which is asked about ten
    /// times a second. After either, what the sink was given is not the file's content and must be dropped.
    void read(Sink &sink, dao::Progress *progress = nullptr);
    /// The schema alone; as quick for a large file as for a small one. The rows' remarks are missing then.
    Schema readSchema(dao::Progress *progress = nullptr);

    /// Of the last reading.
    const QList<Remark> &remarks() const { return m_remarks; }
    /// Whether one of them is of that kind.
    bool hasRemark(Remark::Kind kind) const;

private:
    void run(Sink &sink, dao::Progress *progress, bool schemaOnly);

    QString m_path;
    ReadOptions m_options;
    QList<Remark> m_remarks;
};

} // namespace jet
