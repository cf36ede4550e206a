#pragma once
#include "MapFill.h"

#include <optional>
#include <query/QueryDocument.h>

namespace query {
class TubeColumns;
}

namespace plans {

class QueryRecords;

/// The tubes that the records of a query against the project database name.
class QueryFill : public FillKind<QueryFill>
{
public:
    /// Highlight of a record whose tube does not exist.
    static constexpr quint32 kInvalidForeground = 0xFFFFFF;
    static constexpr quint32 kInvalidBackground = 0x0000FF;

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
    void symbolChanged(MapHost &host) override;
    /// Runs the query and maps its result. False without a database and when the query failed, be it as late as when
    /// a value is read: the tubes are then as they were. True after mapping, whatever was said about it.
    bool compute(MapHost &host) override;
    Need need() const override { return Need::Database; }
    /// The file-name part of the query's name.
    QString entryLabel() const override;
    QString undoLabel() const override;

    /// Takes the tubes that the records name by their columns "row", "col" and, where there are sections, "sec", each
    /// tube once. Missing columns are said (1090, answer No); records of tubes that do not exist are highlighted and
    /// asked about (1091: Ok or Cancel). Yes when all went well. No answer when a value failed as it was read: that is
    /// said, too (1069), and the tubes are as they were.
    std::optional<tarnwick::Answer> mapResult(MapHost &host, QueryRecords &records);

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
    /// Throws the engine's exceptions; nothing is taken then.
    Invalid takeTubes(MapHost &host, QueryRecords &records, const query::TubeColumns &columns);
};

} // namespace plans
