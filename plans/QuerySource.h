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

/// The records of an executed query for a fill: typed values, and colours shown in the result table.
class QueryRecords
{
public:
    virtual ~QueryRecords() = default;
    virtual int columnCount() const = 0;
    virtual QString columnName(int column) const = 0;
    virtual int rowCount() const = 0;
    /// Throws the engine's exceptions.
    virtual dao::Value value(int row, int column) const = 0;
    /// reason: a sentence that says why, for those who do not see the colours.
    virtual void setColours(int row, const tarnwick::RowColours &colours, const QString &reason) = 0;
};

/// Runs the queries of query fills and stores their symbols.
class QuerySource
{
public:
    virtual ~QuerySource() = default;
    /// True if a database is open.
    virtual bool isReady() const = 0;
    /// Runs a select query and asks for its parameters. Returns null after reporting a failure, or if the user
    /// cancelled.
    virtual std::unique_ptr<QueryRecords> run(const QString &name, const QString &sql) = 0;
    /// While set, a query whose parameters all have known values does not ask for them ("Update Map").
    virtual void setQuiet(bool quiet) = 0;
    /// The progress, null for none, cancels queries and the reading of their records; these throw tarnwick::Cancelled.
    virtual void setProgress(tarnwick::Progress *) {}
    /// Last mark of the query. Query names are compared without case. Empty if there is none or its symbol is none.
    virtual std::optional<ellery::TubeMark> rememberedMark(const QString &name) const = 0;
    virtual void rememberMark(const QString &name, const ellery::TubeMark &mark) = 0;
};

} // namespace plans
