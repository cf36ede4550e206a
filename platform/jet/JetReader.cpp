#include "JetReader.h"

#include "Messages.h"
#include "ReaderProcess.h"
#include "ValueStream.h"

#include <jet/wire/FileHead.h>

using namespace Qt::StringLiterals;

namespace jet {
namespace {

constexpr int kRowsBetweenChecks = 256;

// Parses the stream from the first to the last frame and checks the order of frames.
class StreamParser
{
public:
    StreamParser(const QString &path, ReaderProcess &process, Sink &sink, QList<Remark> &remarks)
        : m_path(path)
        , m_process(process)
        , m_sink(sink)
        , m_remarks(remarks)
    {
    }

    void run(bool schemaOnly);

private:
    struct Next
    {
        wire::Frame kind;
        wire::WireReader payload;
    };
    Next next();
    void readSchema();
    void addToSchema(wire::Frame kind, wire::WireReader &payload);
    void readTable(const dao::TableInfo &table);
    qint64 readRows(const dao::TableInfo &table, wire::WireReader &payload);

    QString m_path;
    ReaderProcess &m_process;
    Sink &m_sink;
    QList<Remark> &m_remarks;
    Schema m_schema;
    QList<dao::Value> m_row;
};

// Remarks may occur between any two frames; an error ends the reading.
StreamParser::Next StreamParser::next()
{
    for (;;) {
        const ReaderProcess::Frame frame = m_process.next();
        wire::WireReader payload(frame.payload);
        if (frame.kind == wire::Frame::Error)
            throw errorFor(m_path, wire::takeNote(payload));
        if (frame.kind != wire::Frame::Remark)
            return {frame.kind, payload};
        m_remarks.append(remarkFor(wire::takeNote(payload)));
        payload.expectEnd();
    }
}

void StreamParser::addToSchema(wire::Frame kind, wire::WireReader &payload)
{
    if (kind == wire::Frame::Table) {
        const wire::TableFacts facts = wire::takeTableFacts(payload);
        m_schema.tables.append(
            {facts.info, facts.description, facts.fieldDescriptions, facts.rowCount, facts.lastAutoNumber});
    } else if (kind == wire::Frame::Relation) {
        m_schema.relations.append(wire::takeRelation(payload));
    } else if (kind == wire::Frame::Query) {
        m_schema.queries.append(wire::takeQuery(payload));
    } else {
        throw wire::ProtocolError();
    }
}

void StreamParser::readSchema()
{
    Next first = next();
    if (first.kind != wire::Frame::File)
        throw wire::ProtocolError();
    const wire::FileFacts facts = wire::takeFileFacts(first.payload);
    first.payload.expectEnd();
    m_schema.jetVersion = facts.jetVersion;
    m_schema.codePage = facts.codePage;
    for (;;) {
        Next item = next();
        if (item.kind == wire::Frame::SchemaEnd) {
            if (item.payload.u32() != quint32(m_schema.tables.size()))
                throw wire::ProtocolError();
            return item.payload.expectEnd();
        }
        addToSchema(item.kind, item.payload);
        item.payload.expectEnd();
    }
}

qint64 StreamParser::readRows(const dao::TableInfo &table, wire::WireReader &payload)
{
    const quint32 rows = payload.u32();
    for (quint32 i = 0; i < rows; ++i) {
        if (i % kRowsBetweenChecks == 0)
            m_process.checkCancelled();
        for (qsizetype field = 0; field < m_row.size(); ++field)
            m_row[field] = takeValue(payload, table.fields.at(field).type);
        m_sink.row(m_row);
    }
    payload.expectEnd();
    return rows;
}

void StreamParser::readTable(const dao::TableInfo &table)
{
    Next begin = next();
    if (begin.kind != wire::Frame::TableBegin)
        throw wire::ProtocolError();
    begin.payload.expectEnd();
    m_sink.beginTable(table);
    m_row = QList<dao::Value>(table.fields.size());
    qint64 rows = 0;
    for (;;) {
        Next item = next();
        if (item.kind == wire::Frame::TableEnd) {
            if (item.payload.i64() != rows)
                throw wire::ProtocolError();
            item.payload.expectEnd();
            break;
        }
        if (item.kind != wire::Frame::Rows)
            throw wire::ProtocolError();
        rows += readRows(table, item.payload);
    }
    m_sink.endTable(table, rows);
}

void StreamParser::run(bool schemaOnly)
{
    try {
        readSchema();
        m_sink.schema(m_schema);
        if (!schemaOnly) {
            for (const Table &table : m_schema.tables)
                readTable(table.info);
        }
        if (next().kind != wire::Frame::End)
            throw wire::ProtocolError();
    } catch (const wire::ProtocolError &) {
        throw m_process.failure(u"its stream is damaged"_s);
    }
    m_process.finish();
}

class SchemaSink : public Sink
{
public:
    void schema(const Schema &schema) override { m_schema = schema; }
    void beginTable(const dao::TableInfo &) override {}
    void row(const QList<dao::Value> &) override {}
    void endTable(const dao::TableInfo &, qint64) override {}
    const Schema &result() const { return m_schema; }

private:
    Schema m_schema;
};

} // namespace

bool isJetFile(const QString &path)
{
    switch (wire::fileHead(path)) {
    case wire::FileHead::Jet3:
    case wire::FileHead::Jet4:
    case wire::FileHead::Newer:
        return true;
    case wire::FileHead::Unreadable:
    case wire::FileHead::Other:
        break;
    }
    return false;
}

JetReader::JetReader(const QString &path, const ReadOptions &options)
    : m_path(path)
    , m_options(options)
{
}

JetReader::~JetReader() = default;

void JetReader::run(Sink &sink, tarnwick::Progress *progress, bool schemaOnly)
{
    m_remarks.clear();
    ReaderProcess process(m_path, m_options, schemaOnly, progress);
    StreamParser(m_path, process, sink, m_remarks).run(schemaOnly);
}

void JetReader::read(Sink &sink, tarnwick::Progress *progress)
{
    run(sink, progress, false);
}

Schema JetReader::readSchema(tarnwick::Progress *progress)
{
    SchemaSink sink;
    run(sink, progress, true);
    return sink.result();
}

bool JetReader::hasRemark(Remark::Kind kind) const
{
    return std::any_of(m_remarks.begin(), m_remarks.end(), [&](const Remark &remark) { return remark.kind == kind; });
}

} // namespace jet
