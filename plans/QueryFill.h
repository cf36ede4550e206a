#pragma once
#include "MapFill.h"

#include <query/QueryDocument.h>
#include <tarnwick/ColourRef.h>

namespace query {
class TubeColumns;
}

namespace plans {

/// Takes the tubes of the records of a query on the project database.
class QueryFill : public FillKind<QueryFill>
{
public:
    /// Colours of a record whose tube does not exist.
    static constexpr tarnwick::RowColours kInvalidColours{tarnwick::ColourRef(0xFFFFFF), tarnwick::ColourRef(0x0000FF)};

    struct Parameters
    {
        query::QueryDocument query; ///< its name is the query file, below "queries"
        QString oldText;            ///< field of the oldest map files, kept when they are read
        bool operator==(const Parameters &) const = default;
    };
    Parameters parameters;

    QueryFill();
    void serialize(tarnwick::JFile &file, int version) override;
    void readOldFormat(tarnwick::JFile &file) override;
    /// Takes the tubes given by the columns "row", "col" and, if there are sections, "sec", each tube once. Missing
    /// columns give an error remark, records of tubes that do not exist a question. Throws the engine's exceptions if a
    /// value cannot be read.
    FillResult pick(const FillInput &input) const override;
    Need need() const override { return Need::Database; }
    /// File name of the query.
    QString entryLabel() const override;
    QString undoLabel() const override;
    QString queryName() const override { return parameters.query.name; }

protected:
    QString className() const override;

private:
    /// Number of records without a tube of the component.
    struct Invalid
    {
        int count = 0;
        int failed = 0; ///< number of records whose address could not be calculated
        int record = 0; ///< the first of them
        QString field;
        QString error;
    };
    static void pickTubes(const FillInput &input, const query::TubeColumns &columns, FillResult &result,
                          Invalid &invalid);
    QString questionOf(const Invalid &invalid) const;
};

} // namespace plans
