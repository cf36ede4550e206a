#pragma once
#include "Arguments.h"

#include <dao/Recordset.h>

#include <memory>

namespace cli {

struct OutputColumn
{
    QString name;
    dao::DataType type;
};

/// Writes rows in one of the output formats of the commands: table, csv or json.
class RowWriter
{
public:
    virtual ~RowWriter() = default;
    virtual void begin(const QList<OutputColumn> &columns) = 0;
    void begin(const dao::Recordset &rows);
    virtual void row(const QList<dao::Value> &cells) = 0;
    virtual void end() = 0;
    /// Call for a statement that returns no rows.
    virtual void affected(int count) = 0;
    /// Call instead of end() or affected() if the statement failed, also before begin(). Rows that were written stay in
    /// the output.
    virtual void fail(const dao::DaoException &error) = 0;
};

/// The writer for the command's option --format: "table", "csv" or "json". Throws UsageError for any other.
std::unique_ptr<RowWriter> makeRowWriter(const Arguments &arguments);

} // namespace cli
