#pragma once
#include <dao/Recordset.h>

#include <memory>

namespace cli {

/// Writes rows in one of the output formats of the command "sql".
class RowWriter
{
public:
    virtual ~RowWriter() = default;
    virtual void begin(const dao::Recordset &rows) = 0;
    virtual void row(const QList<dao::Value> &cells) = 0;
    virtual void end() = 0;
    /// Call for a statement that returns no rows.
    virtual void affected(int count) = 0;
    /// Call instead of end() or affected() if the statement failed, also before begin(). Rows that were written stay in
    /// the output.
    virtual void fail(const dao::DaoException &error) = 0;
};

/// form: "table", "csv" or "json". Returns null for any other.
std::unique_ptr<RowWriter> makeRowWriter(QStringView form);

/// A value as text in tables and CSV of the command line: numbers with a decimal point, dates "mm/dd/yyyy hh:mm:ss",
/// Booleans True and False, Null empty.
QString plainText(const dao::Value &value);

} // namespace cli
