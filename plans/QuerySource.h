#pragma once
#include <dao/values/Value.h>
#include <ellery/TubeStates.h>
#include <memory>
#include <optional>
#include <QString>
#include <tarnwick/ColourRef.h>

namespace tarnwick {
class Progress;
}

namespace plans {

/// The records of an executed query, as a fill needs them: values in their types, and colours that the result table
/// shows.
class QueryRecords
{
public:
    virtual ~QueryRecords() = default;
    virtual int columnCount() const = 0;
    virtual QString columnName(int column) const = 0;
    virtual int rowCount() const = 0;
    /// Throws the engine's exceptions.
    virtual dao::Value value(int row, int column) const = 0;
    virtual void setColours(int row, const tarnwick::RowColours &colours) = 0;
};

/// Where a query fill gets its records, and where it remembers its symbol.
class QuerySource
{
public:
    virtual ~QuerySource() = default;
    /// A database is open.
    virtual bool isReady() const = 0;
    /// Runs a select query, asking for its parameters. Null when it failed (which has then been said) or was cancelled.
    virtual std::unique_ptr<QueryRecords> run(const QString &name, const QString &sql) = 0;
    /// While set, parameters whose values are all known are not asked for again ("Update Map").
    virtual void setQuiet(bool quiet) = 0;
    /// While one is set, it stops queries, and the reading of their records: they then throw tarnwick::Cancelled. Null:
    /// nobody watches.
    virtual void setProgress(tarnwick::Progress *) {}
    /// Query names are matched without regard to case. Empty when the query has none, or symbol 0.
    virtual std::optional<ellery::TubeMark> rememberedMark(const QString &name) const = 0;
    virtual void rememberMark(const QString &name, const ellery::TubeMark &mark) = 0;
};

} // namespace plans
