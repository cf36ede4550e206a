#pragma once
#include <dao/Recordset.h>

#include <memory>

namespace cli {

/// Writes rows in one of the forms of the command "sql".
class RowWriter
{
public:
    virtual ~RowWriter() = default;
    virtual void begin(const dao::Recordset &rows) = 0;
    virtual void row(const QList<dao::Value> &cells) = 0;
    virtual void end() = 0;
    /// For a statement that returns no rows.
    virtual void affected(int count) = 0;
    /// In place of end() or affected() when the statement failed; also before begin(). What was read stays in the
    /// output.
    virtual void fail(const dao::DaoException &error) = 0;
};

/// form: "table", "csv" or "json"; null for another.
std::unique_ptr<RowWriter> makeRowWriter(QStringView form);

/// A value as the command line's tables and CSV show it: numbers with a decimal point, dates "mm/dd/yyyy hh:mm:ss",
/// Booleans True and False, Null as nothing.
QString plainText(const dao::Value &value);

} // namespace cli
