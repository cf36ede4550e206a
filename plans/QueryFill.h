#pragma once
#include "MapFill.h"

#include <query/QueryDocument.h>
#include <tarnwick/ColourRef.h>

namespace query {
class TubeColumns;
}

namespace plans {

/// The tubes that the records of a query against the project database name.
class QueryFill : public FillKind<QueryFill>
{
public:
    /// Highlight of a record whose tube does not exist.
    static constexpr tarnwick::RowColours kInvalidColours{tarnwick::ColourRef(0xFFFFFF), tarnwick::ColourRef(0x0000FF)};

    struct Parameters
    {
        query::QueryDocument query; ///< its name is the query file, below "queries"
        QString oldText;            ///< of the oldest map files; kept for their sake
        bool operator==(const Parameters &) const = default;
    };
    Parameters parameters;

    QueryFill();
    void serialize(tarnwick::JFile &file, int version) override;
    void readOldFormat(tarnwick::JFile &file) override;
    /// Picks the tubes that the records name by their columns "row", "col" and, where there are sections, "sec", each
    /// tube once. Missing columns are an error, records of tubes that do not exist a question. Throws the engine's
    /// exceptions when a value cannot be read.
    FillResult pick(const FillInput &input) const override;
    Need need() const override { return Need::Database; }
    /// The file-name part of the query's name.
    QString entryLabel() const override;
    QString undoLabel() const override;
    QString queryName() const override { return parameters.query.name; }

protected:
    QString className() const override;

private:
    /// The records that name no tube of the component.
    struct Invalid
    {
        int count = 0;
        int failed = 0; ///< those whose address could not be calculated ...
        int record = 0; ///< ... and the first of them
        QString field;
        QString error;
    };
    static void pickTubes(const FillInput &input, const query::TubeColumns &columns, FillResult &result,
                          Invalid &invalid);
    QString questionOf(const Invalid &invalid) const;
};

} // namespace plans
